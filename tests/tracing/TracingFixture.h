#pragma once

#include "tests/gl/BlendEntry.h"
#include "tests/gl/OffscreenTest.h"
#include "tests/tracing/Stage.h"

#include <map>

namespace ZEP::Tracing {

/// How a drawn picture differs from the traced one, edges left out: what lies within two pixels of
/// something else.
struct TComparison {
    int Compared = 0;
    int Different = 0;
    std::map<int, int> Pieces;       ///< compared samples of each piece, -1 for the background
    std::map<int, int> InMirrors;    ///< the same of what mirrors show
    std::map<unsigned, int> Shadows; ///< compared samples that lack the light of each lamp
    QImage Map;                      ///< drawn, traced, and what differs, beside each other
};
TComparison Compare(const QImage& drawn, const std::vector<TSample>& traced);

/// Draws what is traced, with what a panel's context sets.
class TracingTest : public OffscreenTest {
protected:
    TracingTest() : OffscreenTest(TStage::Size, TStage::Size) {}
    void SetUp() override;

    /// Where there are differences, the pictures are written to the folder of the tests' output;
    /// all of them with the environment variable `ZEP_KEEP_TRACED`.
    TComparison DrawAndCompare(TStage& stage, const std::string& name);
    /// Fails unless all that is compared is as it is traced, by each method that the scene asks
    /// for, and that is enough of every piece, and of the shadow under every lamp that casts any.
    void ExpectAsTraced(TStage& stage, const std::string& name);

private:
    TBlendEntry m_blendEntry;
    bool m_addsLight = false;
};

} // namespace ZEP::Tracing
