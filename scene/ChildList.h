#pragma once

#include <cstddef>
#include <vector>

namespace ZEP {

class TZEPObject;

/// The ordered children of an object. A child knows its slot, so that removal costs the same
/// however many there are: it leaves a hole, and holes are closed once they outnumber the children.
/// Access by index is direct without holes; with holes it walks counts of blocks.
class TZEPChildList {
public:
    [[nodiscard]] int Count() const { return m_count; }
    /// Child `index`; raises `Exception` outside 0 .. Count() - 1.
    [[nodiscard]] TZEPObject* Item(int index) const;
    /// Position of one of the children.
    [[nodiscard]] int IndexOf(const TZEPObject* child) const;
    [[nodiscard]] TZEPObject* Last() const { return m_slots.empty() ? nullptr : m_slots.back(); }

    void Append(TZEPObject* child);
    void InsertFirst(TZEPObject* child);
    void Remove(TZEPObject* child);
    /// Moves a child to position `index`, which must be in range.
    void Move(TZEPObject* child, int index);

    /// Calls `proc(child)` for each child in order. `proc` may add and remove children: added ones
    /// are visited, removed ones are not.
    template <class Proc>
    void ForEach(Proc&& proc) {
        const Iteration iteration{++m_iterating};
        for (std::size_t i = 0; i < m_slots.size(); ++i)
            if (TZEPObject* child = m_slots[i]) proc(child);
    }

private:
    /// While one lives, slots keep their places.
    struct Iteration {
        int& Depth;
        ~Iteration() { --Depth; }
    };

    void CloseHoles();
    void Renumber(std::size_t first);
    void CountBlocks();

    std::vector<TZEPObject*> m_slots; // null: a hole; never the last one
    std::vector<int> m_blockCounts;   // children in each block of slots; empty without holes
    int m_count = 0;
    int m_iterating = 0;
};

} // namespace ZEP
