#pragma once

#include <zep/scene/ChildNews.h>

#include <utility>
#include <vector>

namespace ZEP {

/// What has happened to neighbours among the children of an object.
struct TZEPChildChange {
    enum TKind {
        Looks,   ///< they look different
        Selects, ///< they were selected or deselected
        Comes,   ///< they are new
        Goes     ///< they have gone
    };

    TKind Kind;
    int First; ///< position when it happened: of those that go, the one before
    int Count;
};

/// What has happened to the children of an object, in order.
class TZEPChildChanges {
public:
    /// So much that it is not told one by one.
    [[nodiscard]] bool AreMany() const { return m_many; }
    /// Likewise of selections: whatever else has happened is told.
    [[nodiscard]] bool AreManySelections() const { return m_manySelections; }
    [[nodiscard]] const std::vector<TZEPChildChange>& Each() const { return m_each; }
    [[nodiscard]] bool IsEmpty() const {
        return !m_many && !m_manySelections && m_each.empty() && m_selections == 0;
    }
    [[nodiscard]] TZEPChildNews News() const;

    void Note(TZEPChildChange::TKind kind, int index);
    [[nodiscard]] static TZEPChildChanges None() {
        TZEPChildChanges none;
        none.m_many = false;
        return none;
    }
    /// All of them: none are left.
    [[nodiscard]] TZEPChildChanges Take() { return std::exchange(*this, None()); }

private:
    [[nodiscard]] bool Extend(TZEPChildChange::TKind kind, int index);
    void Summarize(TZEPChildChange::TKind kind);

    std::vector<TZEPChildChange> m_each;
    int m_selections = 0;
    bool m_many = true; // nobody has asked yet
    bool m_manySelections = false;
};

} // namespace ZEP
