#pragma once

#include <zep/converters/dxf/Record.h>

#include <QHash>

#include <unordered_map>

namespace ZEP {

class TReadBudget;

/// What entities name by a handle and what is no entity: definitions of pictures, styles of
/// multilines (section OBJECTS). They are looked for when the first one is asked for.
class TDXFObjects {
public:
    TDXFObjects(TDXFTags& tags, TReadBudget& budget) : m_tags(tags), m_budget(budget) {}
    Q_DISABLE_COPY_MOVE(TDXFObjects)

    /// Null where there is none of that kind, or where it does not fit what may be made of the
    /// drawing. It stays as long as this.
    [[nodiscard]] const TDXFRecord* Find(std::string_view handle, std::string_view kind);
    /// Whether an insertion shows its block within a boundary only. \param dictionary  its own one
    [[nodiscard]] bool HasBoundary(std::string_view dictionary);

private:
    [[nodiscard]] std::string_view EntryOf(std::string_view dictionary, std::string_view name);
    void FindPlaces();
    const TDXFRecord* Read(quint64 handle);

    TDXFTags& m_tags;
    TReadBudget& m_budget;
    bool m_isSearched = false;
    QHash<quint64, TDXFPosition> m_places;
    std::unordered_map<quint64, TDXFRecord> m_records;
    QHash<quint64, bool> m_boundaries; // by the dictionaries of insertions
};

} // namespace ZEP
