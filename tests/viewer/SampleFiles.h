#pragma once

#include "tests/converters/threeds/ThreeDSBytes.h"

#include <QByteArray>

#include <initializer_list>

/// Small drawings and models, made of what a test is about.
namespace ZEP::Sample {

/// A part of a drawing: pairs of a code and a value.
inline QByteArray Pairs(std::initializer_list<std::pair<int, const char*>> pairs) {
    QByteArray text;
    for (const auto& [code, value] : pairs) text += QByteArray::number(code) + "\n" + value + "\n";
    return text;
}

inline QByteArray Layer(const char* name, int color) {
    return Pairs({{0, "LAYER"}, {2, name}, {70, "0"}}) + "62\n" + QByteArray::number(color) + "\n";
}

inline QByteArray LineOn(const char* layer) {
    return Pairs({{0, "LINE"}, {8, layer}, {10, "0"}, {20, "0"}, {11, "4"}, {21, "3"}});
}

inline QByteArray Drawing(const QByteArray& layers, const QByteArray& entities) {
    return Pairs({{0, "SECTION"}, {2, "TABLES"}, {0, "TABLE"}, {2, "LAYER"}}) + layers +
           Pairs({{0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}}) + entities +
           Pairs({{0, "ENDSEC"}, {0, "EOF"}});
}

inline QByteArray Material(const char* name, int red) {
    return QByteArray::fromStdString(
        F3DS::Material(name, F3DS::Color24(0xA020, {static_cast<std::uint8_t>(red), 20, 30})));
}

/// One triangle. \param material  of its face; empty: none
inline QByteArray Mesh(const char* name, const char* material) {
    using namespace F3DS;
    const std::string points = Words({3}) + Floats({0, 0, 0, 2, 0, 0, 0, 2, 0});
    const std::string group = *material ? Group(material, {0}) : std::string();
    return QByteArray::fromStdString(
        F3DS::Mesh(name, Chunk(0x4110, points) + Chunk(0x4120, Words({1, 0, 1, 2, 0}) + group)));
}

inline QByteArray Camera(const char* name, std::initializer_list<float> eyeTargetRollLens) {
    return QByteArray::fromStdString(
        F3DS::Object(name, F3DS::Chunk(0x4700, F3DS::Floats(eyeTargetRollLens))));
}

inline QByteArray Model(const QByteArray& parts) {
    return QByteArray::fromStdString(F3DS::File(parts.toStdString()));
}

} // namespace ZEP::Sample
