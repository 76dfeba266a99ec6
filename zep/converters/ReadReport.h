#pragma once

#include <zep/Export.h>

#include <QHash>
#include <QString>

#include <cstddef>
#include <vector>

namespace ZEP {

/// What a reader passed over, counted by kind.
class ZEP_CORE_EXPORT TReadReport {
public:
    struct TEntry {
        QString Kind;         ///< "blocks with variables", "code G68"
        qint64 Count = 0;     ///< at least 1
        qint64 FirstLine = 0; ///< 0: the file has no lines
        bool IsMinor = false; ///< what is seen is as the file has it all the same
    };

    /// In the order in which they came up; empty where everything was read.
    [[nodiscard]] const std::vector<TEntry>& Entries() const { return m_entries; }

    /// One more of that kind. The caller bounds how many kinds a file can bring up.
    /// \param count  of them at once, the first in `line`
    void Add(const QString& kind, qint64 line = 0, qint64 count = 1);
    /// The same, of a kind without which all that is seen is as the file has it.
    void AddMinor(const QString& kind, qint64 line = 0, qint64 count = 1);
    void Clear();

private:
    void Count(const TEntry& entry);

    std::vector<TEntry> m_entries;
    QHash<QString, std::size_t> m_indexes;
};

} // namespace ZEP
