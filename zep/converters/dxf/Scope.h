#pragma once

#include <zep/converters/dxf/Insertion.h>
#include <zep/converters/dxf/Record.h>
#include <zep/framework/Color.h>

#include <QPointer>

#include <unordered_map>

namespace ZEP {

class TDXFDrawing;
class TZEPNode;
class TZEPObject;
struct TDXFBlock;

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
    /// Of an inserted block. \param spot  of the insertion in the outer scope
    TDXFScope(TDXFScope& outer, const TDXFBlock& block, const TDXFInsertion& insertion,
              TZEPObject* layer, TColor color);
    Q_DISABLE_COPY_MOVE(TDXFScope)

    [[nodiscard]] bool IsInBlock() const { return m_outer != nullptr; }
    [[nodiscard]] int Depth() const { return m_depth; }
    /// The block is this one or one around it.
    [[nodiscard]] bool IsWithin(const TDXFBlock& block) const;

    /// The layer of an entity. In a block, layer "0" stands for that of the insertion. Null where
    /// it is not there and is not to be made.
    [[nodiscard]] TZEPObject* LayerOf(const TDXFRecord& record);
    /// The colour of an entity of that layer. In a block, colour 0 stands for that of the
    /// insertion.
    [[nodiscard]] TColor ColorOf(const TDXFRecord& record, const TZEPObject& layer) const;
    /// The parent of what lies on that layer.
    [[nodiscard]] TZEPObject* ParentOn(TZEPObject* layer);

private:
    [[nodiscard]] TZEPNode* MakeNode(TZEPObject* parent) const;

    TDXFDrawing& m_drawing;
    TDXFScope* m_outer = nullptr;
    const TDXFBlock* m_block = nullptr;
    TDXFInsertion m_insertion;
    QPointer<TZEPObject> m_layer;
    TColor m_color;
    int m_depth = 0;
    std::unordered_map<TZEPObject*, QPointer<TZEPObject>> m_nodes; // by layer
};

/// The layer of that name; made, white, where there is none and the options say so.
[[nodiscard]] TZEPObject* ExtendedLayer(TDXFDrawing& drawing, std::string_view name);

} // namespace ZEP
