#include "appearance/Light.h"
#include "converters/ThreeDSIds.h"
#include "converters/ThreeDSReader.h"
#include "scene/Vertex3.h"
#include "view/Camera.h"

namespace ZEP {

namespace {

constexpr double NearPlane = 0.1;
constexpr double FarPlane = 1000;

void Set(TZEPVertex3* vertex, const TGLArrayd3& point) {
    vertex->SetData(point[0], point[1], point[2]);
}

} // namespace

void TF3DSReader::ReadLightChunk(const TF3DSChunk& chunk, const QString& name) {
    // Each number of lights in a scene is counted through all of its objects.
    if (m_lightCount >= MaxLights) {
        ++m_strays.Lights;
        return SkipChunk(chunk, idObject);
    }
    ++m_lightCount;
    Dump(" <LightChunk> \r\n");
    auto& light = AddObject<TZEPLight>(chunk, name);
    Set(light.Position(), ReadPoint(chunk, "  pos=[%f,%f,%f]\r\n"));
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (IsColor(child)) return light.SetColor(ReadColor(child));
        if (child.Id == idSpotlight) return ReadSpotlight(child, light);
        SkipChunk(child, idLight);
    });
}

void TF3DSReader::ReadSpotlight(const TF3DSChunk& chunk, TZEPLight& light) {
    Dump(" <SpotlightChunk> \r\n");
    Set(light.Target(), ReadPoint(chunk, "  trg=[%f,%f,%f]\r\n"));
    light.SetParam(TZEPLight::ExponentParam, ReadFloat(chunk) / 2);
    DumpValues("  exponent=%f\r\n", static_cast<double>(light.Exponent()));
    light.SetParam(TZEPLight::CutoffParam, ReadFloat(chunk) / 2);
    DumpValues("  cutoff=%f\r\n", static_cast<double>(light.Cutoff()));
    light.SetDirectional(true);
}

void TF3DSReader::ReadCameraChunk(const TF3DSChunk& chunk, const QString& name) {
    Dump(" <CameraChunk> \r\n");
    auto& camera = AddObject<TZEPCamera>(chunk, name);
    camera.SetNearClipPlane(NearPlane);
    camera.SetFarClipPlane(FarPlane);
    Set(camera.Position(), ReadPoint(chunk, "  pos=[%f,%f,%f]\r\n"));
    Set(camera.Target(), ReadPoint(chunk, "  trg=[%f,%f,%f]\r\n"));
    camera.Roll(static_cast<double>(ReadNumber(chunk, "  roll=%f\r\n")));
    camera.SetFocalLength(static_cast<double>(ReadNumber(chunk, "  lens=%f\r\n")));
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (child.Id == idCameraRanges) return ReadCameraRanges(child, camera);
        SkipChunk(child, idCamera);
    });
}

void TF3DSReader::ReadCameraRanges(const TF3DSChunk& chunk, TZEPCamera& camera) {
    Dump(" <CameraSeeRangesChunk> \r\n");
    camera.SetNearClipPlane(static_cast<double>(ReadFloat(chunk)));
    camera.SetFarClipPlane(static_cast<double>(ReadFloat(chunk)));
    DumpValues("  near=%f, far=%f\r\n", camera.NearClipPlane(), camera.FarClipPlane());
}

} // namespace ZEP
