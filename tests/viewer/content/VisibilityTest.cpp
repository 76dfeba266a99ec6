#include "viewer/content/Visibility.h"

#include <zep/scene/Object.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TZEPObject* Add(TZEPObject& parent, const char* ident, bool visible) {
    auto* object = new TZEPObject(&parent);
    object->SetIdent(QLatin1String(ident));
    object->SetVisible(visible);
    object->SetParentComponent(&parent);
    return object;
}

TEST(HiddenBelow, WhatWasHiddenOrShownStaysSoByName) {
    TZEPObject before;
    Add(before, "p", true);
    Add(before, "q", false);
    Add(before, "", false);
    const QSet<QString> hidden = HiddenBelow(before);
    EXPECT_EQ(hidden, QSet<QString>{QStringLiteral("q")});
    TZEPObject again;
    const auto add = [&](const char* ident, bool visible) { return Add(again, ident, visible); };
    const auto* q = add("q", true);
    const auto* shown = add("shown by the user", false);
    const auto* off = add("newly off", false);
    const auto* on = add("new", true);
    RestoreHidden(again, {QStringLiteral("shown by the user")}, hidden);
    EXPECT_FALSE(q->Visible());
    EXPECT_TRUE(shown->Visible());
    EXPECT_FALSE(off->Visible());
    EXPECT_TRUE(on->Visible());
}

} // namespace
} // namespace ZEP
