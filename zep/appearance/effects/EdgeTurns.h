#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace ZEP {

/// Edges between points, each with how often it runs one way less how often it runs back. Where
/// that is 0 nothing is kept: of a closed surface whose faces come neighbour after neighbour, only
/// the rim of what has come so far, so that a million of them need little memory.
class TZEPEdgeTurns {
public:
    using TPoint = std::array<float, 3>;
    struct TEdge {
        TPoint Low{}, High{}; ///< Low < High
        int Turns = 0;        ///< how often it runs from low to high; below 0: back
    };

    void Clear();
    /// From a point to itself there is no edge.
    void Add(const TPoint& from, const TPoint& to) {
        if (from < to) Turn({from, to, 1});
        if (to < from) Turn({to, from, -1});
    }
    /// Calls `visit(edge)` for each edge whose turns are not 0.
    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (const TEdge& edge : m_slots)
            if (edge.Turns != 0) visit(edge);
    }

private:
    // A hash table: an edge stands at its home, or behind that with no empty slot in between.
    void Turn(const TEdge& edge);
    void Grow();
    void Erase(std::size_t slot);
    /// The slot of the edge, or the empty one where it belongs.
    [[nodiscard]] std::size_t Find(const TEdge& edge) const;
    [[nodiscard]] std::size_t HomeOf(const TEdge& edge) const;
    [[nodiscard]] std::size_t Behind(std::size_t slot) const { return (slot + 1) & Mask(); }
    [[nodiscard]] std::size_t Mask() const { return m_slots.size() - 1; }

    std::vector<TEdge> m_slots; // a power of two; at most half of them are used
    std::size_t m_used = 0;
};

} // namespace ZEP
