#include <zep/framework/Collection.h>

#include <zep/framework/Exception.h>

namespace ZEP {

int TCollectionItem::Index() const {
    if (!m_collection) return -1;
    for (int i = 0; i < m_collection->Count(); ++i)
        if (m_collection->GetItem(i) == this) return i;
    return -1;
}

QString TCollectionItem::GetDisplayName() const {
    return ClassName(*MetaObject());
}

void TCollection::CheckIndex(int index) const {
    if (index < 0 || index >= Count())
        throw Exception(QStringLiteral("List index out of bounds (%1)").arg(index));
}

} // namespace ZEP
