#include "tests/Cases.h"
#include "tests/tracing/TracingFixture.h"

namespace ZEP::Tracing {
namespace {

/// Scenes of `tests/data/cases/traced`, in the lines that `TStage` knows; `draw` draws in between.
class TracedScenes : public TracingTest, public testing::WithParamInterface<std::string> {};

TEST_P(TracedScenes, AreDrawnAsTheyAreTraced) {
    const std::vector<TCase> cases = ReadCases(ZEP_TEST_DATA "/cases/" + GetParam());
    ASSERT_FALSE(cases.empty());
    for (const TCase& c : cases) {
        TStage stage;
        std::istringstream lines(c.Input);
        int drawn = 0;
        for (std::string line; std::getline(lines, line);)
            if (line == "draw")
                ExpectAsTraced(stage, c.Name + std::to_string(++drawn));
            else
                stage.Do(line);
        ExpectAsTraced(stage, c.Name);
    }
}

INSTANTIATE_TEST_SUITE_P(File, TracedScenes, testing::ValuesIn(CaseFiles("traced")), CaseName);

using TracedMirror = TracingTest;

TEST_F(TracedMirror, ShowsNothingFromBehind) {
    TStage stage;
    for (const char* line :
         {"eye 1.5 9 3 to 0 0 1", "lamp at -2000 -3000 3000 color 0.8 0.8 0.8 parallel",
          "polygon of square convex at 0 1.97 1.4 turn 90 0 0 scale 4 2.6 1 look glass",
          "ball at -0.8 -0.5 0.6 look green", "box at 1 0 0.7 turn 20 10 40 look red"})
        stage.Do(line);
    stage.Draw();
    const QImage behind = Context().ReadFrame();
    stage.Scene.SetReflections(false);
    stage.Draw();
    EXPECT_EQ(behind, Context().ReadFrame());
}

using TracedShadow = TracingTest;

// The sides of shadows are counted from the eye: from within one, light and shadow are exchanged,
// as far as what is seen lies outside of it.
TEST_F(TracedShadow, IsExchangedWithLightForAnEyeWithin) {
    TStage stage;
    for (const char* line :
         {"sheet scale 9 9 1 look ground", "box at 0 0 6 scale 2 2 0.2 look caster",
          "lamp at 0 0 12 color 0.9 0 0", "eye 0 -0.5 3 to 0 0 0 field 90"})
        stage.Do(line);
    stage.SetMethod(TMethod::Subtracted);
    stage.Draw();
    const QImage drawn = Context().ReadFrame();
    int exchanged = 0;
    int dark = 0;
    const std::vector<TSample> traced = stage.Trace();
    for (std::size_t i = 0; i < traced.size(); ++i) {
        const int x = static_cast<int>(i) % TStage::Size;
        const bool isDark = traced[i].Missing != 0;
        dark += isDark;
        exchanged += isDark == (qRed(drawn.pixel(x, static_cast<int>(i) / TStage::Size)) > 20);
    }
    const int all = static_cast<int>(traced.size());
    EXPECT_GT(dark, all / 20);
    EXPECT_LT(dark, all - all / 20);
    EXPECT_GT(exchanged, all - all / 50);
}

} // namespace
} // namespace ZEP::Tracing
