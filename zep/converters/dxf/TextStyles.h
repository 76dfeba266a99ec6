#pragma once

#include <zep/converters/dxf/Names.h>
#include <zep/converters/dxf/Record.h>
#include <zep/converters/dxf/Text.h>

#include <unordered_map>
#include <unordered_set>

namespace ZEP {

/// The text styles of a drawing. Texts of one line say themselves what they take over from theirs;
/// texts of several lines do not.
class TDXFTextStyles {
public:
    /// An entry of the table. Of entries of one name the first holds.
    void Add(const TDXFRecord& record) {
        TDXFTextLook look;
        if (const double width = record.Number(41, 1); width > 0) look.Width = width;
        look.Oblique = record.Number(50);
        constexpr int verticalFlag = 4;
        const std::string name = FoldedDXFName(record.Text(2));
        if (m_byName.try_emplace(name, look).second && record.Flag(70, verticalFlag))
            m_vertical.insert(name);
    }
    /// A plain one where there is none of that name.
    [[nodiscard]] TDXFTextLook Find(std::string_view name) const {
        const auto place = m_byName.find(FoldedDXFName(name));
        return place == m_byName.end() ? TDXFTextLook() : place->second;
    }

    /// Its letters stand below each other.
    [[nodiscard]] bool IsVertical(std::string_view name) const {
        return !m_vertical.empty() && m_vertical.contains(FoldedDXFName(name));
    }

private:
    std::unordered_map<std::string, TDXFTextLook> m_byName; // folded
    std::unordered_set<std::string> m_vertical;             // folded
};

} // namespace ZEP
