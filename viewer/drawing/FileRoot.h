#pragma once

#include "viewer/drawing/LayerBatch.h"

#include <memory>
#include <optional>
#include <unordered_map>

namespace ZEP {

/// The parent of all that was read from one file. It draws lines, arcs, points, text and faces in
/// batches: one for each layer, that is each child that only holds others, and one for its other
/// children. After a change only the batch that holds it is made anew. Picking reaches each object,
/// and those that are selected stand out from the rest.
class TFileRoot : public TZEPObject {
    Q_OBJECT
public:
    explicit TFileRoot(TComponent* owner = nullptr);
    ~TFileRoot() override;

    /// Makes the batches ready, which the first frame would do otherwise.
    /// \param size  of what was read: its diagonal
    void Prepare(double size);
    /// How much of a large file is drawn, above 0; 1 is all. No repaint.
    void SetShare(double share) { m_share = share; }
    [[nodiscard]] bool IsLarge() const;
    /// What it is seen on: colours that could not be told from it give way to others.
    void SetBackground(TColor color);
    /// Arcs are drawn as round as they are, whatever their number of segments.
    void SetRoundArcs(bool round);
    /// All is drawn in its own colour, as of a flat drawing, whatever lights the scene has, and no
    /// shadow falls on it.
    [[nodiscard]] bool IsEven() const { return m_even; }
    void SetEven(bool even) { m_even = even; }

    /// Faces of meshes run into each other where they meet at a small angle.
    void SetSmoothMeshes(bool smooth) { m_smoothMeshes = smooth; }
    /// Each face shows, whatever was set. No repaint.
    void SetFlat(bool flat) { m_flat = flat; }

    void Invalidate(TObject* sender) override;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;

private:
    /// A child that only holds others.
    struct TLayer {
        TLayerBatch Batch;
        bool WasVisible = true;
    };

    [[nodiscard]] TZEPObjectNotify Listener();
    void Hear(TZEPObject* sender, TZEPObjectAction action, const void* data);
    void Forget(TZEPObject* gone);
    void MarkStale(TZEPObject& object);
    void MarkAllStale();
    void Update();
    void UpdateOne(TLayerBatch& batch, TZEPObject& layer, const TBatchRules& rules);
    void ListLayers();
    [[nodiscard]] TBatchRules Rules() const;
    [[nodiscard]] std::size_t VertexCount() const;
    [[nodiscard]] bool HasLines() const;
    bool NotesSelection(TZEPObject& object);
    void BuildMarks();
    void AddMark(TZEPObject& object, const TGLMatrixd4& frame, bool whole);
    /// \param exact  the camera's matrix; may be null
    void DrawMarks(const TGLMatrixd4* exact);
    [[nodiscard]] TGLMatrixd4 FrameOf(const TZEPObject& object) const;
    [[nodiscard]] TGLArrayd3 PlaceOf(TZEPObject& object) const;
    [[nodiscard]] std::optional<TGLMatrixd4> ExactView() const;
    [[nodiscard]] bool HasPartIn(TZEPDrawState state) const;
    void DrawBatches(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                     const TLayerView& view);

    TLayerBatch m_own; ///< of children that hold no others
    std::unordered_map<TZEPObject*, std::unique_ptr<TLayer>> m_layers;
    std::vector<TZEPObject*> m_order; ///< of the layers
    TLayerBatch::TObjects m_selected;
    TPathBatch m_marks; ///< what is selected, over the batches
    TGLArrayd3 m_marksOrigin{};
    struct TMarkedBox {
        TZEPObject* Object;
        TGLMatrixd4 Matrix;
    };
    std::vector<TMarkedBox> m_boxes;
    TSmoothMeshes m_meshes;
    std::optional<TColor> m_background;
    double m_size = 1;
    double m_share = 1;
    bool m_roundArcs = false;
    bool m_even = false;
    bool m_smoothMeshes = false;
    bool m_flat = false;
    bool m_orderStale = true;
    bool m_marksStale = true;
};

} // namespace ZEP
