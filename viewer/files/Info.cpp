#include "viewer/files/Info.h"

#include "viewer/content/Describe.h"
#include "viewer/content/ProgramText.h"
#include "viewer/files/FileCameras.h"
#include "viewer/files/FileLayouts.h"
#include "viewer/files/ProgramJson.h"
#include "viewer/files/Programs.h"
#include <zep/appearance/effects/Light.h>
#include <zep/batch/Batch.h>
#include <zep/converters/rs274d/ToolPathStatistics.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Line.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/view/Actor.h>

#include <QJsonArray>
#include <QLocale>

#include <unordered_map>

namespace ZEP {

namespace {

/// Vertices of one object: corners of the line that it is drawn as.
qint64 VerticesOf(TZEPObject& object) {
    if (qobject_cast<TZEPLine*>(&object)) return 2;
    if (qobject_cast<TZEPPoint*>(&object)) return 1;
    if (const auto* arc = qobject_cast<TZEPArc*>(&object)) return arc->Segments() + 1;
    if (const auto* circle = qobject_cast<TZEPCircle*>(&object)) return circle->Segments();
    if (auto* polyline = qobject_cast<TZEPPolyline*>(&object)) return polyline->Vertexes()->Count();
    if (auto* lines = qobject_cast<TZEPLineSet*>(&object)) return lines->Vertexes()->Count();
    if (auto* polygon = qobject_cast<TZEPPolygon*>(&object)) return polygon->Vertexes()->Count();
    if (auto* mesh = qobject_cast<TZEPMesh*>(&object)) return mesh->Vertexes()->Count();
    return 0;
}

qint64 FacesOf(TZEPObject& object) {
    if (auto* mesh = qobject_cast<TZEPMesh*>(&object)) return mesh->Faces()->Count();
    return qobject_cast<TZEPPolygon*>(&object) ? 1 : 0;
}

QJsonObject CountsToJson(const QMap<QString, qint64>& counts) {
    QJsonObject json;
    for (auto i = counts.begin(); i != counts.end(); ++i) json.insert(i.key(), i.value());
    return json;
}

QString PointToText(const TGLArrayd3& point) {
    const auto number = [](double value) { return QString::number(value, 'g', 8); };
    return QStringLiteral("(%1, %2, %3)").arg(number(point[0]), number(point[1]), number(point[2]));
}

QString CountsToText(const QMap<QString, qint64>& counts) {
    QString text;
    for (auto i = counts.begin(); i != counts.end(); ++i)
        text += QStringLiteral("  %1: %2\n").arg(i.key()).arg(i.value());
    return text;
}

QJsonObject MessagesToJson(const std::vector<TPassedOver>& messages) {
    QJsonObject json;
    for (const TPassedOver& message : messages) json.insert(message.Kind, message.Count);
    return json;
}

/// What scripts read has points in its numbers wherever it is written.
class TPlainNumbers {
public:
    TPlainNumbers() { QLocale::setDefault(QLocale::c()); }
    ~TPlainNumbers() { QLocale::setDefault(m_before); }
    TPlainNumbers(const TPlainNumbers&) = delete;
    TPlainNumbers& operator=(const TPlainNumbers&) = delete;

private:
    QLocale m_before;
};

QString ProgramToText(const TToolPath& path) {
    const TPlainNumbers plain;
    const TToolPathStatistics statistics = StatisticsOf(path);
    QString text = QStringLiteral("Program (rapid at %1 mm/min):\n").arg(path.RapidRate());
    for (const TProgramFact& fact : FactsOf(statistics))
        text += QStringLiteral("  %1: %2\n").arg(fact.Name, fact.Value);
    for (std::size_t i = 0; i < path.Tools().size(); ++i)
        if (const TPathSums& sums = statistics.ByTool[i]; sums.Moves > 0)
            text += QStringLiteral("  Tool %1: %2, cut %3\n")
                        .arg(NameOf(path.Tools()[i]), TimeText(sums.Seconds()),
                             LengthText(sums.CutLength));
    return text;
}

} // namespace

TFileInfo InfoOf(const TOpenedFile& file) {
    TFileInfo info;
    info.File = file.Name;
    info.Format = FormatName(file.Format);
    info.Dialect = file.Dialect;
    info.Seconds = file.Seconds;
    info.Messages = file.Messages;
    std::unordered_map<const QMetaObject*, qint64> counts;
    ForEachObject(*file.Root, [&](TZEPObject& object) {
        ++counts[object.metaObject()];
        info.Vertices += VerticesOf(object);
        info.Faces += FacesOf(object);
        if (qobject_cast<TZEPActor*>(&object)) ++info.Layers;
        if (qobject_cast<TZEPLight*>(&object)) ++info.Lights;
    });
    info.Materials = file.Materials;
    for (const TFileCamera& camera : CamerasOf({&file, 1})) info.Cameras << camera.Name;
    for (const TFileLayout& layout : LayoutsOf({&file, 1})) info.Layouts << layout.Name;
    for (const auto& [metaObject, count] : counts)
        info.Objects[QString::fromLatin1(metaObject->className())
                         .section(QStringLiteral("::"), -1)] += count;
    for (const TProgram& program : ProgramsOf({&file, 1}))
        if (!info.Path) info.Path = program.Path;
    info.Bounds = ExtentOf(*file.Root).Bounds();
    return info;
}

QString MessagesToText(const std::vector<TPassedOver>& messages) {
    QString text;
    for (const TPassedOver& message : messages)
        text +=
            QStringLiteral("  %1: %2").arg(message.Kind, QString::number(message.Count)) +
            (message.FirstLine > 0 ? QStringLiteral(", first in line %1\n").arg(message.FirstLine)
                                   : QStringLiteral("\n"));
    return text;
}

QString ToText(const TFileInfo& info) {
    QString text = QStringLiteral("%1: %2, read in %3 s\n")
                       .arg(info.File, info.Format, QString::number(info.Seconds, 'f', 3));
    if (!info.Dialect.isEmpty())
        text += QStringLiteral("Dialect: %1, as it seems\n").arg(info.Dialect);
    text += QStringLiteral("Objects:\n") + CountsToText(info.Objects);
    text += QStringLiteral("Layers %1, materials %2, vertices %3, faces %4, lights %5\n")
                .arg(info.Layers)
                .arg(info.Materials)
                .arg(info.Vertices)
                .arg(info.Faces)
                .arg(info.Lights);
    if (!info.Cameras.isEmpty())
        text += QStringLiteral("Cameras: %1\n").arg(info.Cameras.join(QStringLiteral(", ")));
    if (!info.Layouts.isEmpty())
        text += QStringLiteral("Layouts: %1\n").arg(info.Layouts.join(QStringLiteral(", ")));
    if (info.Bounds)
        text += QStringLiteral("Bounds: %1 to %2\n")
                    .arg(PointToText(info.Bounds->Min), PointToText(info.Bounds->Max));
    if (info.Path) text += ProgramToText(*info.Path);
    if (!info.Messages.empty())
        text += QStringLiteral("Passed over:\n") + MessagesToText(info.Messages);
    return text;
}

QJsonObject ToJson(const TFileInfo& info) {
    QJsonObject json{{QStringLiteral("file"), info.File},
                     {QStringLiteral("format"), info.Format},
                     {QStringLiteral("seconds"), info.Seconds},
                     {QStringLiteral("objects"), CountsToJson(info.Objects)},
                     {QStringLiteral("layers"), info.Layers},
                     {QStringLiteral("materials"), info.Materials},
                     {QStringLiteral("vertices"), info.Vertices},
                     {QStringLiteral("faces"), info.Faces},
                     {QStringLiteral("lights"), info.Lights},
                     {QStringLiteral("cameras"), QJsonArray::fromStringList(info.Cameras)},
                     {QStringLiteral("layouts"), QJsonArray::fromStringList(info.Layouts)},
                     {QStringLiteral("bounds"), BoundsToJson(info.Bounds)},
                     {QStringLiteral("messages"), MessagesToJson(info.Messages)}};
    if (info.Path) json.insert(QStringLiteral("program"), ProgramToJson(*info.Path));
    if (!info.Dialect.isEmpty()) json.insert(QStringLiteral("dialect"), info.Dialect);
    return json;
}

} // namespace ZEP
