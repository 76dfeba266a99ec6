#include "tests/objects/Dice.h"
#include "tests/tracing/TracingFixture.h"

using namespace ZEP;
using namespace ZEP::Tracing;

namespace {

using TracedRandomScene = TracingTest;

TVector Between(TDice& dice, const TVector& low, const TVector& high) {
    const double x = dice.Between(low.X, high.X);
    const double y = dice.Between(low.Y, high.Y);
    return {x, y, dice.Between(low.Z, high.Z)};
}

std::string Text(const TVector& v) {
    std::string text;
    for (const double part : {v.X, v.Y, v.Z})
        text += QString::number(part, 'f').prepend(u' ').toStdString();
    return text;
}

void AddCaster(TStage& stage, TDice& dice, bool isBall) {
    const std::string place = " at" + Text(Between(dice, {-2, -2, 0.5}, {2, 2, 2.5})) + " turn" +
                              Text(Between(dice, {-180, -180, -180}, {180, 180, 180})) + " scale" +
                              Text(Between(dice, {0.4, 0.4, 0.4}, {1.3, 1.3, 1.3}));
    const std::string look = dice.Between(0, 1) < 0.6 ? " look both" : " look plain casts";
    stage.Do((isBall ? "ball" : "box") + place + look);
}

void AddLamps(TStage& stage, TDice& dice, int count) {
    constexpr TVector Colors[]{{0.9, 0, 0}, {0, 0.9, 0}, {0, 0, 0.9}};
    for (int i = 0; i < count; ++i) {
        const bool isAimed = dice.Between(0, 1) < 0.7;
        const TVector place = Between(dice, {-4, -4, 4}, {4, 4, 7}) * (isAimed ? 1 : 1e3);
        stage.Do("lamp at" + Text(place) + " color" + Text(Colors[i]) +
                 (isAimed ? "" : " parallel"));
    }
}

/// Somewhere around, but in no shadow: there, light and shadow are exchanged.
void SetEye(TStage& stage, TDice& dice) {
    TVector eye;
    do eye = Between(dice, {-8, -8, 2}, {8, 8, 7});
    while (stage.Tracer().IsInShadow(eye, 0.3));
    stage.Do("eye" + Text(eye) + " to" + Text(Between(dice, {-0.5, -0.5, 0}, {0.5, 0.5, 1})));
}

void Fill(TStage& stage, TDice& dice) {
    stage.Do("sheet scale 12 12 1 look ground");
    const int casters = static_cast<int>(dice.Between(2, 8));
    for (int i = 0; i < casters; ++i) AddCaster(stage, dice, i % 2 == 0);
    AddLamps(stage, dice, static_cast<int>(dice.Between(1, 4)));
}

} // namespace

TEST_F(TracedRandomScene, HasTheShadowsThatAreTraced) {
    int compared = 0;
    int different = 0;
    int shadowed = 0;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        TDice dice(seed);
        TStage stage;
        Fill(stage, dice);
        stage.SetMethod(seed % 2 == 0 ? TMethod::Subtracted : TMethod::Accumulated);
        SetEye(stage, dice);
        const TComparison comparison = DrawAndCompare(stage, "random." + std::to_string(seed));
        compared += comparison.Compared;
        different += comparison.Different;
        for (const auto& [lamp, count] : comparison.Shadows) shadowed += count;
    }
    RecordProperty("compared", compared);
    RecordProperty("different", different);
    EXPECT_GT(shadowed, compared / 20);
    EXPECT_LE(different, compared / 20000);
}
