#pragma once

#include "framework/Exception.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ZEP {

/// The ordered children of an object. A child knows its slot, so that removal costs the same
/// however many there are: it leaves a hole, and holes are closed once they outnumber the children.
/// Access by index is direct without holes; with holes it walks counts of blocks.
///
/// `Child` has a member `int m_slot` that this may use.
template <class Child>
class TZEPChildList {
public:
    [[nodiscard]] int Count() const { return m_count; }
    /// Child `index`; raises `Exception` outside 0 .. Count() - 1.
    [[nodiscard]] Child* Item(int index) const;
    /// Position of one of the children.
    [[nodiscard]] int IndexOf(const Child* child) const;
    [[nodiscard]] Child* Last() const { return m_slots.empty() ? nullptr : m_slots.back(); }

    void Append(Child* child);
    void InsertFirst(Child* child);
    void Remove(Child* child);
    /// Moves a child to position `index`, which must be in range.
    void Move(Child* child, int index);

    /// Calls `proc(child)` for each child in order. `proc` may add and remove children: added ones
    /// are visited, removed ones are not.
    template <class Proc>
    void ForEach(Proc&& proc) {
        const Iteration iteration{++m_iterating};
        for (std::size_t i = 0; i < m_slots.size(); ++i)
            if (Child* child = m_slots[i]) proc(child);
    }

private:
    /// While one lives, slots keep their places.
    struct Iteration {
        int& Depth;
        ~Iteration() { --Depth; }
    };

    static constexpr std::size_t BlockSize = 1024;

    void CloseHoles();
    void Renumber(std::size_t first);
    void CountBlocks();

    std::vector<Child*> m_slots;    // null: a hole; never the last one
    std::vector<int> m_blockCounts; // children in each block of slots; empty without holes
    int m_count = 0;
    int m_iterating = 0;
};

template <class Child>
Child* TZEPChildList<Child>::Item(int index) const {
    if (index < 0 || index >= m_count)
        throw Exception(QStringLiteral("List index out of bounds (%1)").arg(index));
    if (m_blockCounts.empty()) return m_slots[static_cast<std::size_t>(index)];
    std::size_t block = 0;
    while (index >= m_blockCounts[block]) index -= m_blockCounts[block++];
    std::size_t slot = block * BlockSize;
    for (;; ++slot)
        if (m_slots[slot] && index-- == 0) return m_slots[slot];
}

template <class Child>
int TZEPChildList<Child>::IndexOf(const Child* child) const {
    const auto slot = static_cast<std::size_t>(child->m_slot);
    if (m_blockCounts.empty()) return child->m_slot;
    const std::size_t block = slot / BlockSize;
    int index = 0;
    for (std::size_t i = 0; i < block; ++i) index += m_blockCounts[i];
    for (std::size_t i = block * BlockSize; i < slot; ++i) index += m_slots[i] ? 1 : 0;
    return index;
}

template <class Child>
void TZEPChildList<Child>::Append(Child* child) {
    child->m_slot = static_cast<int>(m_slots.size());
    m_slots.push_back(child);
    ++m_count;
    if (m_blockCounts.empty()) return;
    m_blockCounts.resize((m_slots.size() + BlockSize - 1) / BlockSize);
    ++m_blockCounts[static_cast<std::size_t>(child->m_slot) / BlockSize];
}

template <class Child>
void TZEPChildList<Child>::InsertFirst(Child* child) {
    m_slots.insert(m_slots.begin(), child);
    ++m_count;
    Renumber(0);
    if (!m_blockCounts.empty()) CountBlocks();
}

template <class Child>
void TZEPChildList<Child>::Remove(Child* child) {
    const auto slot = static_cast<std::size_t>(child->m_slot);
    if (m_blockCounts.empty() && slot + 1 != m_slots.size()) CountBlocks();
    m_slots[slot] = nullptr;
    --m_count;
    if (m_blockCounts.empty()) return m_slots.pop_back();
    --m_blockCounts[slot / BlockSize];
    while (!m_slots.empty() && !m_slots.back()) m_slots.pop_back();
    const bool mostlyHoles = m_slots.size() > 2 * static_cast<std::size_t>(m_count) + BlockSize;
    const bool none = m_slots.size() == static_cast<std::size_t>(m_count);
    if (none || (mostlyHoles && m_iterating == 0)) CloseHoles();
}

template <class Child>
void TZEPChildList<Child>::Move(Child* child, int index) {
    CloseHoles();
    const auto from = m_slots.begin() + child->m_slot;
    const auto to = m_slots.begin() + index;
    if (from < to)
        std::rotate(from, from + 1, to + 1);
    else
        std::rotate(to, from, from + 1);
    Renumber(static_cast<std::size_t>(std::min(child->m_slot, index)));
}

template <class Child>
void TZEPChildList<Child>::CloseHoles() {
    m_blockCounts.clear();
    if (m_slots.size() == static_cast<std::size_t>(m_count)) return;
    std::erase(m_slots, nullptr);
    Renumber(0);
}

template <class Child>
void TZEPChildList<Child>::Renumber(std::size_t first) {
    for (std::size_t i = first; i < m_slots.size(); ++i)
        if (m_slots[i]) m_slots[i]->m_slot = static_cast<int>(i);
}

template <class Child>
void TZEPChildList<Child>::CountBlocks() {
    m_blockCounts.assign((m_slots.size() + BlockSize - 1) / BlockSize, 0);
    for (std::size_t i = 0; i < m_slots.size(); ++i)
        m_blockCounts[i / BlockSize] += m_slots[i] ? 1 : 0;
}

} // namespace ZEP
