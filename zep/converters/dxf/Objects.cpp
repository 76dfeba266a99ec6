#include <zep/converters/dxf/Objects.h>

#include <zep/converters/dxf/Handles.h>
#include <zep/framework/ReadBudget.h>

namespace ZEP {

namespace {

constexpr int ObjectHandleCode = 5;

} // namespace

/// Takes the places of all sections of objects.
void TDXFObjects::FindPlaces() {
    m_tags.Goto({});
    while (m_tags.skip_upto_section("OBJECTS")) {
        TDXFPosition place;
        bool isOpen = false;
        while (m_tags.NextGroupCode() >= 0) {
            if (m_tags.Code() == ObjectHandleCode && isOpen) {
                isOpen = false;
                m_places.insert(DXFHandle(m_tags.ValStr()), place);
            }
            if (m_tags.Code() != 0) continue;
            m_tags.go_back_to_last();
            if (IsDXFSectionMark(m_tags.ValStr())) break;
            place = m_tags.Position();
            m_tags.NextGroupCode();
            isOpen = true;
        }
    }
}

const TDXFRecord* TDXFObjects::Read(quint64 handle) {
    const auto place = m_places.constFind(handle);
    if (place == m_places.constEnd()) return nullptr;
    m_tags.Goto(*place);
    TDXFRecord record;
    if (m_tags.NextGroupCode() != 0 || !record.Read(m_tags)) return nullptr;
    const std::size_t bytes =
        sizeof(TDXFRecord) + 2 * sizeof(TDXFRecord::TTag) * record.Tags().size();
    if (!m_budget.Take(static_cast<qint64>(bytes))) return nullptr;
    return &m_records.emplace(handle, std::move(record)).first->second;
}

const TDXFRecord* TDXFObjects::Find(std::string_view handle, std::string_view kind) {
    const quint64 number = DXFHandle(handle);
    const auto known = m_records.find(number);
    const TDXFRecord* record = known == m_records.end() ? nullptr : &known->second;
    if (!record) {
        const TDXFPosition back = m_tags.Position();
        if (!m_isSearched) FindPlaces();
        m_isSearched = true;
        record = Read(number);
        m_tags.Goto(back);
    }
    return record && record->Kind() == kind ? record : nullptr;
}

/// The handle behind a name in a dictionary; empty where there is none.
std::string_view TDXFObjects::EntryOf(std::string_view dictionary, std::string_view name) {
    constexpr int nameCode = 3, handleCode = 350, ownedCode = 360;
    const TDXFRecord* record = Find(dictionary, "DICTIONARY");
    bool isNext = false;
    for (std::size_t i = 0; record && i < record->Tags().size(); ++i) {
        const TDXFRecord::TTag& tag = record->Tags()[i];
        if (isNext && (tag.Code == handleCode || tag.Code == ownedCode)) return tag.Value;
        if (tag.Code == nameCode) isNext = tag.Value == name;
    }
    return {};
}

/// Dictionaries may be as long as the file, and insertions as many: each is asked once.
bool TDXFObjects::HasBoundary(std::string_view dictionary) {
    constexpr int enabledCode = 71;
    const quint64 handle = DXFHandle(dictionary);
    const auto known = m_boundaries.constFind(handle);
    if (known != m_boundaries.constEnd()) return *known;
    const std::string_view filter = EntryOf(EntryOf(dictionary, "ACAD_FILTER"), "SPATIAL");
    const TDXFRecord* boundary = Find(filter, "SPATIAL_FILTER");
    const bool has = boundary && boundary->Integer(enabledCode, 1) != 0;
    m_boundaries.insert(handle, has);
    return has;
}

} // namespace ZEP
