#include <zep/framework/Color.h>

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace ZEP {

namespace {

constexpr std::uint32_t SystemBit = 0x80000000;

constexpr std::array SystemRoles{QPalette::Mid,
                                 QPalette::Window,
                                 QPalette::Highlight,
                                 QPalette::Mid,
                                 QPalette::Button,
                                 QPalette::Base,
                                 QPalette::Dark,
                                 QPalette::ButtonText,
                                 QPalette::Text,
                                 QPalette::HighlightedText,
                                 QPalette::Button,
                                 QPalette::Button,
                                 QPalette::Mid,
                                 QPalette::Highlight,
                                 QPalette::HighlightedText,
                                 QPalette::Button,
                                 QPalette::Dark,
                                 QPalette::PlaceholderText,
                                 QPalette::ButtonText,
                                 QPalette::WindowText,
                                 QPalette::Light,
                                 QPalette::Shadow,
                                 QPalette::Midlight,
                                 QPalette::ToolTipText,
                                 QPalette::ToolTipBase};

struct TNamedColor {
    std::string_view Name;
    TColor Color;
};
constexpr TNamedColor NamedColors[] = {{"clBlack", clBlack},
                                       {"clMaroon", clMaroon},
                                       {"clGreen", clGreen},
                                       {"clOlive", clOlive},
                                       {"clNavy", clNavy},
                                       {"clPurple", clPurple},
                                       {"clTeal", clTeal},
                                       {"clGray", clGray},
                                       {"clSilver", clSilver},
                                       {"clRed", clRed},
                                       {"clLime", clLime},
                                       {"clYellow", clYellow},
                                       {"clBlue", clBlue},
                                       {"clFuchsia", clFuchsia},
                                       {"clAqua", clAqua},
                                       {"clWhite", clWhite},
                                       {"clScrollBar", clScrollBar},
                                       {"clBackground", clBackground},
                                       {"clActiveCaption", clActiveCaption},
                                       {"clInactiveCaption", clInactiveCaption},
                                       {"clMenu", clMenu},
                                       {"clWindow", clWindow},
                                       {"clWindowFrame", clWindowFrame},
                                       {"clMenuText", clMenuText},
                                       {"clWindowText", clWindowText},
                                       {"clCaptionText", clCaptionText},
                                       {"clActiveBorder", clActiveBorder},
                                       {"clInactiveBorder", clInactiveBorder},
                                       {"clAppWorkSpace", clAppWorkSpace},
                                       {"clHighlight", clHighlight},
                                       {"clHighlightText", clHighlightText},
                                       {"clBtnFace", clBtnFace},
                                       {"clBtnShadow", clBtnShadow},
                                       {"clGrayText", clGrayText},
                                       {"clBtnText", clBtnText},
                                       {"clInactiveCaptionText", clInactiveCaptionText},
                                       {"clBtnHighlight", clBtnHighlight},
                                       {"cl3DDkShadow", cl3DDkShadow},
                                       {"cl3DLight", cl3DLight},
                                       {"clInfoText", clInfoText},
                                       {"clInfoBk", clInfoBk}};

std::uint32_t SystemColor(std::uint32_t number) {
    const bool hasPalette = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    if (!hasPalette || number >= SystemRoles.size()) return clGray.Value;
    return FromQColor(QGuiApplication::palette().color(SystemRoles[number])).Value;
}

} // namespace

std::uint32_t ColorToRGB(TColor color) {
    if (color.Value & SystemBit) return SystemColor(color.Value & 0xFF);
    return color.Value & 0xFFFFFF;
}

TGLColor ToGLColor(TColor color, float alpha) {
    const std::uint32_t rgb = ColorToRGB(color);
    const auto channel = [rgb](int shift) {
        return static_cast<float>((rgb >> shift) & 0xFF) / 255.0F;
    };
    return {channel(0), channel(8), channel(16), alpha};
}

QColor ToQColor(TColor color) {
    const std::uint32_t rgb = ColorToRGB(color);
    return {static_cast<int>(rgb & 0xFF), static_cast<int>((rgb >> 8) & 0xFF),
            static_cast<int>((rgb >> 16) & 0xFF)};
}

TColor FromQColor(const QColor& color) {
    return static_cast<std::uint32_t>(color.red() | (color.green() << 8) | (color.blue() << 16));
}

std::optional<TColor> ColorByName(std::string_view name) {
    const auto is = [name](const TNamedColor& color) {
        return QLatin1StringView(color.Name)
                   .compare(QLatin1StringView(name), Qt::CaseInsensitive) == 0;
    };
    const auto* found = std::ranges::find_if(NamedColors, is);
    if (found == std::end(NamedColors)) return {};
    return found->Color;
}

} // namespace ZEP
