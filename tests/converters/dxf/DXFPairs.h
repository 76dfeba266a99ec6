#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace ZEP {

/// The pairs of a drawing from "0 LINE|8 walls|10 1.5": code and value on a line each.
inline std::string Pairs(std::string_view compact, std::string_view lineEnd = "\n") {
    std::string text;
    while (!compact.empty()) {
        const std::string_view pair = compact.substr(0, compact.find('|'));
        compact.remove_prefix(pair.size() < compact.size() ? pair.size() + 1 : pair.size());
        const std::string_view code = pair.substr(0, pair.find(' '));
        text.append(code).append(lineEnd);
        if (code.size() < pair.size()) text.append(pair.substr(code.size() + 1));
        text.append(lineEnd);
    }
    return text;
}

/// Of a case: pairs on lines as they come; without any section, those of the entities.
inline std::string BytesOfPairs(const std::string& input) {
    std::string pairs = input.substr(0, input.find_last_not_of('\n') + 1);
    std::ranges::replace(pairs, '\n', '|');
    if (pairs.find("0 SECTION") == std::string::npos)
        pairs = "0 SECTION|2 ENTITIES|" + pairs + "|0 ENDSEC|0 EOF";
    return Pairs(pairs);
}

} // namespace ZEP
