#pragma once

#include <zep/converters/dxf/Insertion.h>
#include <zep/converters/dxf/Record.h>
#include <zep/converters/dxf/Weights.h>
#include <zep/framework/Color.h>

#include <QPointer>

#include <unordered_map>

namespace ZEP {

class TDXFDrawing;
class TZEPNode;
class TZEPObject;
struct TDXFBlock;
struct TDXFLineType;

/// What an entity of a block takes over from the insertion where it says so.
struct TDXFLook {
    QPointer<TZEPObject> Layer{};
    TColor Color = clWhite;
    const TDXFLineType* LineType = nullptr; ///< null: solid
    int Weight = TDXFWeights::Default;
};

/// Where entities go in the extended reading: under their layers, or, those of an inserted block,
/// under a node that has the transform of the insertion. Each layer that the block has entities on
/// gets such a node, so that hiding a layer hides what the block has there. Blocks in blocks give
/// nodes in nodes.
class TDXFScope {
public:
    /// The deepest nesting of blocks.
    static constexpr int MaxDepth = 32;

    /// Of the drawing itself.
    explicit TDXFScope(TDXFDrawing& drawing) : m_drawing(drawing) {}
    /// Of a sheet, where a part for each layer holds what is drawn on it. \param sheet  null, also
    /// once the host has freed it: what is made has no parent
    TDXFScope(TDXFDrawing& drawing, TZEPObject* sheet)
        : m_drawing(drawing), m_sheet(sheet), m_isSheet(true) {}
    /// Of an inserted block.
    /// \param look  of the insertion, in the outer scope
    TDXFScope(TDXFScope& outer, const TDXFBlock& block, const TDXFInsertion& insertion,
              const TDXFLook& look)
        : TDXFScope(outer.m_drawing, outer, block, insertion, look) {}
    /// The same of a drawing in another file.
    TDXFScope(TDXFDrawing& drawing, TDXFScope& outer, const TDXFBlock& block,
              const TDXFInsertion& insertion, const TDXFLook& look);
    /// Of the texts of an insertion, which stand beside it.
    TDXFScope(TDXFScope& outer, const TDXFInsertion& insertion, const TDXFLook& look);
    Q_DISABLE_COPY_MOVE(TDXFScope)

    /// Or among the texts of an insertion.
    [[nodiscard]] bool IsInBlock() const { return m_outer != nullptr; }
    /// Of a sheet itself.
    [[nodiscard]] bool IsSheet() const { return m_isSheet; }
    /// Or in a block on one.
    [[nodiscard]] bool IsOnSheet() const { return m_isSheet || (m_outer && m_outer->IsOnSheet()); }
    /// What a dimension shows.
    [[nodiscard]] bool IsOfDimension() const { return m_insertion.OfDimension; }
    /// What the insertion says for the definition of an attribute with that handle.
    [[nodiscard]] std::string_view TextOf(quint64 definition) const {
        return m_insertion.Texts ? m_insertion.Texts->value(definition) : std::string_view();
    }
    /// \name Texts of an insertion: of a block its node says so
    /// @{
    [[nodiscard]] bool IsHidden() const { return !m_block && m_insertion.Hidden; }
    /// From where they are written down to their cell.
    [[nodiscard]] TGLArrayd3 Shift() const { return m_block ? zero3d : m_insertion.Place; }
    /// @}
    [[nodiscard]] int Depth() const { return m_depth; }
    /// The block is this one or one around it.
    [[nodiscard]] bool IsWithin(const TDXFBlock& block) const;

    /// The layer of an entity. In a block, layer "0" stands for that of the insertion. Null where
    /// it is not there and is not to be made.
    [[nodiscard]] TZEPObject* LayerOf(const TDXFRecord& record);
    /// What an entity of that layer hands on to its block.
    [[nodiscard]] TDXFLook LookOf(const TDXFRecord& record, TZEPObject& layer) const {
        return {&layer, ColorOf(record, layer), LineTypeOf(record, layer), WeightOf(record, layer)};
    }
    /// The colour of an entity of that layer. In a block, colour 0 stands for that of the
    /// insertion, else for white.
    [[nodiscard]] TColor ColorOf(const TDXFRecord& record, const TZEPObject& layer) const;
    /// The line type of an entity of that layer, by layer and by block as its colour; null for what
    /// is solid.
    [[nodiscard]] const TDXFLineType* LineTypeOf(const TDXFRecord& record,
                                                 const TZEPObject& layer) const;
    /// The line weight, likewise.
    [[nodiscard]] int WeightOf(const TDXFRecord& record, const TZEPObject& layer) const;
    /// The parent of what lies on that layer.
    [[nodiscard]] TZEPObject* ParentOn(TZEPObject* layer);

private:
    [[nodiscard]] TZEPNode* MakeNode(TZEPObject* parent) const;
    [[nodiscard]] TZEPNode* MakePart(const TZEPObject& layer) const;

    TDXFDrawing& m_drawing;
    TDXFScope* m_outer = nullptr;
    const TDXFBlock* m_block = nullptr;
    TDXFInsertion m_insertion;
    TDXFLook m_look;
    int m_depth = 0;
    QPointer<TZEPObject> m_sheet;
    bool m_isSheet = false;
    std::unordered_map<TZEPObject*, QPointer<TZEPObject>> m_nodes; // by layer
};

/// The layer of that name; made, white, where there is none and the options say so.
[[nodiscard]] TZEPObject* ExtendedLayer(TDXFDrawing& drawing, std::string_view name);

} // namespace ZEP
