#include "viewer/content/Describe.h"

#include <zep/converters/rs274d/ToolPath.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Line.h>
#include <zep/objects/Point.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/view/Dimension.h>
#include <zep/view/Facts.h>
#include <zep/widgets/ObjectLook.h>

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr int Decimals = 3;

TGLArrayd3 Absolute(const TZEPObject& object, const TGLArrayd3& point) {
    TGLArrayd3 result;
    object.ConvertToAbsolute(point, result);
    return result;
}

QString Text(double value) {
    return QLocale().toString(value, 'f', Decimals);
}

QString Text(const TGLArrayd3& point) {
    return QStringLiteral("(%1; %2; %3)").arg(Text(point[0]), Text(point[1]), Text(point[2]));
}

QString FromTo(const TGLArrayd3& from, const TGLArrayd3& to) {
    return Text(from) + QStringLiteral(" to ") + Text(to);
}

TGLArrayd3 CenterOf(const TZEPObject& object) {
    TGLArrayd3 center;
    object.GetBoundingBoxAbsoluteCenter3Real(center[0], center[1], center[2]);
    return center;
}

QString PlaceOf(TZEPObject& object) {
    if (auto* line = qobject_cast<TZEPLine*>(&object))
        return FromTo(Absolute(*line, line->P1()->Data()), Absolute(*line, line->P2()->Data()));
    if (auto* point = qobject_cast<TZEPPoint*>(&object))
        return Text(Absolute(*point, point->P()->Data()));
    if (const auto* arc = qobject_cast<TZEPArc*>(&object))
        return FromTo(PointOnCircle(*arc, arc->StartAngle()),
                      PointOnCircle(*arc, arc->EndAngle())) +
               QStringLiteral(" about ") + Text(Absolute(*arc, zero3d));
    return QStringLiteral("about ") + Text(CenterOf(object));
}

QString SizeOf(const TZEPObject& object) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetAbsoluteSize(min, max);
    const TGLArrayd3 size = max - min;
    return QStringLiteral("%1 x %2 x %3").arg(Text(size[0]), Text(size[1]), Text(size[2]));
}

} // namespace

std::optional<int> ProgramLineOf(const TZEPObject& object) {
    const QString ident = object.Ident();
    const QLatin1String prefix("Line ");
    if (!ident.startsWith(prefix)) return {};
    bool isNumber = false;
    const int line = QStringView(ident).mid(prefix.size()).toInt(&isNumber);
    return isNumber && line > 0 ? std::optional(line) : std::nullopt;
}

namespace {

/// "Line, program line 12", "Text "Scale 1:50""
QString Titled(const TZEPObject& object) {
    const QString kind = KindOf(object);
    if (const std::optional<int> line = ProgramLineOf(object))
        return QStringLiteral("%1, program line %2").arg(kind).arg(*line);
    const QString name = NameOf(object);
    return name == kind ? kind : QStringLiteral("%1 \"%2\"").arg(kind, name);
}

} // namespace

QString Describe(TZEPObject& object, const QString& unit) {
    if (const auto* dimension = qobject_cast<TZEPDimension*>(&object)) return dimension->Report();
    const TZEPFacts facts = FactsOf(object);
    QStringList parts{Titled(object)};
    const auto add = [&](const QString& what, const QString& value) {
        if (!value.isEmpty()) parts << QStringLiteral("%1 %2").arg(what, value);
    };
    const auto measure = [&](const QString& what, const std::optional<double>& value,
                             const QString& of) {
        if (value) add(what, Text(*value) + u' ' + of);
    };
    add(QStringLiteral("layer"), facts.Layer);
    add(QStringLiteral("block"), facts.Blocks);
    add(QStringLiteral("line type"), facts.LineType);
    if (!object.Ident().isEmpty()) add(QStringLiteral("text"), facts.Text);
    measure(QStringLiteral("radius"), facts.Radius, unit);
    if (facts.Radius) measure(QStringLiteral("diameter"), 2 * *facts.Radius, unit);
    measure(QStringLiteral("length"), facts.Length, unit);
    measure(QStringLiteral("area"), facts.Area, QStringLiteral("square ") + unit);
    if (!facts.Length && !qobject_cast<TZEPPoint*>(&object))
        add(QStringLiteral("size"), SizeOf(object) + u' ' + unit);
    parts << PlaceOf(object); // what is long stands last: a narrow window cuts it off
    return parts.join(QStringLiteral(", "));
}

QString Describe(const TToolPath& path, int move, double fraction) {
    constexpr const char* kinds[] = {"rapid", "feed", "arc", "drilling", "dwell"};
    const TToolMove made = path.Move(move);
    const TRS274DPoint at = path.PointOf(move, fraction);
    const TPathTool& tool = path.Tools()[made.Tool];
    QString text = QStringLiteral("Line %1, %2: X %3  Y %4  Z %5")
                       .arg(QString::number(made.Line),
                            QLatin1String(kinds[static_cast<std::size_t>(made.Kind)]), Text(at[0]),
                            Text(at[1]), Text(at[2]));
    if (made.Feed > 0)
        text += QStringLiteral("  F ") + QLocale().toString(made.Feed, 'g', 6) +
                QStringLiteral(" mm/min");
    if (tool.Number >= 0) text += QStringLiteral("  T%1").arg(tool.Number);
    if (!tool.Name.isEmpty()) text += QStringLiteral(" (%1)").arg(tool.Name);
    return text + QStringLiteral(", length ") + Text(made.Length);
}

QString TimeText(double seconds) {
    const auto whole = static_cast<qint64>(std::min(seconds, 1e15));
    const QString rest = QStringLiteral("%1:%2")
                             .arg(whole / 60 % 60, whole < 3600 ? 1 : 2, 10, QLatin1Char('0'))
                             .arg(whole % 60, 2, 10, QLatin1Char('0'));
    return whole < 3600 ? rest : QStringLiteral("%1:").arg(whole / 3600) + rest;
}

} // namespace ZEP
