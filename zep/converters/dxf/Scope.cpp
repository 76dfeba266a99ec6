#include <zep/converters/dxf/Scope.h>

#include <zep/converters/Placing.h>
#include <zep/converters/dxf/Blocks.h>
#include <zep/converters/dxf/Drawing.h>
#include <zep/converters/dxf/Names.h>
#include <zep/converters/dxf/Palette.h>
#include <zep/objects/Node.h>

#include <cstdlib>

namespace ZEP {

namespace {

constexpr int ByBlock = 0;
constexpr int ByLayer = 256;

} // namespace

TZEPObject* ExtendedLayer(TDXFDrawing& drawing, std::string_view name) {
    TZEPObject* layer = drawing.Layers.FindLayer(name);
    if (layer || !drawing.Options.CreateLayers) return layer;
    layer = drawing.Layers.Declare(name);
    if (layer) layer->SetColor(clWhite);
    return layer;
}

TDXFScope::TDXFScope(TDXFDrawing& drawing, TDXFScope& outer, const TDXFBlock& block,
                     const TDXFInsertion& insertion, const TDXFLook& look)
    : m_drawing(drawing), m_outer(&outer), m_block(&block), m_insertion(insertion), m_look(look),
      m_depth(outer.m_depth + 1) {}

TDXFScope::TDXFScope(TDXFScope& outer, const TDXFInsertion& insertion, const TDXFLook& look)
    : m_drawing(outer.m_drawing), m_outer(&outer), m_insertion(insertion), m_look(look),
      m_depth(outer.m_depth) {}

bool TDXFScope::IsWithin(const TDXFBlock& block) const {
    for (const TDXFScope* scope = this; scope; scope = scope->m_outer)
        if (scope->m_block == &block) return true;
    return false;
}

TZEPObject* TDXFScope::LayerOf(const TDXFRecord& record) {
    const std::string_view name = record.Text(8, "0");
    if (IsInBlock() && name == "0" && m_look.Layer) return m_look.Layer;
    return ExtendedLayer(m_drawing, name);
}

TColor TDXFScope::ColorOf(const TDXFRecord& record, const TZEPObject& layer) const {
    const int number = record.Integer(62, ByLayer);
    if (record.Has(420)) return DXFTrueColor(record.Integer(420), number);
    if (number == ByBlock) return m_look.Color;
    if (number >= ByLayer || number <= -ByLayer) return layer.Color();
    return DXFPaletteColor(std::abs(number));
}

const TDXFLineType* TDXFScope::LineTypeOf(const TDXFRecord& record, const TZEPObject& layer) const {
    const TDXFLineTypes& types = m_drawing.LineTypes;
    if (!types.AreThere()) return nullptr;
    const std::string name = FoldedDXFName(record.Text(6, "bylayer"));
    if (name == "bylayer") return types.OfLayer(&layer);
    return name == "byblock" ? m_look.LineType : types.Find(name);
}

int TDXFScope::WeightOf(const TDXFRecord& record, const TZEPObject& layer) const {
    const int weight = record.Integer(370, TDXFWeights::ByLayer);
    if (weight == TDXFWeights::ByBlock) return m_look.Weight;
    if (weight != TDXFWeights::ByLayer) return weight;
    return m_drawing.Weights.OfLayers.value(&layer, TDXFWeights::Default);
}

TZEPObject* TDXFScope::ParentOn(TZEPObject* layer) {
    if (!IsInBlock() && !m_isSheet) return layer;
    if (!m_block && !m_isSheet) return m_outer->ParentOn(layer);
    QPointer<TZEPObject>& node = m_nodes[layer];
    if (!node) node = m_isSheet ? MakePart(*layer) : MakeNode(m_outer->ParentOn(layer));
    return node;
}

/// Of a layer, on a sheet.
TZEPNode* TDXFScope::MakePart(const TZEPObject& layer) const {
    auto* part = new TZEPNode(&m_drawing.Root);
    part->SetIdent(layer.Ident());
    part->SetColor(layer.Color());
    return Place(part, m_sheet, m_drawing.Root);
}

TZEPNode* TDXFScope::MakeNode(TZEPObject* parent) const {
    auto* node = new TZEPNode(&m_drawing.Root);
    node->SetIdent(m_block->Name);
    const TGLArrayd3& base = m_block->IsOther ? m_drawing.InsertionBase : m_block->Base;
    if (!m_insertion.IsIdentity(base)) m_insertion.SetTransform(*node->XForm(), base);
    if (m_insertion.Hidden) node->SetVisible(false);
    return Place(node, parent, m_drawing.Root);
}

} // namespace ZEP
