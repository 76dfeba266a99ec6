#include <zep/batch/PartsUpdate.h>

#include <zep/scene/ChildList.h>

#include <algorithm>
#include <iterator>

namespace ZEP {

void TPartsUpdate::Visit(TGroupParts& group) {
    TakeChanges(group);
    for (TPart& part : group.Parts) Ask(part);
    const bool isStale =
        std::ranges::any_of(group.Parts, [](const TPart& part) { return part.Marks.IsStale; });
    int child = 0;
    for (TPart& part : group.Parts) {
        if (isStale) break;
        Keep(group, part, child);
        child += part.Children;
    }
    if (isStale) RenewParts(group);
}

/// Neighbours that are out of date are made anew together.
void TPartsUpdate::RenewParts(TGroupParts& group) {
    TParts parts;
    int child = 0;
    for (auto part = group.Parts.begin(); part != group.Parts.end();) {
        const int first = child;
        if (!part->Marks.IsStale) {
            Keep(group, *part, first);
            child += part->Children;
            parts.push_back(std::move(*part++));
            continue;
        }
        std::size_t blocks = 0;
        for (; part != group.Parts.end() && part->Marks.IsStale; ++part) {
            child += part->Children;
            blocks += part->BlockCount();
        }
        const bool isNeeded = child > first || (parts.empty() && part == group.Parts.end());
        Renew(group, first, isNeeded ? child - first : -1, blocks, parts);
    }
    group.Parts = std::move(parts);
}

// --- what has changed --------------------------------------------------------------------------

void TPartsUpdate::TakeChanges(TGroupParts& group) {
    using TChildren = TZEPChildList<TZEPObject>;
    const TZEPChildChanges changes =
        group.Group ? TChildren::TakeChangesOf(*group.Group) : TZEPChildChanges();
    if (m_selections || changes.AreManySelections()) MarkAll(group, &TPart::TMarks::Selects);
    if (changes.AreMany() || group.Parts.empty()) {
        if (group.Parts.empty()) group.Parts.emplace_back().Marks.IsNew = true;
        MarkAll(group, &TPart::TMarks::IsStale);
        for (TPart& part : group.Parts) part.Children = 0;
        group.Parts.front().Children = group.Group ? group.Group->GetItemsCount() : 0;
        return;
    }
    for (const TZEPChildChange& change : changes.Each()) {
        switch (change.Kind) {
        case TZEPChildChange::Looks:
            Mark(group.Parts, change, &TPart::TMarks::Looks);
            break;
        case TZEPChildChange::Selects:
            Mark(group.Parts, change, &TPart::TMarks::Selects);
            break;
        case TZEPChildChange::Comes:
            MarkComing(group.Parts, change);
            break;
        case TZEPChildChange::Goes:
            MarkGoing(group.Parts, change);
            break;
        }
    }
}

void TPartsUpdate::MarkAll(TGroupParts& group, bool TPart::TMarks::*mark) {
    for (TPart& part : group.Parts) part.Marks.*mark = true;
}

void TPartsUpdate::Mark(TParts& parts, const TZEPChildChange& change, bool TPart::TMarks::*mark) {
    int first = 0;
    for (TPart& part : parts) {
        const int end = first + part.Children;
        if (end > change.First && first < change.First + change.Count) part.Marks.*mark = true;
        first = end;
    }
}

/// They join a block before or behind them.
void TPartsUpdate::MarkComing(TParts& parts, const TZEPChildChange& change) {
    auto part = parts.begin();
    int first = 0;
    while (std::next(part) != parts.end() && change.First > first + part->Children)
        first += part++->Children;
    if (part->Group && change.First == first + part->Children) ++part;
    if (part == parts.end() || part->Group) {
        part = parts.emplace(part);
        part->Marks.IsNew = true;
    }
    part->Children += change.Count;
    part->Marks.IsStale = true;
}

void TPartsUpdate::MarkGoing(TParts& parts, const TZEPChildChange& change) {
    int first = 0;
    for (TPart& part : parts) {
        const int end = first + part.Children;
        const int gone = std::min(end, change.First + change.Count) - std::max(first, change.First);
        first = end;
        if (gone <= 0) continue;
        part.Children -= gone;
        part.Marks.IsStale = true;
    }
}

void TPartsUpdate::Ask(TPart& part) const {
    TPart::TMarks& marks = part.Marks;
    if (marks.Looks) marks.IsStale = marks.IsStale || !part.Group || !part.Group->IsUnchanged();
    for (const QPointer<TZEPObject>& group : part.Groups) {
        const TZEPChildNews news = group ? group->TakeChildNews() : TZEPChildNews();
        marks.IsStale = marks.IsStale || news.Look;
        marks.Selects = marks.Selects || news.Selections > 0;
    }
    bool below = false;
    for (const QPointer<TZEPObject>& parent : part.Parents) {
        const TZEPChildNews news = parent ? parent->TakeChildNews() : TZEPChildNews();
        below = below || news.Look || news.Selections > 0;
    }
    if (!below || marks.IsStale) return;
    part.ListParents(m_isBatch);
    marks.Selects = true;
}

// --- what becomes of it ------------------------------------------------------------------------

void TPartsUpdate::Keep(TGroupParts& group, TPart& part, int child) {
    if (part.Marks.Selects && group.Group) part.ListSelected(*group.Group, child);
    m_selects = m_selects || part.Marks.Selects;
    part.Marks = {};
    if (part.Group)
        Visit(*part.Group);
    else
        ++m_block;
}

/// \param count  of children; below 0: the blocks are not needed any more
void TPartsUpdate::Renew(TGroupParts& group, int first, int count, std::size_t blocks,
                         TParts& parts) {
    const std::size_t known = m_gathering.Blocks.size();
    if (count >= 0) {
        TParts made =
            group.Group ? m_gathering.Collect(*group.Group, group.Frame, first, count) : TParts();
        std::ranges::move(made, std::back_inserter(parts));
    }
    m_edits.push_back({m_block, m_block + blocks, m_gathering.Blocks.size() - known});
    m_block += blocks;
}

} // namespace ZEP
