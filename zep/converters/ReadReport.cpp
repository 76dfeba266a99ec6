#include <zep/converters/ReadReport.h>

namespace ZEP {

void TReadReport::Add(const QString& kind, qint64 line, qint64 count) {
    Count({kind, count, line});
}

void TReadReport::AddMinor(const QString& kind, qint64 line, qint64 count) {
    Count({kind, count, line, true});
}

void TReadReport::Count(const TEntry& entry) {
    const auto place = m_indexes.constFind(entry.Kind);
    if (place != m_indexes.cend()) {
        m_entries[*place].Count += entry.Count;
        return;
    }
    m_indexes.insert(entry.Kind, m_entries.size());
    m_entries.push_back(entry);
}

void TReadReport::Clear() {
    m_entries.clear();
    m_indexes.clear();
}

} // namespace ZEP
