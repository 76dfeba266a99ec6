#pragma once

#include "tests/Words.h"

#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP {

template <class T>
std::string LittleEndian(double value) {
    char buffer[sizeof(T)];
    qToLittleEndian<T>(static_cast<T>(value), buffer);
    return {buffer, sizeof buffer};
}

/// Without the quote; `~` stands for a space.
inline std::string TextOf(std::string token) {
    std::ranges::replace(token, '~', ' ');
    return token.substr(1);
}

/// `b 1 2` bytes, `w` words, `l` longs, `f` floats, `'name` with its end, `"name` without one.
inline std::string BytesOfTokens(std::istringstream& tokens) {
    std::string bytes;
    char kind = 'b';
    for (std::string token; tokens >> token;) {
        if (token.size() == 1 && std::string_view("bwlf").find(token[0]) != std::string::npos)
            kind = token[0];
        else if (token[0] == '\'' || token[0] == '"')
            bytes += TextOf(token) + std::string(token[0] == '\'', '\0');
        else if (const double number = NumberOf(token); kind == 'f')
            bytes += LittleEndian<float>(number);
        else
            bytes += kind == 'b'   ? LittleEndian<std::uint8_t>(number)
                     : kind == 'w' ? LittleEndian<std::uint16_t>(number)
                                   : LittleEndian<std::uint32_t>(number);
    }
    return bytes;
}

/// A 3DS file from a chunk on each line, "4120 w 1 0 1 2", indented below the one that it is in.
/// "4120=99" states another length than its own, and "-" is no chunk but bytes alone.
inline std::string BytesOfChunks(const std::string& input) {
    struct TOpen {
        std::size_t Indent, Start;
        bool HasLength;
    };
    std::string bytes;
    std::vector<TOpen> open;
    const auto close = [&](std::size_t indent) {
        while (!open.empty() && open.back().Indent >= indent) {
            const auto [ignored, start, hasLength] = open.back();
            open.pop_back();
            if (!hasLength)
                bytes.replace(start + 2, 4,
                              LittleEndian<std::uint32_t>(double(bytes.size() - start)));
        }
    };
    std::istringstream lines(input);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t indent = line.find_first_not_of(' ');
        if (indent == std::string::npos) continue;
        close(indent);
        std::istringstream tokens(line);
        std::string id;
        tokens >> id;
        if (id != "-") {
            const auto equals = id.find('=');
            const bool hasLength = equals != std::string::npos;
            open.push_back({indent, bytes.size(), hasLength});
            bytes += LittleEndian<std::uint16_t>(std::stoi(id.substr(0, equals), nullptr, 16)) +
                     LittleEndian<std::uint32_t>(hasLength ? NumberOf(id.substr(equals + 1)) : 0);
        }
        bytes += BytesOfTokens(tokens);
    }
    close(0);
    return bytes;
}

} // namespace ZEP
