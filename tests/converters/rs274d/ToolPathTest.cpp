#include "tests/Cases.h"
#include <zep/batch/Batch.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/converters/rs274d/ToolPathStatistics.h>
#include <zep/scene/ColoredObject.h>

#include <cmath>

namespace ZEP {
namespace {

std::string Number(double value) {
    return QByteArray::number(std::abs(value) < 5e-7 ? 0 : value, 'g', 7).toStdString();
}

std::string PointText(const TRS274DPoint& point) {
    return Number(point[0]) + ' ' + Number(point[1]) + ' ' + Number(point[2]);
}

std::string TextOf(const TToolMove& move, const TRS274DPoint& quarter) {
    constexpr const char* kinds[] = {"rapid", "feed", "arc", "drill", "dwell"};
    std::string text = std::to_string(move.Line) + ": tool " + std::to_string(move.Tool) + ' ' +
                       kinds[static_cast<std::size_t>(move.Kind)] + ' ' + PointText(move.To);
    if (move.Kind == TToolMoveKind::Arc) text += " over " + PointText(quarter);
    if (move.Feed > 0) text += ", F " + Number(move.Feed);
    const bool isRapid = move.Kind == TToolMoveKind::Rapid;
    if (isRapid && move.Placed == TRS274DPlaced::Neither) text += ", nobody knows where";
    if (isRapid && move.Placed == TRS274DPlaced::End) text += ", nobody knows from where";
    return text + ", " + Number(move.Length) + " mm, " + Number(move.End - move.Begin) + " s\n";
}

std::string TextOf(const TPathTool& tool) {
    std::string text = "T" + std::to_string(tool.Number) + " \"" + tool.Name.toStdString() + '"';
    if (tool.Diameter > 0) text += " D " + Number(tool.Diameter);
    if (tool.MaxFeed > 0) text += ", F " + Number(tool.MinFeed) + " to " + Number(tool.MaxFeed);
    if (tool.MaxSpeed > 0) text += ", S " + Number(tool.MinSpeed) + " to " + Number(tool.MaxSpeed);
    return text + '\n';
}

std::string TextOf(const TPathSums& sums) {
    return Number(sums.RapidLength) + " + " + Number(sums.CutLength) + " mm, " +
           Number(sums.RapidSeconds) + " + " + Number(sums.CutSeconds) + " + " +
           Number(sums.DwellSeconds) + " s\n";
}

std::string TextOf(const std::optional<TZEPBounds>& bounds) {
    return bounds ? PointText(bounds->Min) + " to " + PointText(bounds->Max) : "none";
}

std::string TextOf(const TToolPathStatistics& statistics) {
    std::string text = "all: " + TextOf(statistics.All);
    for (const TPathSums& sums : statistics.ByTool)
        if (sums.Moves > 0 && sums.Moves < statistics.All.Moves) text += "tool: " + TextOf(sums);
    for (const int moves : statistics.MovesByKind) text += std::to_string(moves) + ' ';
    return text + "moves, " + std::to_string(statistics.Holes) + " holes within " +
           TextOf(statistics.HoleBounds) + ", " + std::to_string(statistics.Untimed) +
           " without a feed, cuts " + TextOf(statistics.CutBounds) + ", all " +
           TextOf(statistics.Bounds) + '\n';
}

/// A move and its object are of one line and one colour.
void ExpectLinked(const TToolPath& path, TZEPObject& root) {
    ASSERT_EQ(path.ObjectCount(), root.GetItemsCount());
    for (int i = 0; i < path.ObjectCount(); ++i) {
        const TToolMove move = path.Move(path.MoveOf(i));
        EXPECT_EQ(path.ObjectOf(path.MoveOf(i)), i);
        EXPECT_EQ(root.GetItem(i)->Ident(), QStringLiteral("Line %1").arg(move.Line));
        if (move.Kind == TToolMoveKind::Rapid) continue;
        EXPECT_EQ(qobject_cast<TZEPColoredObject*>(root.GetItem(i))->Color(),
                  path.Tools()[move.Tool].Color);
    }
}

/// Times and places fit each other, and each move is found by its line.
void ExpectSeekable(const TToolPath& path) {
    for (int i = 0; i < path.Count(); ++i) {
        const TToolMove move = path.Move(i);
        EXPECT_TRUE(std::ranges::binary_search(path.MovesOfLine(move.Line), i));
        if (move.End - move.Begin < 1e-9) continue;
        EXPECT_EQ(path.MoveAt(move.Begin), i);
        const TRS274DPoint middle = path.PositionAt((move.Begin + move.End) / 2);
        EXPECT_EQ(PointText(middle), PointText(path.PointOf(i, 0.5)));
        EXPECT_EQ(PointText(path.PositionAt(move.Begin)), PointText(move.From));
    }
    EXPECT_EQ(path.MoveAt(-1), path.Count() > 0 ? 0 : -1);
    EXPECT_EQ(path.MoveAt(1e300), path.Count() - 1);
}

TEST(ToolPath, KeepsMovesTimesAndTools) {
    ExpectCases("text/toolpath.txt", [](const TCase& c) {
        const bool showsRapids = !c.Name.starts_with("without rapids");
        TToolPath path(showsRapids);
        path.SetRapidRate(6000);
        TZEPBatch root;
        TRS274DConverter converter;
        converter.SetRoot(&root);
        converter.SetShowQuickMove(showsRapids);
        converter.SetExtended(!c.Name.starts_with("plain"));
        if (c.Name.starts_with("Fanuc")) converter.SetDialect(TRS274DDialect::Fanuc);
        converter.SetSink(&path);
        converter.ReadNC(c.Input);
        ExpectLinked(path, root);
        ExpectSeekable(path);
        std::string text;
        for (int i = 0; i < path.Count(); ++i) text += TextOf(path.Move(i), path.PointOf(i, 0.25));
        for (const TPathTool& tool : path.Tools()) text += TextOf(tool);
        text += TextOf(StatisticsOf(path));
        const double seconds = path.Seconds();
        path.SetRapidRate(3000);
        path.SetRapidRate(6000);
        EXPECT_NEAR(path.Seconds(), seconds, 1e-9 * (1 + seconds));
        return text;
    });
}

} // namespace
} // namespace ZEP
