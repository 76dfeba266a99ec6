#include "viewer/content/Visibility.h"

#include <zep/scene/Object.h>

namespace ZEP {

QSet<QString> HiddenBelow(const TZEPObject& root) {
    QSet<QString> hidden;
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i)
        if (const TZEPObject& child = *root.GetItem(i);
            !child.Visible() && !child.Ident().isEmpty())
            hidden << child.Ident();
    return hidden;
}

void RestoreHidden(TZEPObject& root, const QSet<QString>& hiddenInFile,
                   const QSet<QString>& hidden) {
    if (hiddenInFile.isEmpty() && hidden.isEmpty()) return;
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *root.GetItem(i);
        if (hidden.contains(child.Ident()))
            child.SetVisible(false);
        else if (hiddenInFile.contains(child.Ident()))
            child.SetVisible(true);
    }
}

} // namespace ZEP
