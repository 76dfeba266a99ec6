#pragma once

#include <zep/batch/BlockEdit.h>
#include <zep/batch/Gathering.h>
#include <zep/scene/ChildChanges.h>

namespace ZEP {

/// Takes notice of all that has happened below a group, also where a bracket or the scene holds it
/// back, and where a listener that heard of it earlier has freed what it is about. Parts that have
/// changed are gathered anew.
class TPartsUpdate {
public:
    /// \param selections  what is selected is looked for everywhere
    TPartsUpdate(TGathering gathering, TIsBatch isBatch, bool selections)
        : m_gathering(std::move(gathering)), m_isBatch(isBatch), m_selections(selections) {}

    void Visit(TGroupParts& group);

    [[nodiscard]] TGathering& Gathering() { return m_gathering; }
    [[nodiscard]] const TGathering& Gathering() const { return m_gathering; }
    /// Blocks that those of the gathering take the place of.
    [[nodiscard]] const TBlockEdits& Edits() const { return m_edits; }
    /// All blocks are new.
    [[nodiscard]] bool IsOfAll() const {
        return m_edits.size() == 1 && m_edits[0].First == 0 && m_edits[0].End == m_block;
    }
    /// Something was selected or deselected.
    [[nodiscard]] bool Selects() const { return m_selects; }

private:
    void TakeChanges(TGroupParts& group);
    static void MarkAll(TGroupParts& group, bool TPart::TMarks::*mark);
    static void Mark(TParts& parts, const TZEPChildChange& change, bool TPart::TMarks::*mark);
    static void MarkComing(TParts& parts, const TZEPChildChange& change);
    static void MarkGoing(TParts& parts, const TZEPChildChange& change);
    void Ask(TPart& part) const;
    void RenewParts(TGroupParts& group);
    void Keep(TGroupParts& group, TPart& part, int child);
    void Renew(TGroupParts& group, int first, int count, std::size_t blocks, TParts& parts);

    TGathering m_gathering;
    TIsBatch m_isBatch;
    TBlockEdits m_edits;
    std::size_t m_block = 0; ///< of those that there were
    bool m_selections;
    bool m_selects = false;
};

} // namespace ZEP
