#include <zep/converters/ReadReport.h>
#include <zep/converters/dxf/Reader.h>
#include <zep/converters/dxf/writer/Drawing.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Scene.h>

#include <QBuffer>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace ZEP {
namespace {

/// Fewer than the converter allows: an input should take no longer than a moment.
constexpr qint64 MostObjects = 2000;
constexpr qint64 FreeBytes = MostObjects * TDXFLimits::ObjectBytes;

void Require(bool condition) {
    if (!condition) std::abort();
}

void CheckPoints(TZEPPolyline& polyline) {
    TZEPVertexes& vertexes = *polyline.Vertexes();
    Require(vertexes.Count() >= 2);
    for (int i = 0; i < vertexes.Count(); ++i)
        for (const double value : vertexes[i].Data()) Require(std::isfinite(value));
}

void Check(TZEPScene& scene, std::size_t size) {
    std::vector<TZEPObject*> objects;
    scene.ListChildren(objects);
    // Each entity takes some bytes, and what a block adds may come with layers and nodes.
    const std::size_t most =
        MostObjects + size * TReadBudget::BytesOfEach / TDXFLimits::ObjectBytes;
    Require(objects.size() <= size + (TDXFScope::MaxDepth + 2) * most);
    for (TZEPObject* object : objects) {
        Require(object->Owner() == &scene && object->Parent() != nullptr);
        if (auto* polyline = qobject_cast<TZEPPolyline*>(object)) CheckPoints(*polyline);
    }
}

void Write(TZEPScene& scene) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    TReadReport report;
    TZEPObject* root = &scene;
    TDXFDrawingWriter({&root, 1}, true).Write(buffer, report);
    Require(buffer.data().endsWith("EOF\n"));
}

} // namespace
} // namespace ZEP

/// Reads any bytes as a drawing of blocks and curves, and writes what comes of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZEP::TZEPScene scene;
    ZEP::TDXFDrawing drawing({reinterpret_cast<const char*>(data), size}, scene,
                             {.Extended = true, .FreeBytes = ZEP::FreeBytes});
    ZEP::TDXFReader(drawing).Read();
    ZEP::Check(scene, size);
    ZEP::Write(scene);
    return 0;
}
