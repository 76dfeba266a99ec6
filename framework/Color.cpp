#include "framework/Color.h"

#include <QGuiApplication>
#include <QPalette>

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

} // namespace ZEP
