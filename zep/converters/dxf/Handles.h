#pragma once

#include <zep/converters/dxf/Record.h>

#include <QHash>

#include <charconv>

namespace ZEP {

/// A handle: a hexadecimal number. 0 for what is none.
[[nodiscard]] inline quint64 DXFHandle(std::string_view value) {
    constexpr int hexadecimal = 16;
    quint64 handle = 0;
    const auto end = value.data() + value.size();
    const auto result = std::from_chars(value.data(), end, handle, hexadecimal);
    return result.ec == std::errc() && result.ptr == end ? handle : 0;
}

/// The names of records in tables, by their handles: entities name blocks and styles so.
class TDXFHandles {
public:
    /// Of one handle the first holds.
    void Add(const TDXFRecord& record) {
        constexpr int handleCode = 5;
        const quint64 handle = DXFHandle(record.Text(handleCode));
        if (handle != 0 && !m_names.contains(handle)) m_names.insert(handle, record.Text(2));
    }
    /// As it stands in the text; empty where there is none.
    [[nodiscard]] std::string_view NameOf(std::string_view handle) const {
        return m_names.value(DXFHandle(handle));
    }

private:
    QHash<quint64, std::string_view> m_names;
};

} // namespace ZEP
