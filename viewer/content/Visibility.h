#pragma once

#include <QSet>
#include <QString>

#include <unordered_map>
#include <vector>

namespace ZEP {

class TZEPObject;

/// What is seen of the objects below the roots of files, as check boxes tell it: an object below an
/// invisible one is not seen, whatever its own flag. States of large parents are computed once.
class TVisibility {
public:
    /// `Qt::CheckState` of the box: partially where some of what is below is not seen.
    [[nodiscard]] Qt::CheckState StateOf(const TZEPObject& object) const;

    /// Shown, what was hidden comes back as it was, and what was seen in part is seen whole. Of
    /// what hides it, nothing else comes to be seen.
    void SetShown(TZEPObject& object, bool shown);
    /// These are seen, whole, and nothing else below the roots.
    void ShowOnly(const std::vector<TZEPObject*>& roots, const std::vector<TZEPObject*>& objects);
    /// The object and all below it.
    void ShowAll(TZEPObject& root);
    /// Something else has changed.
    void Forget() { m_states.clear(); }

private:
    [[nodiscard]] Qt::CheckState OwnState(const TZEPObject& object) const;
    [[nodiscard]] Qt::CheckState StateOfChildren(const TZEPObject& object) const;

    mutable std::unordered_map<const TZEPObject*, Qt::CheckState> m_states; ///< of parents
};

/// Idents of the children of a root that are invisible.
[[nodiscard]] QSet<QString> HiddenBelow(const TZEPObject& root);

/// The file was read again: what its user hid or showed before, by ident, is so again.
/// \param hiddenInFile  as it was first read
/// \param hidden        as the user left it
void RestoreHidden(TZEPObject& root, const QSet<QString>& hiddenInFile,
                   const QSet<QString>& hidden);

} // namespace ZEP
