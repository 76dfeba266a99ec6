#pragma once

#include <QString>

#include <cstdint>
#include <map>
#include <vector>

namespace ZEP {

/// What a reader of NC programs can pass over.
enum class TRS274DPassed : std::uint8_t {
    Deleted,
    Variable,
    Expression,
    ControlWord,
    BadNumber,
    Unreadable,
    LongLine,
    NoMotionMode,
    ArcWithoutCenter,
    ArcOutOfReach,
    Spiral,
    OtherAxes
};

/// What was passed over in a program, counted by kind.
class TRS274DReport {
public:
    struct TEntry {
        QString Kind; ///< "blocks with variables", "code G68"
        qint64 Count;
        qint64 FirstLine;
    };

    /// In the order of their first lines; empty where everything was read.
    [[nodiscard]] const std::vector<TEntry>& Entries() const { return m_entries; }

    /// One more of that kind; a kind is counted at most once for each call.
    void Add(TRS274DPassed kind, qint64 line);
    /// One more block with an unknown code: letter G or M with its number.
    void AddCode(char letter, double code, qint64 line);
    void Clear();

private:
    void AddEntry(int key, qint64 line, const QString& kind);

    std::vector<TEntry> m_entries;
    std::map<int, std::size_t> m_indexes;
};

} // namespace ZEP
