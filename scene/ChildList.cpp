#include "scene/ChildList.h"

#include "framework/Exception.h"
#include "scene/Object.h"

#include <algorithm>

namespace ZEP {

namespace {

constexpr std::size_t BlockSize = 1024;

} // namespace

TZEPObject* TZEPChildList::Item(int index) const {
    if (index < 0 || index >= m_count)
        throw Exception(QStringLiteral("List index out of bounds (%1)").arg(index));
    if (m_blockCounts.empty()) return m_slots[static_cast<std::size_t>(index)];
    std::size_t block = 0;
    while (index >= m_blockCounts[block]) index -= m_blockCounts[block++];
    std::size_t slot = block * BlockSize;
    for (;; ++slot)
        if (m_slots[slot] && index-- == 0) return m_slots[slot];
}

int TZEPChildList::IndexOf(const TZEPObject* child) const {
    const auto slot = static_cast<std::size_t>(child->m_slot);
    if (m_blockCounts.empty()) return child->m_slot;
    const std::size_t block = slot / BlockSize;
    int index = 0;
    for (std::size_t i = 0; i < block; ++i) index += m_blockCounts[i];
    for (std::size_t i = block * BlockSize; i < slot; ++i) index += m_slots[i] ? 1 : 0;
    return index;
}

void TZEPChildList::Append(TZEPObject* child) {
    child->m_slot = static_cast<int>(m_slots.size());
    m_slots.push_back(child);
    ++m_count;
    if (m_blockCounts.empty()) return;
    m_blockCounts.resize((m_slots.size() + BlockSize - 1) / BlockSize);
    ++m_blockCounts[static_cast<std::size_t>(child->m_slot) / BlockSize];
}

void TZEPChildList::InsertFirst(TZEPObject* child) {
    m_slots.insert(m_slots.begin(), child);
    ++m_count;
    Renumber(0);
    if (!m_blockCounts.empty()) CountBlocks();
}

void TZEPChildList::Remove(TZEPObject* child) {
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

void TZEPChildList::Move(TZEPObject* child, int index) {
    CloseHoles();
    const auto from = m_slots.begin() + child->m_slot;
    const auto to = m_slots.begin() + index;
    if (from < to)
        std::rotate(from, from + 1, to + 1);
    else
        std::rotate(to, from, from + 1);
    Renumber(static_cast<std::size_t>(std::min(child->m_slot, index)));
}

void TZEPChildList::CloseHoles() {
    m_blockCounts.clear();
    if (m_slots.size() == static_cast<std::size_t>(m_count)) return;
    std::erase(m_slots, nullptr);
    Renumber(0);
}

void TZEPChildList::Renumber(std::size_t first) {
    for (std::size_t i = first; i < m_slots.size(); ++i)
        if (m_slots[i]) m_slots[i]->m_slot = static_cast<int>(i);
}

void TZEPChildList::CountBlocks() {
    m_blockCounts.assign((m_slots.size() + BlockSize - 1) / BlockSize, 0);
    for (std::size_t i = 0; i < m_slots.size(); ++i)
        m_blockCounts[i / BlockSize] += m_slots[i] ? 1 : 0;
}

} // namespace ZEP
