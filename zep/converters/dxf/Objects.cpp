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

} // namespace ZEP
