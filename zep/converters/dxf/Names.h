#pragma once

#include <zep/framework/Ascii.h>

#include <algorithm>
#include <string>

namespace ZEP {

/// A name of a block or a line type, in which the case of ASCII letters means nothing.
[[nodiscard]] inline std::string FoldedDXFName(std::string_view name) {
    std::string folded(name);
    std::ranges::transform(folded, folded.begin(), ToLower);
    return folded;
}

} // namespace ZEP
