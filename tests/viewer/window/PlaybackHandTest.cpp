#include "tests/viewer/WindowTest.h"
#include "viewer/window/Playback.h"
#include "viewer/window/SourceDock.h"
#include <zep/scene/Scene.h>

namespace ZEP {
namespace {

using Playback = WindowTest;

/// No event comes between: the test says what time it is.
TEST_F(Playback, NeitherAPauseNorAStandstillIsMadeUpFor) {
    TMainWindow window(false);
    window.OpenFiles({Put("long.nc", "G1\n" + QByteArray("X1\nX2\n").repeated(1000))});
    auto& source = *window.findChild<TSourceDock*>();
    auto& playback = *window.findChild<TPlayback*>();
    TZEPObject& scene = *window.Document().Files().front().Root->Scene();
    source.GoTo(0);
    playback.SetSpeed(10);
    const auto movesAt = [&](double time) {
        const int before = source.CurrentMove();
        scene.Action(time);
        return source.CurrentMove() - before;
    };
    playback.SetPlaying(true);
    EXPECT_EQ(movesAt(100), 0);
    EXPECT_EQ(movesAt(100.45), 4);
    playback.SetPlaying(false);
    playback.SetPlaying(true);
    EXPECT_EQ(movesAt(500), 0) << "behind a pause";
    EXPECT_EQ(movesAt(500.25), 2);
    EXPECT_EQ(movesAt(900), 5) << "half a second at most, whatever held the program up";
    playback.SetPlaying(false);
    EXPECT_EQ(movesAt(901), 0);
}

} // namespace
} // namespace ZEP
