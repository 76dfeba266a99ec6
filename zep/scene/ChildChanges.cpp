#include <zep/scene/ChildChanges.h>

#include <algorithm>

namespace ZEP {

namespace {

constexpr std::size_t MostKept = 1024;

} // namespace

TZEPChildNews TZEPChildChanges::News() const {
    const bool look = m_many || std::ranges::any_of(m_each, [](const TZEPChildChange& change) {
                          return change.Kind != TZEPChildChange::Selects;
                      });
    return {look, m_selections};
}

void TZEPChildChanges::Note(TZEPChildChange::TKind kind, int index) {
    const bool selects = kind == TZEPChildChange::Selects;
    if (selects) ++m_selections;
    if (m_many || (selects && m_manySelections) || Extend(kind, index)) return;
    if (m_each.size() == MostKept) return Summarize(kind);
    m_each.push_back({kind, index, 1});
}

/// What happens to many happens to neighbours, mostly.
bool TZEPChildChanges::Extend(TZEPChildChange::TKind kind, int index) {
    if (m_each.empty() || m_each.back().Kind != kind) return false;
    TZEPChildChange& last = m_each.back();
    const int end = last.First + last.Count;
    const bool goes = kind == TZEPChildChange::Goes;
    if (kind != TZEPChildChange::Comes && !goes && index >= last.First && index < end) return true;
    const bool before = kind != TZEPChildChange::Comes && index == last.First - 1;
    if (!before && index != (goes ? last.First : end)) return false;
    last.First -= before ? 1 : 0;
    ++last.Count;
    return true;
}

void TZEPChildChanges::Summarize(TZEPChildChange::TKind kind) {
    if (kind == TZEPChildChange::Selects) {
        m_manySelections = true;
        std::erase_if(m_each,
                      [](const auto& change) { return change.Kind == TZEPChildChange::Selects; });
        return;
    }
    m_many = true;
    m_each = {};
}

} // namespace ZEP
