#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/converters/threeds/Converter.h>
#include <zep/framework/Exception.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/Scene.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace ZEP {
namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

/// A box that any view can be fitted to.
void CheckBox(const TZEPObject& object) {
    for (const TGLArrayd3& corner : {object.GetAbsoluteMin(), object.GetAbsoluteMax()})
        for (const double value : corner) Require(std::isfinite(value));
}

void CheckFaces(TZEPMesh& mesh, int materials) {
    for (int i = 0; i < mesh.Faces()->Count(); ++i) {
        const TZEPFace3CI& face = (*mesh.Faces())[i];
        Require(face.A() >= 0 && face.B() >= 0 && face.C() >= 0);
        Require(face.MaterialIndex() >= -1 && face.MaterialIndex() < materials);
    }
}

/// Reads any bytes as a scene.
void Read(std::string_view bytes, bool hasLibrary, bool extended) {
    TZEPScene scene;
    TZEPMaterialLibrary library;
    TF3DSConverter converter;
    converter.SetRoot(&scene);
    converter.SetMaterials(hasLibrary ? &library : nullptr);
    converter.SetExtended(extended);
    try {
        converter.Read3DS(bytes);
    } catch (const Exception&) {
        // errors are told, never crashes
    }
    Require(scene.UpdateLevel() == 0);
    for (int i = 0; i < scene.GetItemsCount(); ++i) {
        CheckBox(*scene.GetItem(i));
        if (auto* mesh = qobject_cast<TZEPMesh*>(scene.GetItem(i)))
            CheckFaces(*mesh, library.Materials()->Count());
    }
}

} // namespace
} // namespace ZEP

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const bool hasLibrary : {false, true})
        for (const bool extended : {false, true}) ZEP::Read(bytes, hasLibrary, extended);
    return 0;
}
