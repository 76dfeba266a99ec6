#pragma once

#include <zep/Export.h>

#include <QColor>
#include <QMetaType>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace ZEP {

/// A colour of the host: 0x00BBGGRR, or a system colour (0x80000000 + its number), which the
/// palette of the application resolves.
struct TColor {
    std::uint32_t Value = 0;

    constexpr TColor() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): colours are written as numbers everywhere
    constexpr TColor(std::uint32_t value) : Value(value) {}
    constexpr bool operator==(const TColor&) const = default;
};

inline constexpr TColor clBlack{0x000000};
inline constexpr TColor clMaroon{0x000080};
inline constexpr TColor clGreen{0x008000};
inline constexpr TColor clOlive{0x008080};
inline constexpr TColor clNavy{0x800000};
inline constexpr TColor clPurple{0x800080};
inline constexpr TColor clTeal{0x808000};
inline constexpr TColor clGray{0x808080};
inline constexpr TColor clSilver{0xC0C0C0};
inline constexpr TColor clRed{0x0000FF};
inline constexpr TColor clLime{0x00FF00};
inline constexpr TColor clYellow{0x00FFFF};
inline constexpr TColor clBlue{0xFF0000};
inline constexpr TColor clFuchsia{0xFF00FF};
inline constexpr TColor clAqua{0xFFFF00};
inline constexpr TColor clWhite{0xFFFFFF};

/// \name System colours, resolved through the application's palette
/// @{
inline constexpr TColor clScrollBar{0x80000000};
inline constexpr TColor clBackground{0x80000001};
inline constexpr TColor clActiveCaption{0x80000002};
inline constexpr TColor clInactiveCaption{0x80000003};
inline constexpr TColor clMenu{0x80000004};
inline constexpr TColor clWindow{0x80000005};
inline constexpr TColor clWindowFrame{0x80000006};
inline constexpr TColor clMenuText{0x80000007};
inline constexpr TColor clWindowText{0x80000008};
inline constexpr TColor clCaptionText{0x80000009};
inline constexpr TColor clActiveBorder{0x8000000A};
inline constexpr TColor clInactiveBorder{0x8000000B};
inline constexpr TColor clAppWorkSpace{0x8000000C};
inline constexpr TColor clHighlight{0x8000000D};
inline constexpr TColor clHighlightText{0x8000000E};
inline constexpr TColor clBtnFace{0x8000000F};
inline constexpr TColor clBtnShadow{0x80000010};
inline constexpr TColor clGrayText{0x80000011};
inline constexpr TColor clBtnText{0x80000012};
inline constexpr TColor clInactiveCaptionText{0x80000013};
inline constexpr TColor clBtnHighlight{0x80000014};
inline constexpr TColor cl3DDkShadow{0x80000015};
inline constexpr TColor cl3DLight{0x80000016};
inline constexpr TColor clInfoText{0x80000017};
inline constexpr TColor clInfoBk{0x80000018};
/// @}

/// Red, green, blue and alpha, each in 0..1, as OpenGL takes them.
using TGLColor = std::array<float, 4>;

/// 0x00BBGGRR of any colour; system colours are looked up in the application's palette (a neutral
/// grey where no application with a palette runs).
[[nodiscard]] ZEP_CORE_EXPORT std::uint32_t ColorToRGB(TColor color);

/// Red, green and blue of `color` as byte / 255, with the given alpha.
[[nodiscard]] ZEP_CORE_EXPORT TGLColor ToGLColor(TColor color, float alpha);

[[nodiscard]] ZEP_CORE_EXPORT QColor ToQColor(TColor color);
[[nodiscard]] ZEP_CORE_EXPORT TColor FromQColor(const QColor& color);

/// The colour of a constant's name ("clRed", "clBtnFace"), compared without case.
[[nodiscard]] ZEP_CORE_EXPORT std::optional<TColor> ColorByName(std::string_view name);

} // namespace ZEP

Q_DECLARE_METATYPE(ZEP::TColor)
