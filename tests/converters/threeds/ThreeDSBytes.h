#pragma once

#include <QtEndian>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace ZEP::F3DS {

/// \name Pieces of a 3DS file, joined with `+`
/// @{
template <class T>
std::string Numbers(std::initializer_list<T> values) {
    std::string bytes;
    for (const T value : values) {
        char buffer[sizeof(T)];
        qToLittleEndian<T>(value, buffer);
        bytes.append(buffer, sizeof buffer);
    }
    return bytes;
}

inline std::string Bytes(std::initializer_list<std::uint8_t> values) {
    return Numbers<std::uint8_t>(values);
}
inline std::string Words(std::initializer_list<std::uint16_t> values) {
    return Numbers<std::uint16_t>(values);
}
inline std::string Long(std::uint32_t value) {
    return Numbers<std::uint32_t>({value});
}
inline std::string Floats(std::initializer_list<float> values) {
    return Numbers<float>(values);
}
inline std::string Name(const std::string& text) {
    return text + '\0';
}

/// A chunk that states `length`, whatever it holds.
inline std::string ChunkOfLength(std::uint16_t id, std::size_t length,
                                 const std::string& contents = {}) {
    return Words({id}) + Long(static_cast<std::uint32_t>(length)) + contents;
}
inline std::string Chunk(std::uint16_t id, const std::string& contents = {}) {
    return ChunkOfLength(id, 6 + contents.size(), contents);
}
/// @}

/// \name Usual chunks
/// @{
inline std::string File(const std::string& editor, const std::string& others = {}) {
    return Chunk(0x4D4D, Chunk(0x0002, Long(3)) + Chunk(0x3D3D, editor) + others);
}
inline std::string Object(const std::string& name, const std::string& contents) {
    return Chunk(0x4000, Name(name) + contents);
}
inline std::string Mesh(const std::string& name, const std::string& contents) {
    return Object(name, Chunk(0x4100, contents));
}
inline std::string Material(const std::string& name, const std::string& contents = {}) {
    return Chunk(0xAFFF, Chunk(0xA000, Name(name)) + contents);
}
/// A material of the name of its picture.
inline std::string Textured(const std::string& picture, const std::string& more = {}) {
    return Material(picture, Chunk(0xA200, Chunk(0xA300, Name(picture)) + more));
}
inline std::string Color24(std::uint16_t id, std::initializer_list<std::uint8_t> color) {
    return Chunk(id, Chunk(0x0011, Bytes(color)));
}
/// Four points and the two faces between them, with further chunks inside of the faces' chunk.
inline std::string SquarePoints() {
    return Chunk(0x4110, Words({4}) + Floats({0, 0, 0, 2, 0, 0, 2, 2, 1, 0, 2, 1}));
}
inline std::string SquareFaces(const std::string& inside = {}) {
    return Chunk(0x4120, Words({2, 0, 1, 2, 7, 0, 2, 3, 7}) + inside);
}
inline std::string Group(const std::string& material, std::initializer_list<std::uint16_t> faces) {
    return Chunk(0x4130,
                 Name(material) + Words({static_cast<std::uint16_t>(faces.size())}) + Words(faces));
}
inline std::string Square(const std::string& name = "Square") {
    return Mesh(name, SquarePoints() + SquareFaces());
}
/// @}

} // namespace ZEP::F3DS
