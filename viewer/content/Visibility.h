#pragma once

#include <QSet>
#include <QString>

namespace ZEP {

class TZEPObject;

/// Idents of the children of a root that are invisible.
[[nodiscard]] QSet<QString> HiddenBelow(const TZEPObject& root);

/// The file was read again: what its user hid or showed before, by ident, is so again.
/// \param hiddenInFile  as it was first read
/// \param hidden        as the user left it
void RestoreHidden(TZEPObject& root, const QSet<QString>& hiddenInFile,
                   const QSet<QString>& hidden);

} // namespace ZEP
