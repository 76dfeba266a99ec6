#include "viewer/drawing/DrawMeans.h"

#include <gtest/gtest.h>

namespace ZEP {
namespace {

using TShadows = TViewLook::TShadows;

TEST(DrawMeans, TellWhyShadowsAndMirrorsCannotBeDrawn) {
    struct TRow {
        TDrawMeans Means;
        const char *Subtracted, *Accumulated, *Mirrors; // part of the reason; empty: can be drawn
    };
    const TRow rows[] = {
        {{.StencilBits = 8, .AccumBits = 64, .Subtracts = true}, "", "", ""},
        {{.StencilBits = 8, .AccumBits = 64, .Subtracts = false}, "subtract", "", ""},
        {{.StencilBits = 8, .AccumBits = 0, .Subtracts = true}, "", "accumulation", ""},
        {{.StencilBits = 0, .AccumBits = 64, .Subtracts = true}, "stencil", "stencil", "stencil"},
        {{}, "stencil", "stencil", "stencil"},
    };
    const auto agrees = [](const QString& reason, const char* part) {
        return *part ? reason.contains(QLatin1String(part)) : reason.isEmpty();
    };
    for (const TRow& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_TRUE(agrees(row.Means.WhyNo(TShadows::Subtracted), row.Subtracted));
        EXPECT_TRUE(agrees(row.Means.WhyNo(TShadows::Accumulated), row.Accumulated));
        EXPECT_TRUE(agrees(row.Means.WhyNoMirrors(), row.Mirrors));
        EXPECT_EQ(row.Means.WhyNo(TShadows::Off), QString());
        EXPECT_EQ(row.Means.WhyNo(TShadows::Own), QString());
    }
}

} // namespace
} // namespace ZEP
