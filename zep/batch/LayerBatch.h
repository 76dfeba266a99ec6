#pragma once

#include <zep/batch/LayerContent.h>
#include <zep/batch/MeshLooks.h>
#include <zep/batch/PartsUpdate.h>
#include <zep/batch/Spots.h>

#include <optional>

namespace ZEP {

/// What stands below one object of a batch, a layer say, gathered in arrays of vertexes; what is of
/// other kinds draws itself, and so does what casts shadows, has them fall on it, or is a mirror.
/// Objects that only hold others may be nested, with transforms.
///
/// It stands in blocks of neighbours. Where an object has changed, its block is made anew.
class TLayerBatch {
public:
    /// What has happened.
    struct TNews {
        bool Look = false;
        bool Selection = false; ///< or what is selected may look different
    };

    /// Nothing is gathered yet.
    /// \param groups  what stands in groups, too
    TLayerBatch(TZEPObject& layer, bool groups, TIsBatch isBatch, const TBatchRules& rules);
    /// Makes anew what has changed.
    TNews Update(TMeshLooks& meshes);
    /// Which of its children it leaves out, from the next update on.
    void Hide(const THiddenChildren& hidden);
    /// What is selected has changed since the last update.
    void DoubtSelection() { m_selectionIsStale = true; }

    /// After an update: its children from that one on are to come; none: nothing is.
    void SetFrontier(const std::optional<int>& child);
    /// Null where nothing is to come.
    [[nodiscard]] std::shared_ptr<const TLayerFrontier> Frontier() const { return m_frontier; }

    /// It stays as it is while someone holds it; null before the first update.
    [[nodiscard]] std::shared_ptr<const TLayerContent> Content() const { return m_content; }
    void ListSelected(TBatchObjects& selected) const { ListSelected(m_root, selected); }
    /// Groups that are left to others, in order.
    [[nodiscard]] TBatchObjects Layers() const;

private:
    static void ListSelected(const TGroupParts& group, TBatchObjects& selected);
    /// \return  the spots suit
    [[nodiscard]] bool Place(TGathering& found);
    [[nodiscard]] bool MakeSome(TPartsUpdate& update);
    void MakeAll(TGathering& found);
    void PlaceFrontier(int child);
    [[nodiscard]] TGathering StartGathering() const;
    [[nodiscard]] TPartsUpdate StartUpdate(bool selections) const;

    bool m_groups;
    TIsBatch m_isBatch;
    TBatchRules m_rules;
    THiddenChildren m_hidden;
    TGroupParts m_root;
    TSpots m_spots;
    std::shared_ptr<TLayerContent> m_content;
    std::shared_ptr<const TLayerFrontier> m_frontier;
    std::optional<int> m_frontierChild; ///< that it was placed before
    std::size_t m_placed = 0;           ///< objects that the spots were chosen for
    bool m_selectionIsStale = false;
};

} // namespace ZEP
