#include <zep/converters/ReadReport.h>

namespace ZEP {

void TReadReport::Add(const QString& kind, qint64 line, qint64 count) {
    const auto place = m_indexes.constFind(kind);
    if (place != m_indexes.cend()) {
        m_entries[*place].Count += count;
        return;
    }
    m_indexes.insert(kind, m_entries.size());
    m_entries.push_back({kind, count, line});
}

void TReadReport::Clear() {
    m_entries.clear();
    m_indexes.clear();
}

} // namespace ZEP
