#pragma once

#include <Qt>

#include <unordered_map>
#include <vector>

namespace ZEP {

class TZEPObject;

/// What is seen of the objects of a scene, as check boxes tell it: an object below an invisible one
/// is not seen, whatever its own flag. States of parents are computed once; whoever keeps one of
/// these tells it what has changed.
class TZEPVisibility {
public:
    /// Of the box: partially where some of what is below is not seen.
    [[nodiscard]] Qt::CheckState StateOf(const TZEPObject& object) const;

    /// It holds nothing and nothing above hides it: it is seen or not by its own flag alone.
    [[nodiscard]] static bool IsByItself(const TZEPObject& object);
    /// Shown, what was hidden comes back as it was, and what was seen in part is seen whole. Of
    /// what hides it, nothing else comes to be seen.
    void SetShown(TZEPObject& object, bool shown);
    /// These are seen, whole, and nothing else below the roots.
    void ShowOnly(const std::vector<TZEPObject*>& roots, const std::vector<TZEPObject*>& objects);
    /// The object and all below it.
    void ShowAll(TZEPObject& root);

    /// Anything may have changed.
    void Forget() { m_states.clear(); }
    /// The children of one object have changed.
    void Forget(const TZEPObject& parent) { m_states.erase(&parent); }
    /// Anything may have changed in it and below, or it goes away with all that.
    void ForgetBelow(TZEPObject& root);
    /// One object has changed, or has come: what its parents' boxes say is looked at anew where
    /// it makes a difference.
    void Update(const TZEPObject& object);

private:
    /// Of a parent. What is seen in part stays so while two of its children differ, whatever the
    /// others do.
    struct TState {
        Qt::CheckState Value = Qt::Checked;
        const TZEPObject* One = nullptr;
        const TZEPObject* Other = nullptr;

        [[nodiscard]] bool RestsOn(const TZEPObject& child) const {
            return &child == One || &child == Other;
        }
    };

    [[nodiscard]] Qt::CheckState OwnState(const TZEPObject& object) const;
    [[nodiscard]] TState StateOfChildren(const TZEPObject& object) const;

    mutable std::unordered_map<const TZEPObject*, TState> m_states;
};

} // namespace ZEP
