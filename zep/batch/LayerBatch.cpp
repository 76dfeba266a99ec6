#include <zep/batch/LayerBatch.h>

#include <zep/framework/Property.h>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

void Doubt(const std::vector<TGathering::TBlock>& blocks, TMeshLooks& meshes) {
    meshes.ForgetFreed();
    for (const TGathering::TBlock& block : blocks)
        block.Others.ForEach([&](const TZEPObject& object) { meshes.Doubt(object); });
}

} // namespace

TLayerBatch::TLayerBatch(TZEPObject& layer, bool groups, TIsBatch isBatch, const TBatchRules& rules)
    : m_groups(groups), m_isBatch(isBatch), m_rules(rules), m_root{&layer, idd, idd, {}} {}

void TLayerBatch::Hide(const THiddenChildren& hidden) {
    if (Change(m_hidden, hidden)) m_root.Parts.clear(); // all is gathered anew
}

TGathering TLayerBatch::StartGathering() const {
    return {m_groups, m_isBatch, m_root.Group, m_hidden, m_rules.Steps.get()};
}

TPartsUpdate TLayerBatch::StartUpdate(bool selections) const {
    return {StartGathering(), m_isBatch, selections};
}

TLayerBatch::TNews TLayerBatch::Update(TMeshLooks& meshes) {
    TPartsUpdate update = StartUpdate(std::exchange(m_selectionIsStale, false));
    update.Visit(m_root);
    if (update.Edits().empty()) return {false, update.Selects()};
    m_frontierChild.reset();
    Doubt(update.Gathering().Blocks, meshes);
    if (update.IsOfAll()) {
        MakeAll(update.Gathering());
    } else if (!MakeSome(update)) {
        m_root.Parts.clear();
        TPartsUpdate all = StartUpdate(false);
        all.Visit(m_root);
        MakeAll(all.Gathering());
    }
    return {true, true};
}

void TLayerBatch::MakeAll(TGathering& found) {
    m_placed = found.Found.size();
    m_spots = TSpots(found.Boxes);
    static_cast<void>(Place(found));
    m_content = std::make_shared<TLayerContent>(std::move(found), m_spots, m_rules);
}

/// \return false where spots that were chosen for other objects do not suit what there is now
bool TLayerBatch::MakeSome(TPartsUpdate& update) {
    TGathering& found = update.Gathering();
    const std::size_t count = m_content->GatheredCount() + found.Found.size();
    if (count > 2 * m_placed || !Place(found)) return false;
    if (m_content.use_count() > 1) m_content = std::make_shared<TLayerContent>(*m_content);
    m_content->Replace(update.Edits(), TLayerContent(std::move(found), m_spots, m_rules));
    return true;
}

bool TLayerBatch::Place(TGathering& found) {
    const bool wereTooFew = m_spots.AreTooFew();
    for (std::size_t i = 0; i < found.Found.size(); ++i)
        found.Found[i].Spot = static_cast<std::uint32_t>(m_spots.Place(found.Boxes[i]));
    return wereTooFew || !m_spots.AreTooFew();
}

void TLayerBatch::SetFrontier(const std::optional<int>& child) {
    if (child && child == m_frontierChild) return;
    m_frontierChild = child;
    m_frontier.reset();
    if (child) PlaceFrontier(*child);
}

// What is done of the block is gathered once more by itself, which tells how much of each array it
// is: nothing has to be kept for each object.
void TLayerBatch::PlaceFrontier(int child) {
    std::size_t block = 0;
    int first = 0;
    auto part = m_root.Parts.begin();
    for (; part != m_root.Parts.end() && first + part->Children <= child; ++part) {
        first += part->Children;
        block += part->BlockCount();
    }
    const bool within = part != m_root.Parts.end() && !part->Group && m_root.Group;
    TGathering done = StartGathering();
    if (within)
        static_cast<void>(
            done.Collect(*m_root.Group, m_root.Frame, first, std::max(child - first, 0)));
    static_cast<void>(Place(done));
    m_frontier = std::make_shared<TLayerFrontier>(
        TLayerFrontier{block, std::make_shared<TLayerContent>(std::move(done), m_spots, m_rules)});
}

void TLayerBatch::ListSelected(const TGroupParts& group, TBatchObjects& selected) {
    for (const TPart& part : group.Parts) {
        selected.insert(selected.end(), part.Selected.begin(), part.Selected.end());
        if (part.Group) ListSelected(*part.Group, selected);
    }
}

TBatchObjects TLayerBatch::Layers() const {
    TBatchObjects layers;
    for (const TPart& part : m_root.Parts)
        layers.insert(layers.end(), part.Layers.begin(), part.Layers.end());
    return layers;
}

} // namespace ZEP
