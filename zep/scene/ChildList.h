#pragma once

#include <zep/framework/Exception.h>
#include <zep/framework/Watch.h>
#include <zep/scene/BlockCounts.h>
#include <zep/scene/ChildChanges.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace ZEP {

/// The ordered children of an object. A child knows its slot, so that removal costs the same
/// however many there are: it leaves a hole, and holes are closed once they outnumber the children.
/// Slots make up blocks; the box about a block of neighbours is kept until one of them changes.
///
/// `Child` has a member `int m_slot` that this may use.
template <class Child>
class TZEPChildList {
public:
    TZEPChildList() = default;
    ~TZEPChildList() { TZEPWatch::Forget(this); }
    TZEPChildList(const TZEPChildList&) = delete;
    TZEPChildList& operator=(const TZEPChildList&) = delete;

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

    /// Calls `proc(block)` for each block in order. `proc` may add and remove children, and free
    /// the list itself, which ends it.
    template <class Proc>
    void ForEachBlock(Proc&& proc) {
        const Iteration iteration(*this);
        for (std::size_t block = 0; iteration && block * BlockSize < m_slots.size(); ++block)
            proc(block);
    }
    /// Calls `proc(child)` for each child of a block in order.
    template <class Proc>
    void ForEachIn(std::size_t block, Proc&& proc) {
        const Iteration iteration(*this);
        const std::size_t end = (block + 1) * BlockSize;
        for (std::size_t i = block * BlockSize; iteration && i < std::min(end, m_slots.size()); ++i)
            if (Child* child = m_slots[i]) proc(child);
    }
    /// Calls `proc(child)` for each child in order. `proc` may add and remove children: added ones
    /// are visited, removed ones are not.
    template <class Proc>
    void ForEach(Proc&& proc) {
        ForEachBlock([&](std::size_t block) { ForEachIn(block, proc); });
    }

    /// The box about the children of a block: `extend(box, child)` adds each that it does not know.
    template <class Extend>
    [[nodiscard]] const TZEPBlockBox& Box(std::size_t block, Extend&& extend);
    /// What is known of the child's box is out of date.
    void ForgetBox(const Child* child);
    [[nodiscard]] bool KnowsBox(const Child* child) const;
    /// What happened since the last call.
    [[nodiscard]] TZEPChildNews TakeNews() { return m_changes.Take().News(); }
    /// The same one by one, of the children of an object; not both can be asked for.
    [[nodiscard]] static TZEPChildChanges TakeChangesOf(Child& parent) {
        TZEPChildList* children = parent.Children();
        return children ? children->m_changes.Take() : TZEPChildChanges::None();
    }
    /// The child looks different.
    void NoteLook(const Child* child);
    /// Someone asks what happens, so that a change must be told.
    [[nodiscard]] bool IsWatched() const { return !m_changes.AreMany(); }
    /// A look that is noted while one lives comes from a selection.
    class Selecting {
    public:
        explicit Selecting(TZEPChildList* list) : m_list(list), m_alive(list) {
            if (list) ++list->m_selecting;
        }
        ~Selecting() {
            if (m_alive) --m_list->m_selecting;
        }
        Selecting(const Selecting&) = delete;
        Selecting& operator=(const Selecting&) = delete;

    private:
        TZEPChildList* m_list;
        TZEPWatch m_alive;
    };
    /// The box of a block is known, and holds all that its children draw.
    [[nodiscard]] bool IsBounded(std::size_t block) const {
        return block < m_boxes.size() && m_boxes[block].Known && m_boxes[block].Bounded;
    }

private:
    /// While one lives, slots keep their places. It is false when the list has gone.
    class Iteration {
    public:
        explicit Iteration(TZEPChildList& list) : m_list(list), m_alive(&list) {
            ++list.m_iterating;
        }
        ~Iteration() {
            if (m_alive) --m_list.m_iterating;
        }
        Iteration(const Iteration&) = delete;
        Iteration& operator=(const Iteration&) = delete;

        explicit operator bool() const { return static_cast<bool>(m_alive); }

    private:
        TZEPChildList& m_list;
        TZEPWatch m_alive;
    };

    static constexpr std::size_t BlockSize = 64;
    static constexpr std::size_t HolesKept = 1024;

    [[nodiscard]] static std::size_t BlockOf(const Child* child) {
        return static_cast<std::size_t>(child->m_slot) / BlockSize;
    }
    void Note(TZEPChildChange::TKind kind, int index) { m_changes.Note(kind, index); }
    void DropBox(const Child* child);
    void CloseHoles();
    void Renumber(std::size_t first);
    void CountBlocks();

    std::vector<Child*> m_slots;       // null: a hole; never the last one
    TZEPBlockCounts m_counts;          // children in each block of slots; empty without holes
    std::vector<TZEPBlockBox> m_boxes; // as far as asked for
    TZEPChildChanges m_changes;
    int m_count = 0;
    int m_iterating = 0;
    int m_selecting = 0;
};

} // namespace ZEP

#include <zep/scene/ChildListCode.h>
