#pragma once

// The operations of scene/ChildList.h, which includes this.

namespace ZEP {

template <class Child>
Child* TZEPChildList<Child>::Item(int index) const {
    if (index < 0 || index >= m_count)
        throw Exception(QStringLiteral("List index out of bounds (%1)").arg(index));
    if (m_counts.IsEmpty()) return m_slots[static_cast<std::size_t>(index)];
    std::size_t slot = m_counts.Find(index) * BlockSize;
    for (;; ++slot)
        if (m_slots[slot] && index-- == 0) return m_slots[slot];
}

template <class Child>
int TZEPChildList<Child>::IndexOf(const Child* child) const {
    if (m_counts.IsEmpty()) return child->m_slot;
    const std::size_t block = BlockOf(child);
    int index = m_counts.Before(block);
    for (auto i = block * BlockSize; i < static_cast<std::size_t>(child->m_slot); ++i)
        index += m_slots[i] ? 1 : 0;
    return index;
}

template <class Child>
void TZEPChildList<Child>::Append(Child* child) {
    child->m_slot = static_cast<int>(m_slots.size());
    m_slots.push_back(child);
    Note(TZEPChildChange::Comes, m_count++);
    DropBox(child);
    if (!m_counts.IsEmpty()) m_counts.Add(BlockOf(child), 1);
}

template <class Child>
void TZEPChildList<Child>::InsertFirst(Child* child) {
    m_slots.insert(m_slots.begin(), child);
    ++m_count;
    Note(TZEPChildChange::Comes, 0);
    Renumber(0);
    if (!m_counts.IsEmpty()) CountBlocks();
}

template <class Child>
void TZEPChildList<Child>::Remove(Child* child) {
    const auto slot = static_cast<std::size_t>(child->m_slot);
    if (IsWatched()) Note(TZEPChildChange::Goes, IndexOf(child));
    if (m_counts.IsEmpty() && slot + 1 != m_slots.size()) CountBlocks();
    DropBox(child);
    m_slots[slot] = nullptr;
    --m_count;
    if (m_counts.IsEmpty()) return m_slots.pop_back();
    m_counts.Add(BlockOf(child), -1);
    while (!m_slots.empty() && !m_slots.back()) m_slots.pop_back();
    const bool mostlyHoles = m_slots.size() > 2 * static_cast<std::size_t>(m_count) + HolesKept;
    const bool none = m_slots.size() == static_cast<std::size_t>(m_count);
    if (none || (mostlyHoles && m_iterating == 0)) CloseHoles();
}

template <class Child>
void TZEPChildList<Child>::Move(Child* child, int index) {
    CloseHoles();
    Note(TZEPChildChange::Goes, child->m_slot);
    Note(TZEPChildChange::Comes, index);
    const auto from = m_slots.begin() + child->m_slot;
    const auto to = m_slots.begin() + index;
    if (from < to)
        std::rotate(from, from + 1, to + 1);
    else
        std::rotate(to, from, from + 1);
    Renumber(static_cast<std::size_t>(std::min(child->m_slot, index)));
}

template <class Child>
template <class Extend>
const TZEPBlockBox& TZEPChildList<Child>::Box(std::size_t block, Extend&& extend) {
    if (m_boxes.size() <= block) m_boxes.resize(block + 1);
    TZEPBlockBox& box = m_boxes[block];
    if (box.Known) return box;
    box = {.Known = true};
    ForEachIn(block, [&](Child* child) { extend(box, child); });
    return box;
}

template <class Child>
void TZEPChildList<Child>::ForgetBox(const Child* child) {
    NoteLook(child);
    DropBox(child);
}

template <class Child>
void TZEPChildList<Child>::NoteLook(const Child* child) {
    if (!IsWatched()) return;
    Note(m_selecting > 0 ? TZEPChildChange::Selects : TZEPChildChange::Looks, IndexOf(child));
}

template <class Child>
void TZEPChildList<Child>::DropBox(const Child* child) {
    const std::size_t block = BlockOf(child);
    if (block < m_boxes.size()) m_boxes[block].Known = false;
}

template <class Child>
bool TZEPChildList<Child>::KnowsBox(const Child* child) const {
    const std::size_t block = BlockOf(child);
    return block < m_boxes.size() && m_boxes[block].Known;
}

template <class Child>
void TZEPChildList<Child>::CloseHoles() {
    m_counts.Clear();
    if (m_slots.size() == static_cast<std::size_t>(m_count)) return;
    std::erase(m_slots, nullptr);
    Renumber(0);
}

template <class Child>
void TZEPChildList<Child>::Renumber(std::size_t first) {
    m_boxes.clear();
    for (std::size_t i = first; i < m_slots.size(); ++i)
        if (m_slots[i]) m_slots[i]->m_slot = static_cast<int>(i);
}

template <class Child>
void TZEPChildList<Child>::CountBlocks() {
    m_counts.Clear();
    ForEachBlock([this](std::size_t block) {
        int count = 0;
        ForEachIn(block, [&count](Child*) { ++count; });
        m_counts.Add(block, count);
    });
}

} // namespace ZEP
