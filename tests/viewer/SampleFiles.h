#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

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

inline QByteArray Chunk(quint16 id, const QByteArray& body) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << id << static_cast<quint32>(body.size() + 6);
    return bytes + body;
}

template <class Number>
QByteArray Numbers(std::initializer_list<Number> numbers) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (const Number number : numbers) stream << number;
    return bytes;
}

inline QByteArray Text(const char* text) {
    return QByteArray(text) + '\0';
}

inline QByteArray Material(const char* name, int red) {
    QByteArray color = Chunk(0x0011, Numbers<quint8>({static_cast<quint8>(red), 20, 30}));
    return Chunk(0xAFFF, Chunk(0xA000, Text(name)) + Chunk(0xA020, color));
}

/// One triangle. \param material  of its face; empty: none
inline QByteArray Mesh(const char* name, const char* material) {
    const QByteArray points = Numbers<quint16>({3}) + Numbers<float>({0, 0, 0, 2, 0, 0, 0, 2, 0});
    QByteArray faces = Numbers<quint16>({1, 0, 1, 2, 0});
    if (*material) faces += Chunk(0x4130, Text(material) + Numbers<quint16>({1, 0}));
    return Chunk(0x4000, Text(name) + Chunk(0x4100, Chunk(0x4110, points) + Chunk(0x4120, faces)));
}

inline QByteArray Camera(const char* name, std::initializer_list<float> eyeTargetRollLens) {
    return Chunk(0x4000, Text(name) + Chunk(0x4700, Numbers<float>(eyeTargetRollLens)));
}

inline QByteArray Model(const QByteArray& parts) {
    return Chunk(0x4D4D, Chunk(0x0002, Numbers<quint32>({3})) + Chunk(0x3D3D, parts));
}

} // namespace ZEP::Sample
