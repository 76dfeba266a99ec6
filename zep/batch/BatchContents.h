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
    std::optional<int> Frontier{};        ///< children of the batch from this one on are to come
    THiddenChildren Hidden{};             ///< of the batch
    const TZEPLeftOut* LeftOut = nullptr; ///< layers; null: none
};

/// What a batch has made of its children: a `TLayerBatch` for each layer, and one for the children
/// that are none. What it draws may free the batch and anything below it.
class TBatchContents {
public:
    /// \param isBatch  tells batches below it
    TBatchContents(TZEPObject& batch, TIsBatch isBatch)
        : m_batch(&batch), m_isBatch(isBatch), m_marks(isBatch) {}

    /// The batch goes. What draws now comes to its end without it.
    void Detach() { m_batch = nullptr; }
    void Hear(TZEPObject& sender, TZEPObjectAction action);
    /// Makes anew what is out of date.
    void Update(const TBatchLook& look);
    /// Makes ready what a frame of that look would make.
    /// \return false when `watch` called it off: then nothing is made
    bool Prepare(const TBatchLook& look, const TSteps::TWatch& watch);
    [[nodiscard]] bool IsLarge() const;
    void Draw(const TBatchLook& look, TZEPSceneContext& scene, TZEPDrawState state,
              TZEPDrawKind kind);

private:
    /// A child that only holds others, or the batch itself for those that do not.
    struct TLayer {
        QPointer<TZEPObject> Of;            ///< of one that is a child
        std::unique_ptr<TLayerBatch> Batch; ///< null: not made yet
        std::unique_ptr<TLayerBatch> Other; ///< for the other background; null: out of date
        int Changes = -1;                   ///< of the tree, when it was made or kept up last
        std::shared_ptr<TMeshLooks> Meshes = std::make_shared<TMeshLooks>();

        void Drop();
    };

    void ListLayers();
    bool KeepUp(TLayer& layer);
    bool Make(TZEPObject& object, TLayer& layer);
    void Follow(const TBatchLook& look);
    void SwitchBackground(const std::optional<TColor>& background);
    void PrepareMeshes(const TSurfaceLook& look);
    void MarkSelected();
    [[nodiscard]] std::size_t VertexCount() const;
    [[nodiscard]] bool HasLines() const;
    [[nodiscard]] bool HasPartIn(TZEPDrawState state) const;
    [[nodiscard]] std::optional<TGLMatrixd4> ExactView(const TZEPSceneContext& scene) const;
    [[nodiscard]] TLayerView View(const TBatchLook& look, TZEPDrawKind kind, double pictureWidths);
    void DrawLayers(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                    const TLayerView& view, const TZEPLeftOut* leftOut);
    static void DrawLayer(const TLayer& layer, const TGLMatrixd4& frame, TZEPSceneContext& scene,
                          TZEPDrawState state, TZEPDrawKind kind, TLayerView view);
    /// Calls `visit` for what is made of the batch itself and of each layer that is seen.
    template <class Visit>
    void ForEachSeen(const Visit& visit) const;
    template <class Visit>
    void ForEachLayer(const Visit& visit);

    TZEPObject* m_batch; ///< null: it has gone
    TIsBatch m_isBatch;
    TLayer m_own;
    std::unordered_map<TZEPObject*, TLayer> m_layers;
    std::vector<TZEPObject*> m_order; ///< of the layers
    TBatchMarks m_marks;
    TBatchRules m_rules;
    std::optional<TColor> m_background;                     ///< that the rules are made for
    std::optional<std::optional<TColor>> m_otherBackground; ///< that the others are made for
    int m_sameBackground = 0;                               ///< updates since it was another one
    bool m_whole = false;                                   ///< all is marked
    THiddenChildren m_hidden;
    int m_changes = 0; ///< of the tree
};

} // namespace ZEP
