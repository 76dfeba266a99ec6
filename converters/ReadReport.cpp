#include "converters/ReadReport.h"

namespace ZEP {

void TReadReport::Add(const QString& kind, qint64 line) {
    const auto place = m_indexes.constFind(kind);
    if (place != m_indexes.cend()) {
        ++m_entries[*place].Count;
        return;
    }
    m_indexes.insert(kind, m_entries.size());
    m_entries.push_back({kind, 1, line});
}

void TReadReport::Clear() {
    m_entries.clear();
    m_indexes.clear();
}

} // namespace ZEP
