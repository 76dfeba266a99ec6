#include <zep/converters/dxf/Converter.h>
#include <zep/framework/Exception.h>
#include <zep/scene/Scene.h>

#include <cstdint>
#include <cstdlib>

namespace ZEP {
namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

/// What a viewer asks of all objects: a box, and a name that it can show.
void Look(TZEPScene& root) {
    std::vector<TZEPObject*> objects;
    root.ListChildren(objects);
    for (TZEPObject* object : objects) {
        TGLArrayd3 min, max;
        object->GetAbsoluteSize(min, max);
        Require(object->Owner() == &root && object->Scene() == &root);
    }
    Require(root.UpdateLevel() == 0);
}

/// Calls for progress until a host has enough: blocks in blocks make two million objects of a
/// handful of bytes, which a sanitizer takes half a minute for.
constexpr int MaxCalls = 10;

/// Reads any bytes as a drawing, in every way there is.
void ReadInEveryWay(std::string_view text) {
    for (const bool extended : {false, true})
        for (const bool create : {false, true}) {
            TZEPScene scene;
            TDXFConverter converter;
            converter.SetRoot(&scene);
            converter.SetExtended(extended);
            converter.SetCreateLayersIfNotExists(create);
            converter.SetProgress([calls = 0](qint64 done, qint64 total) mutable {
                Require(done >= 0 && done <= total);
                return ++calls < MaxCalls;
            });
            try {
                converter.ReadDXF(text);
            } catch (const Exception&) {
                Require(scene.GetItemsCount() == 0);
            }
            Look(scene);
            Require(converter.Report().Entries().size() < 500);
        }
}

} // namespace
} // namespace ZEP

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZEP::ReadInEveryWay({reinterpret_cast<const char*>(data), size});
    return 0;
}
