#include <zep/converters/threeds/LightCamera.h>

#include <zep/appearance/effects/Light.h>
#include <zep/converters/threeds/Ids.h>
#include <zep/converters/threeds/Stream.h>
#include <zep/scene/Vertex3.h>
#include <zep/view/Camera.h>

namespace ZEP {

namespace {

constexpr double NearPlane = 0.1;
constexpr double FarPlane = 1000;

void ReadSpotlight(TF3DSStream& stream, const TF3DSChunk& chunk, TZEPLight& light) {
    stream.Dump(" <SpotlightChunk> \r\n");
    light.Target()->SetData(stream.ReadPoint(chunk, "  trg=[%f,%f,%f]\r\n"));
    light.SetParam(TZEPLight::ExponentParam, stream.ReadFloat(chunk) / 2);
    stream.DumpValues("  exponent=%f\r\n", static_cast<double>(light.Exponent()));
    light.SetParam(TZEPLight::CutoffParam, stream.ReadFloat(chunk) / 2);
    stream.DumpValues("  cutoff=%f\r\n", static_cast<double>(light.Cutoff()));
    light.SetDirectional(true);
}

void ReadCameraRanges(TF3DSStream& stream, const TF3DSChunk& chunk, TZEPCamera& camera) {
    stream.Dump(" <CameraSeeRangesChunk> \r\n");
    camera.SetNearClipPlane(static_cast<double>(stream.ReadFloat(chunk)));
    camera.SetFarClipPlane(static_cast<double>(stream.ReadFloat(chunk)));
    stream.DumpValues("  near=%f, far=%f\r\n", camera.NearClipPlane(), camera.FarClipPlane());
}

} // namespace

void ReadLightChunk(TF3DSStream& stream, const TF3DSChunk& chunk, TZEPLight& light) {
    stream.Dump(" <LightChunk> \r\n");
    light.Position()->SetData(stream.ReadPoint(chunk, "  pos=[%f,%f,%f]\r\n"));
    stream.ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (TF3DSStream::IsColor(child)) return light.SetColor(stream.ReadColor(child));
        if (child.Id == idSpotlight) return ReadSpotlight(stream, child, light);
        stream.SkipChunk(child, idLight);
    });
}

void ReadCameraChunk(TF3DSStream& stream, const TF3DSChunk& chunk, TZEPCamera& camera) {
    stream.Dump(" <CameraChunk> \r\n");
    camera.SetNearClipPlane(NearPlane);
    camera.SetFarClipPlane(FarPlane);
    camera.Position()->SetData(stream.ReadPoint(chunk, "  pos=[%f,%f,%f]\r\n"));
    camera.Target()->SetData(stream.ReadPoint(chunk, "  trg=[%f,%f,%f]\r\n"));
    camera.Roll(static_cast<double>(stream.ReadNumber(chunk, "  roll=%f\r\n")));
    camera.SetFocalLength(static_cast<double>(stream.ReadNumber(chunk, "  lens=%f\r\n")));
    stream.ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (child.Id == idCameraRanges) return ReadCameraRanges(stream, child, camera);
        stream.SkipChunk(child, idCamera);
    });
}

} // namespace ZEP
