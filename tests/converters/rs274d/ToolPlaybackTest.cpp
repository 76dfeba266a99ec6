#include <zep/ZEPRS274D.h>

#include <gtest/gtest.h>

#include <QString>

#include <cmath>

namespace ZEP {
namespace {

/// Six moves in the seconds 0 to 1, 1 to 3, 3 to 5 (a dwell), 5 to 6, 6 to 6 and 6 to 7; the
/// second tool comes with the fourth, the third one with the fifth.
constexpr const char* Program = "F60\nG1 X1\nX3\nG4 P2\nT2 M6\nX4\nT3 M6\nG1 X4\nX5\n";

std::shared_ptr<TToolPath> PathOf(std::string_view program) {
    auto path = std::make_shared<TToolPath>();
    TRS274DReport report;
    TRS274DInterpreter({}, *path, report).Run(program);
    return path;
}

QString PlaceOf(const TToolPlayback& playback) {
    const auto place = playback.Position();
    return QStringLiteral("%1+%2, %3 s, X%4")
        .arg(playback.Move())
        .arg(playback.Fraction())
        .arg(playback.Time())
        .arg(place ? QString::number((*place)[0]) : QStringLiteral("?"));
}

TEST(ToolPlayback, GoesWhereTimeAndStepsLead) {
    TToolPlayback playback;
    playback.SetPath(PathOf(Program));
    ASSERT_EQ(playback.Count(), 6);
    EXPECT_EQ(playback.ToolChanges(), (std::vector<int>{3, 4}));
    QStringList told;
    QObject::connect(&playback, &TToolPlayback::Moved, [&](int move, double fraction) {
        told << QStringLiteral("%1+%2").arg(move).arg(fraction);
    });
    using enum TToolPlayback::TPace;
    const auto play = [&](double seconds, double speed, TToolPlayback::TPace pace = Machine) {
        playback.SetSpeed(speed, pace);
        playback.Play();
        playback.Advance(seconds);
    };
    struct TRow {
        std::function<void()> Do;
        const char* Place;
    };
    const TRow rows[] = {{[&] { playback.Advance(1); }, "0+0, 0 s, X0"}, // paused
                         {[&] { play(0.5, 1); }, "0+0.5, 0.5 s, X0.5"},
                         {[&] { play(0.25, 2); }, "1+0, 1 s, X1"},
                         {[&] { play(10, 0.1); }, "1+0.5, 2 s, X2"},
                         {[&] { play(0.02, 100); }, "2+0.5, 4 s, X3"},
                         {[&] { play(-1, 1); }, "2+0.5, 4 s, X3"},
                         {[&] { play(1, 0.5, Moves); }, "3+0, 5 s, X3"},
                         {[&] { playback.SeekToolChange(true); }, "4+0, 6 s, X4"},
                         {[&] { playback.SeekToolChange(true); }, "4+0, 6 s, X4"}, // there is none
                         {[&] { playback.SeekToolChange(false); }, "3+0, 5 s, X3"},
                         {[&] { playback.SeekMove(3); }, "3+1, 6 s, X4"},
                         {[&] { playback.SeekToolChange(false); }, "3+0, 5 s, X3"},
                         {[&] { playback.SeekToolChange(false); }, "0+0, 0 s, X0"},
                         {[&] { playback.Seek(6.5); }, "5+0.5, 6.5 s, X4.5"},
                         {[&] { playback.Seek(1e9); }, "5+1, 7 s, X5"},
                         {[&] { play(1, 1); }, "1+0, 1 s, X1"}, // from the start again
                         {[&] { play(100, 1); }, "5+1, 7 s, X5"},
                         {[&] { playback.SeekMove(-9, -1); }, "0+0, 0 s, X0"},
                         {[&] { playback.Seek(-5); }, "0+0, 0 s, X0"}};
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        rows[i].Do();
        EXPECT_EQ(PlaceOf(playback), QString::fromLatin1(rows[i].Place)) << "row " << i;
        EXPECT_EQ(playback.IsPlaying(), i >= 1 && i != 16 && i < 16) << "row " << i;
    }
    EXPECT_EQ(told.mid(0, 3), (QStringList{"0+0.5", "1+0", "1+0.5"}));
    EXPECT_EQ(told.last(), QStringLiteral("0+0"));
}

TEST(ToolPlayback, WithoutTimesCountsMoves) {
    TToolPlayback playback;
    const auto ends = [&](double speed, TToolPlayback::TPace pace) {
        playback.SetSpeed(speed, pace);
        playback.Play();
        playback.Advance(1);
        return PlaceOf(playback);
    };
    EXPECT_EQ(ends(1, TToolPlayback::TPace::Machine), QStringLiteral("-1+0, 0 s, X?"));
    playback.SetMoves(3);
    EXPECT_EQ(ends(1.5, TToolPlayback::TPace::Moves), QStringLiteral("1+0.5, 1.5 s, X?"));
    EXPECT_EQ(ends(1, TToolPlayback::TPace::Machine), QStringLiteral("2+0.5, 2.5 s, X?"));
    playback.SetPath(PathOf("G0 X9\nG1 X10\nX11\n")); // without a feed
    EXPECT_FALSE(playback.HasTimes());
    EXPECT_EQ(ends(1.5, TToolPlayback::TPace::Machine), QStringLiteral("1+0.5, 1.5 s, X9.5"));
    playback.SeekMove(1, std::nan(""));
    EXPECT_EQ(PlaceOf(playback), QStringLiteral("1+0, 1 s, X9"));
    playback.Seek(std::nan(""));
    EXPECT_EQ(PlaceOf(playback), QStringLiteral("0+0, 0 s, X0"));
}

TEST(ToolPlayback, ItsHandlersMayDoAnything) {
    for (const int what : {0, 1, 2, 3, 4}) {
        auto* playback = new TToolPlayback;
        playback->SetPath(PathOf(Program));
        QObject::connect(playback, &TToolPlayback::Moved, [&](int, double) {
            if (!playback) return;
            TToolPlayback* told = playback;
            if (what == 0 && told->Path()) told->SetPath(nullptr);
            if (what == 1) told->Pause();
            if (what == 2) told->Play();
            if (what == 3) delete std::exchange(playback, nullptr);
            if (what == 4 && told->Move() == 0) told->SetPath(nullptr);
        });
        if (what == 4) playback->Seek(1e9); // from where it begins anew
        playback->Play();
        if (what == 4) {
            EXPECT_FALSE(playback->IsPlaying());
        }
        playback->Advance(100);
        EXPECT_EQ(playback != nullptr, what != 3);
        delete playback;
    }
}

} // namespace
} // namespace ZEP
