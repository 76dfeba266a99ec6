#include "viewer/content/ProgramMoves.h"

#include "viewer/content/Describe.h"
#include <zep/scene/Object.h>

#include <algorithm>

namespace ZEP {

TProgramMoves::TProgramMoves(const TZEPObject& root) {
    const int count = root.GetItemsCount();
    m_moves.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        if (const std::optional<int> line = ProgramLineOf(*root.GetItem(i)))
            m_moves.push_back({*line, i});
    // A subprogram runs as often as it is called, from wherever it stands.
    if (!std::is_sorted(m_moves.begin(), m_moves.end())) std::sort(m_moves.begin(), m_moves.end());
}

std::optional<int> TProgramMoves::ItemOf(int line) const {
    const auto found = std::lower_bound(m_moves.begin(), m_moves.end(), TMove{line, 0});
    if (found == m_moves.end() || found->Line != line) return {};
    return found->Item;
}

std::optional<int> TProgramMoves::ItemFrom(int line) const {
    const auto found = std::lower_bound(m_moves.begin(), m_moves.end(), TMove{line, 0});
    return found == m_moves.end() ? std::nullopt : std::optional(found->Item);
}

} // namespace ZEP
