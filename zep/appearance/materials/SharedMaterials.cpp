#include <zep/appearance/materials/SharedMaterials.h>

#include <zep/appearance/materials/Material.h>

#include <memory>
#include <unordered_map>

namespace ZEP {

namespace {

using Key = std::uint64_t;

/// As many as bear it in memory (30 MB): beyond, a frame of so many colours makes them anew.
constexpr std::size_t KeptMaterials = 65536;
constexpr Key NoColor = Key{1} << 32;
constexpr Key Line = Key{1} << 33;

struct Shared {
    std::unordered_map<Key, std::unique_ptr<TZEPMaterial>> Materials;
    Key LastKey = 0;
    TZEPMaterial* Last = nullptr;
};

Shared& Table() {
    static Shared table;
    return table;
}

std::unique_ptr<TZEPMaterial> Make(const TColor* color, bool line) {
    auto material = std::make_unique<TZEPMaterial>(TNotifyEvent{});
    if (color) {
        material->FrontFace()->SetColor(10, *color);
        material->BackFace()->SetColor(10, *color);
    }
    if (line) material->SetTransparency(LineTransparency);
    return material;
}

} // namespace

TZEPMaterial& SharedMaterial(const TColor* color, bool line) {
    Shared& table = Table();
    const Key key = (color ? ColorToRGB(*color) : NoColor) | (line ? Line : 0);
    if (table.Last && table.LastKey == key) return *table.Last;
    auto& material = table.Materials[key];
    if (!material) material = Make(color, line);
    table.LastKey = key;
    table.Last = material.get();
    return *material;
}

void TrimSharedMaterials() {
    Shared& table = Table();
    if (table.Materials.size() <= KeptMaterials) return;
    table.Last = nullptr;
    table.Materials.clear();
}

} // namespace ZEP
