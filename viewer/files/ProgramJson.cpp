#include "viewer/files/ProgramJson.h"

#include "viewer/content/ProgramText.h"
#include "viewer/drawing/Look.h"
#include <zep/converters/rs274d/ToolPathStatistics.h>

#include <QJsonArray>

#include <cmath>

namespace ZEP {

namespace {

/// Without the digits that reckoning has left.
double Rounded(double value) {
    return std::round(value * 1e6) / 1e6;
}

QJsonArray PointToJson(const TGLArrayd3& point) {
    return {point[0], point[1], point[2]};
}

void Insert(const TPathSums& sums, QJsonObject& json) {
    json.insert(QStringLiteral("seconds"), Rounded(sums.Seconds()));
    json.insert(QStringLiteral("rapidSeconds"), Rounded(sums.RapidSeconds));
    json.insert(QStringLiteral("cutSeconds"), Rounded(sums.CutSeconds));
    json.insert(QStringLiteral("dwellSeconds"), Rounded(sums.DwellSeconds));
    json.insert(QStringLiteral("rapidLength"), Rounded(sums.RapidLength));
    json.insert(QStringLiteral("cutLength"), Rounded(sums.CutLength));
}

/// Null where none is known.
QJsonValue RangeToJson(double low, double high) {
    return high > 0 ? QJsonValue(QJsonArray{Rounded(low), Rounded(high)}) : QJsonValue();
}

/// As pictures show it.
QString HtmlColor(TColor color) {
    return ToQColor(ShownFor(color)).name();
}

QJsonObject ToolToJson(const TPathTool& tool, const TPathSums& sums) {
    QJsonObject json{{QStringLiteral("number"),
                      tool.Number >= 0 ? QJsonValue(tool.Number) : QJsonValue(QJsonValue::Null)},
                     {QStringLiteral("name"), tool.Name},
                     {QStringLiteral("color"), HtmlColor(tool.Color)},
                     {QStringLiteral("diameter"),
                      tool.Diameter > 0 ? QJsonValue(Rounded(tool.Diameter)) : QJsonValue()},
                     {QStringLiteral("feed"), RangeToJson(tool.MinFeed, tool.MaxFeed)},
                     {QStringLiteral("speed"), RangeToJson(tool.MinSpeed, tool.MaxSpeed)},
                     {QStringLiteral("moves"), sums.Moves}};
    Insert(sums, json);
    return json;
}

} // namespace

QJsonValue BoundsToJson(const std::optional<TZEPBounds>& bounds) {
    if (!bounds) return {};
    return QJsonObject{{QStringLiteral("min"), PointToJson(bounds->Min)},
                       {QStringLiteral("max"), PointToJson(bounds->Max)}};
}

QJsonObject ProgramToJson(const TToolPath& path) {
    const TToolPathStatistics statistics = StatisticsOf(path);
    QJsonObject moves;
    for (std::size_t kind = 0; kind < ToolMoveKinds; ++kind)
        moves.insert(KindName(kind), statistics.MovesByKind[kind]);
    QJsonArray tools;
    for (std::size_t i = 0; i < path.Tools().size(); ++i)
        if (statistics.ByTool[i].Moves > 0)
            tools.append(ToolToJson(path.Tools()[i], statistics.ByTool[i]));
    QJsonObject json{
        {QStringLiteral("rapidRate"), path.RapidRate()},
        {QStringLiteral("moves"), moves},
        {QStringLiteral("holes"), statistics.Holes},
        {QStringLiteral("movesWithoutFeed"), statistics.Untimed},
        {QStringLiteral("bounds"), BoundsToJson(statistics.Bounds)},
        {QStringLiteral("cutBounds"), BoundsToJson(statistics.CutBounds)},
        {QStringLiteral("deepestZ"),
         statistics.CutBounds ? QJsonValue(Rounded(statistics.CutBounds->Min[2])) : QJsonValue()},
        {QStringLiteral("tools"), tools}};
    Insert(statistics.All, json);
    return json;
}

} // namespace ZEP
