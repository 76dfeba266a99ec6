#include "viewer/files/FileCameras.h"

#include "viewer/files/Document.h"
#include <zep/batch/Batch.h>
#include <zep/framework/Exception.h>
#include <zep/scene/Vectors.h>

#include <QMap>

#include <algorithm>

namespace ZEP {

namespace {

constexpr double NearPart = 1e-4; // of the depth
constexpr double DepthMargin = 10;

TGLArrayd3 Absolute(const TZEPCamera& camera, TGLArrayd3 point) {
    Xformd(camera.GetAbsoluteMatrix(), point);
    return point;
}

/// So far that all can be seen from there, also when the view moves back.
double DepthFrom(const TGLArrayd3& eye, const std::optional<TZEPBounds>& bounds) {
    if (!bounds) return 1;
    return DepthMargin * std::max(Distance(eye, bounds->Min), Distance(eye, bounds->Max));
}

} // namespace

std::vector<TFileCamera> CamerasOf(std::span<const TOpenedFile> files) {
    std::vector<TFileCamera> cameras;
    QMap<QString, int> seen;
    for (const TOpenedFile& file : files) {
        if (file.Format == TFileFormat::RS274D || file.Format == TFileFormat::DXF) continue;
        ForEachObject(*file.Root, [&](TZEPObject& object) {
            auto* camera = qobject_cast<TZEPCamera*>(&object);
            if (!camera) return;
            QString name = camera->Ident().isEmpty() ? QStringLiteral("Camera") : camera->Ident();
            const int number = ++seen[name];
            if (number > 1) name += QStringLiteral(" (%1)").arg(number);
            cameras.push_back({name, camera});
        });
    }
    return cameras;
}

void LookThrough(const TZEPCamera& camera, TDocument& document) {
    TZEPCamera& view = *document.Camera();
    const TGLArrayd3 eye = Absolute(camera, camera.GetPosition());
    const TGLArrayd3 target = Absolute(camera, camera.GetTarget());
    const double depth = std::max(DepthFrom(eye, document.Bounds()), Distance(eye, target));
    view.Position()->SetData(eye);
    view.Target()->SetData(target);
    view.SetOrthographic(camera.Orthographic());
    view.SetFOVY(camera.FieldOfView());
    view.SetNearClipPlane(camera.Orthographic() ? -depth : depth * NearPart);
    view.SetFarClipPlane(depth);
    view.Reset();
    view.Roll(camera.RollAngle());
}

void LookThrough(const QString& name, TDocument& document) {
    QStringList names;
    for (const auto& [each, camera] : CamerasOf(document.Files())) {
        if (each.compare(name, Qt::CaseInsensitive) == 0) return LookThrough(*camera, document);
        names << each;
    }
    const QString known = names.isEmpty()
                              ? QStringLiteral("it has none")
                              : QStringLiteral("it has ") + names.join(QStringLiteral(", "));
    throw Exception(QStringLiteral("There is no camera \"%1\": %2.").arg(name, known),
                    {.File = document.Files().front().Name});
}

} // namespace ZEP
