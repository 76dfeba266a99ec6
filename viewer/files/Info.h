#pragma once

#include "viewer/files/Document.h"

#include <QJsonObject>
#include <QMap>

namespace ZEP {

/// What is in an opened file, counted.
struct TFileInfo {
    QString File;
    QString Format;
    QString Dialect;               ///< of a program; empty where none was guessed
    double Seconds = 0;            ///< that reading took
    QMap<QString, qint64> Objects; ///< class name to count
    qint64 Layers = 0;
    qint64 Materials = 0;
    qint64 Vertices = 0; ///< of lines, arcs and circles as drawn; of others their own
    qint64 Faces = 0;    ///< of meshes, and polygons
    qint64 Lights = 0;
    QStringList Cameras;                     ///< names to choose them by
    QStringList Layouts;                     ///< likewise: sheets, in the order of their tabs
    std::optional<TZEPBounds> Bounds;        ///< absolute; none where nothing draws
    std::shared_ptr<const TToolPath> Path{}; ///< of the first program that has one; null: none
    std::vector<TPassedOver> Messages;
};

[[nodiscard]] TFileInfo InfoOf(const TOpenedFile& file);

/// A few lines for people.
/// Each kind with its count on a line.
[[nodiscard]] QString MessagesToText(const std::vector<TPassedOver>& messages);
[[nodiscard]] QString ToText(const TFileInfo& info);
/// Keys: file, format, dialect (of a program that was not read plain), seconds, objects, layers,
/// materials, vertices, faces, lights, cameras and layouts (their names), bounds (min, max; null
/// where nothing draws), messages (kind to count), and of a program `program` (see
/// docs/zepview.md).
[[nodiscard]] QJsonObject ToJson(const TFileInfo& info);

} // namespace ZEP
