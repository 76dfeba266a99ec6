#pragma once

#include <QString>

#include <string_view>

namespace ZEP {

/// Turns the values of a drawing into text: UTF-8 where they are that, else Latin-1.
class TDXFText {
public:
    [[nodiscard]] QString Decode(std::string_view value) const;
};

} // namespace ZEP
