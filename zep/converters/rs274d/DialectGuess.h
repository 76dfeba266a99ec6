#pragma once

#include <zep/converters/rs274d/Dialect.h>

#include <string_view>

namespace ZEP {

/// Bytes at the front of a program that tell its dialect.
inline constexpr std::size_t RS274DGuessSize = std::size_t(1) << 18;

/// The dialect that a program is likely to be in: what only one of them knows decides (names of
/// parameters and words behind O-words; GOTO, G65, a program number). NGC where nothing tells.
/// \param text  looked at as far as `RS274DGuessSize`
[[nodiscard]] ZEP_CORE_EXPORT TRS274DDialect GuessRS274DDialect(std::string_view text);

/// Whether a program turns rather than mills, as far as `RS274DGuessSize` tells: it has no Y, but
/// words that only lathes know.
[[nodiscard]] ZEP_CORE_EXPORT bool TurnsRS274D(std::string_view text);

} // namespace ZEP
