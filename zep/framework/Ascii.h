#pragma once

namespace ZEP {

/// \name Characters by ASCII, whatever the locale says
/// @{
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char ToUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
/// @}

} // namespace ZEP
