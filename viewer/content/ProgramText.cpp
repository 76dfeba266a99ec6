#include "viewer/content/ProgramText.h"

#include "viewer/content/Describe.h"
#include <zep/converters/rs274d/ToolPathStatistics.h>

#include <QLocale>

#include <cmath>

namespace ZEP {

namespace {

QString Coordinate(double value) {
    return QLocale().toString(std::abs(value) < 5e-4 ? 0.0 : value, 'f', 3);
}

QString RangeOfAxis(const TZEPBounds& bounds, std::size_t axis) {
    return QStringLiteral("%1 to %2")
        .arg(Coordinate(bounds.Min[axis]), Coordinate(bounds.Max[axis]));
}

void AddBounds(const QString& name, const std::optional<TZEPBounds>& bounds,
               std::vector<TProgramFact>& facts) {
    if (!bounds) return;
    constexpr const char* axes[] = {"X", "Y", "Z"};
    for (std::size_t axis = 0; axis < std::size(axes); ++axis)
        facts.push_back({QStringLiteral("%1 %2").arg(name, QLatin1String(axes[axis])),
                         RangeOfAxis(*bounds, axis) + QStringLiteral(" mm")});
}

QString Count(int count) {
    return QLocale().toString(count);
}

} // namespace

QString LengthText(double millimetres) {
    return QLocale().toString(millimetres, 'f', 1) + QStringLiteral(" mm");
}

QString RangeText(double low, double high) {
    if (high <= 0) return {};
    const auto text = [](double value) { return QLocale().toString(value, 'g', 6); };
    return low == high ? text(low) : QStringLiteral("%1 to %2").arg(text(low), text(high));
}

QString KindName(std::size_t kind) {
    constexpr const char* names[] = {"rapid", "feed", "arc", "drill", "dwell"};
    return QLatin1String(names[kind]);
}

QString NameOf(const TPathTool& tool) {
    const QString number = tool.Number >= 0 ? QStringLiteral("T%1").arg(tool.Number) : QString();
    if (!tool.Name.isEmpty())
        return number.isEmpty() ? tool.Name : number + QStringLiteral("  ") + tool.Name;
    return number.isEmpty() ? QStringLiteral("no number") : number;
}

std::vector<TProgramFact> FactsOf(const TToolPathStatistics& statistics) {
    const TPathSums& all = statistics.All;
    std::vector<TProgramFact> facts{
        {QStringLiteral("Time"), TimeText(all.Seconds())},
        {QStringLiteral("- rapid"), TimeText(all.RapidSeconds)},
        {QStringLiteral("- cutting"), TimeText(all.CutSeconds)},
        {QStringLiteral("- dwell"), TimeText(all.DwellSeconds)},
        {QStringLiteral("Length of cut"), LengthText(all.CutLength)},
        {QStringLiteral("Length of rapid"), LengthText(all.RapidLength)}};
    AddBounds(QStringLiteral("Cuts"), statistics.CutBounds, facts);
    AddBounds(QStringLiteral("All moves"), statistics.Bounds, facts);
    if (statistics.CutBounds)
        facts.push_back({QStringLiteral("Deepest Z"),
                         Coordinate(statistics.CutBounds->Min[2]) + QStringLiteral(" mm")});
    if (statistics.Holes > 0) facts.push_back({QStringLiteral("Holes"), Count(statistics.Holes)});
    if (statistics.Untimed > 0)
        facts.push_back(
            {QStringLiteral("Cuts without a feed"),
             QStringLiteral("%1, left out of the times").arg(Count(statistics.Untimed))});
    return facts;
}

} // namespace ZEP
