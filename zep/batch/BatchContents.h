#pragma once

#include <zep/batch/BatchMarks.h>
#include <zep/batch/LayerBatch.h>
#include <zep/batch/Shown.h>

#include <memory>
#include <optional>
#include <unordered_map>

namespace ZEP {

/// How a batch and its view want it drawn.
struct TBatchLook {
    TZEPShown Shown;
    bool RoundArcs = false;
    bool SmoothShading = false;
};

/// What a batch has made of its children: a `TLayerBatch` for each layer, and one for the children
/// that are none. What it draws may free the batch and anything below it.
class TBatchContents {
public:
    explicit TBatchContents(TZEPObject& batch) : m_batch(&batch) {}

    /// The batch goes. What draws now comes to its end without it.
    void Detach() { m_batch = nullptr; }
    void Hear(TZEPObject& sender, TZEPObjectAction action);
    /// The object may have been selected or deselected.
    void NoteSelection(TZEPObject& object);
    /// Makes anew what is out of date.
    void Update(const TBatchLook& look);
    [[nodiscard]] bool IsLarge() const;
    void Draw(const TBatchLook& look, TZEPSceneContext& scene, TZEPDrawState state,
              TZEPDrawKind kind);

private:
    /// A child that only holds others, or the batch itself for those that do not.
    struct TLayer {
        std::shared_ptr<const TLayerBatch> Batch; ///< null: not made yet
        bool IsStale = true;
    };

    void Forget(TZEPObject* gone);
    void MarkAllStale();
    void ListLayers();
    void TakeNews();
    void Follow(const TBatchLook& look);
    bool MeasureAll();
    [[nodiscard]] double DrawnSize() const;
    [[nodiscard]] bool HasStale() const;
    void MakeStale();
    void MakeOne(TZEPObject& object, TLayer& layer);
    [[nodiscard]] std::size_t VertexCount() const;
    [[nodiscard]] bool HasLines() const;
    [[nodiscard]] bool HasPartIn(TZEPDrawState state) const;
    [[nodiscard]] std::optional<TGLMatrixd4> ExactView(const TZEPSceneContext& scene) const;
    [[nodiscard]] TLayerView View(const TBatchLook& look, TZEPDrawKind kind);
    void DrawLayers(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                    const TLayerView& view);
    /// Calls `visit` for what is made of the batch itself and of each layer that is seen.
    template <class Visit>
    void ForEachSeen(const Visit& visit) const;

    TZEPObject* m_batch; ///< null: it has gone
    TLayer m_own;
    std::unordered_map<TZEPObject*, TLayer> m_layers;
    std::vector<TZEPObject*> m_order; ///< of the layers
    TBatchMarks m_marks;
    TSmoothMeshes m_meshes;
    TBatchRules m_rules;
    std::optional<TColor> m_background; ///< that rules are made for
    double m_drawnSize = 0;             ///< of the largest layer, when all was measured
    int m_heardSelections = 0;          ///< since the last update
    bool m_orderStale = true;
};

} // namespace ZEP
