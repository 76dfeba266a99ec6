#include <zep/converters/dxf/Layers.h>

#include <zep/converters/Placing.h>
#include <zep/converters/dxf/CodePage.h>
#include <zep/converters/dxf/Colors.h>
#include <zep/view/Actor.h>

namespace ZEP {

TDXFLayers::TDXFLayers(TZEPObject& root, const TDXFOptions& options, const TDXFTextDecoder& text)
    : m_root(root), m_options(options), m_text(text) {
    for (int i = 0; i < root.GetItemsCount(); ++i) {
        TZEPObject* child = root.GetItem(i);
        QPointer<TZEPObject>& place = m_byIdent[child->Ident().toCaseFolded()];
        if (!place) place = child;
    }
}

// Neighbours lie on one layer mostly.
TZEPObject* TDXFLayers::FindLayer(std::string_view name) {
    if (m_lastLayer && name == m_lastName) return m_lastLayer;
    m_lastName = name;
    return m_lastLayer = LookUp(name);
}

QString TDXFLayers::IdentOf(std::string_view name) const {
    return m_options.LayerPrefix + m_text.Decode(name);
}

TZEPObject* TDXFLayers::LookUp(std::string_view name) {
    const auto [place, isNew] = m_byName.try_emplace(name);
    if (isNew) place->second = m_byIdent.value(IdentOf(name).toCaseFolded());
    return place->second;
}

TZEPObject* TDXFLayers::Make(const QString& ident) {
    auto* layer = new TZEPActor(&m_root);
    layer->SetIdent(ident);
    layer = Place(layer, &m_root, m_root);
    QPointer<TZEPObject>& place = m_byIdent[ident.toCaseFolded()];
    if (!place) place = layer;
    return layer;
}

TZEPObject* TDXFLayers::Declare(std::string_view name) {
    TZEPObject* layer = FindLayer(name);
    if (layer) return layer;
    layer = Make(IdentOf(name));
    // Other ways to write the name may have been looked up in vain.
    m_byName.clear();
    return layer;
}

TZEPObject* TDXFLayers::MakeUnnamed(int colorNumber) {
    TZEPObject* layer = Make({});
    if (const auto color = DXFColor(colorNumber); layer && color) layer->SetColor(*color);
    m_byName.erase(std::string_view());
    return layer;
}

TDXFSpot TDXFLayers::SpotOn(TZEPObject* layer, const TEntity& entity) const {
    const auto own = entity.Color == 0 ? std::nullopt : DXFColor(entity.Color);
    if (own) return {layer, *own};
    return {layer, layer ? layer->Color() : clSilver};
}

TDXFSpot TDXFLayers::Find(const TEntity& entity) {
    return SpotOn(FindLayer(entity.Layer), entity);
}

TDXFSpot TDXFLayers::FindOrMake(const TEntity& entity) {
    const TDXFSpot spot = Find(entity);
    if (spot.Layer || !m_options.CreateLayers) return spot;
    return SpotOn(MakeUnnamed(entity.Color), entity);
}

} // namespace ZEP
