#include <zep/appearance/effects/EdgeTurns.h>

#include <bit>
#include <cstdint>
#include <utility>

namespace ZEP {

namespace {

constexpr std::size_t FirstSize = 256;

/// Points that are equal count as one: 0 and -0 give the same number.
std::uint64_t HashOf(const TZEPEdgeTurns::TPoint& point, std::uint64_t seed) {
    for (const float c : point)
        seed = (std::rotl(seed, 23) ^ std::bit_cast<std::uint32_t>(c + 0.0F)) * 0x9E3779B97F4A7C15U;
    return seed;
}

} // namespace

void TZEPEdgeTurns::Clear() {
    m_slots.assign(FirstSize, {});
    m_used = 0;
}

void TZEPEdgeTurns::Turn(const TEdge& edge) {
    if (2 * m_used >= m_slots.size()) Grow();
    const std::size_t slot = Find(edge);
    TEdge& kept = m_slots[slot];
    if (kept.Turns == 0) {
        kept = edge;
        ++m_used;
        return;
    }
    kept.Turns += edge.Turns;
    if (kept.Turns == 0) Erase(slot);
}

std::size_t TZEPEdgeTurns::HomeOf(const TEdge& edge) const {
    return static_cast<std::size_t>(HashOf(edge.High, HashOf(edge.Low, 0)) >> 32) & Mask();
}

std::size_t TZEPEdgeTurns::Find(const TEdge& edge) const {
    std::size_t slot = HomeOf(edge);
    for (; m_slots[slot].Turns != 0; slot = Behind(slot))
        if (m_slots[slot].Low == edge.Low && m_slots[slot].High == edge.High) break;
    return slot;
}

/// What stands behind moves up, where that does not take it past its home.
void TZEPEdgeTurns::Erase(std::size_t slot) {
    --m_used;
    for (std::size_t i = Behind(slot); m_slots[i].Turns != 0; i = Behind(i)) {
        const std::size_t fromHome = (i - HomeOf(m_slots[i])) & Mask();
        const std::size_t fromSlot = (i - slot) & Mask();
        if (fromHome >= fromSlot) m_slots[std::exchange(slot, i)] = m_slots[i];
    }
    m_slots[slot].Turns = 0;
}

void TZEPEdgeTurns::Grow() {
    std::vector<TEdge> smaller(m_slots.empty() ? FirstSize : 2 * m_slots.size());
    std::swap(smaller, m_slots);
    for (const TEdge& edge : smaller)
        if (edge.Turns != 0) m_slots[Find(edge)] = edge;
}

} // namespace ZEP
