#pragma once

#include <zep/widgets/SceneFilter.h>

#include <QPointer>

#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ZEP {

class TZEPObject;
class TZEPScene;

/// A child where it stood when it was looked at: it may be gone since, its parent may not.
struct TZEPChildPlace {
    const TZEPObject* Parent = nullptr;
    const TZEPObject* Child = nullptr;
    int Index = 0;

    TZEPChildPlace() = default;
    explicit TZEPChildPlace(const TZEPObject& child);
    /// It is still there.
    [[nodiscard]] bool Holds() const;
};

/// Which rows a tree of objects has, as far as views have been told of it. A row has no data of its
/// own: all is read from the objects, but for the children that were appended since, and for the
/// one child that is just coming, going or moving, of which views hear before or after the fact.
///
/// Parents are row objects; null stands for the top level.
class TZEPSceneRows {
public:
    using TObjects = std::vector<TZEPObject*>;

    /// The rows are what is below `holder`; null: none.
    void SetHolder(TZEPObject* holder);
    /// The rows are the roots; what is there twice, or stands below another one, is left out.
    void SetRoots(const TObjects& roots);
    /// What of these stands in the scene now, and is found. Until then there are no rows.
    void Refill(const TZEPScene* scene);
    /// No rows, until they are filled in anew.
    void Lose();
    [[nodiscard]] bool IsLost() const { return m_lost; }
    [[nodiscard]] TZEPSceneFilter& Filter() { return m_filter; }
    [[nodiscard]] const TZEPSceneFilter& Filter() const { return m_filter; }
    /// What stands on the top level, found or not.
    [[nodiscard]] TObjects Tops() const;

    [[nodiscard]] int Count(const TZEPObject* parent) const;
    /// \param row  below `Count`
    [[nodiscard]] TZEPObject* At(const TZEPObject* parent, int row) const;
    /// Among the rows of its parent; none where it is none of them.
    [[nodiscard]] std::optional<int> RowOf(const TZEPObject& object) const;
    /// Null for rows of the top level.
    [[nodiscard]] TZEPObject* ParentOf(const TZEPObject& object) const;
    /// There is a row for it, and for all that it is below.
    [[nodiscard]] bool Has(const TZEPObject& object) const;
    /// Its children are rows.
    [[nodiscard]] bool ShowsBelow(const TZEPObject& object) const;
    /// It is below a root, or one that is a row; found or not.
    [[nodiscard]] bool Reaches(const TZEPObject& object) const;

    /// A root stands below it, or is it.
    [[nodiscard]] bool HoldsRoot(const TZEPObject& object) const {
        return m_above.contains(&object);
    }
    /// The same of a root that stood outside of the scene when the rows were filled in.
    [[nodiscard]] bool BringsRoot(const TZEPObject& object) const;

    /// A child was appended to `parent`: there is no row for it, nor for what comes after it.
    void HoldBack(const TZEPObject& parent);
    /// There are rows for the first `count` children of `parent` now, of `Available`.
    void Present(const TZEPObject& parent, int count);
    /// Rows that there would be below `parent` if nothing were held back.
    [[nodiscard]] int Available(const TZEPObject& parent) const;
    /// A parent of children that are held back; null: there is none.
    [[nodiscard]] const TZEPObject* HoldingBack() const {
        return m_heldBack.empty() ? nullptr : m_heldBack.begin()->first;
    }
    /// It goes: none of its children is held back any more.
    void Forget(const TZEPObject& gone) { m_heldBack.erase(&gone); }
    /// There is no row for a child that has just come, until `Reveal`.
    void HideNew(const TZEPObject& child);
    void Reveal();
    /// There is no row any more for a child, though it is still there.
    void HideGoing(const TZEPObject& child);
    /// The row of a child is `to`, though it is still in its old place; until it is there.
    void Move(const TZEPObject& child, int to);
    void Settle() { m_changing = {}; }
    /// The same where it is this child.
    void Settle(const TZEPObject& child) {
        if (m_changing.Child == &child) Settle();
    }
    /// Nothing is hidden or moved any more. The parent in question still exists.
    [[nodiscard]] bool IsSettled() const { return !m_changing.Holds(); }

private:
    [[nodiscard]] bool IsChanging(const TZEPObject& parent) const;
    [[nodiscard]] bool Hides(const TZEPObject& parent) const {
        return IsChanging(parent) && !m_changesTo;
    }
    [[nodiscard]] int Presented(const TZEPObject& parent) const;
    [[nodiscard]] bool IsTop(const TZEPObject& object) const;
    void ListRoots(const TZEPScene& scene);

    TZEPSceneFilter m_filter;
    std::vector<QPointer<TZEPObject>> m_wanted;            ///< as the host named them
    TObjects m_roots;                                      ///< those in the scene
    TObjects m_rows;                                       ///< those that are rows, and found
    std::unordered_map<const TZEPObject*, int> m_rowOf;    ///< of those
    std::unordered_set<const TZEPObject*> m_above;         ///< roots, and what these are below
    std::unordered_map<const TZEPObject*, int> m_heldBack; ///< the number of rows of a parent
    TZEPChildPlace m_changing;
    std::optional<int> m_changesTo; ///< none: it is hidden
    bool m_holds = false;           ///< the one root is no row itself
    bool m_isShort = false;         ///< not all of the wanted ones are roots
    bool m_lost = true;
};

} // namespace ZEP
