#include "tests/gl/GlArguments.h"

#include <array>
#include <charconv>
#include <cmath>
#include <unordered_map>

namespace ZEP::GlArgument {

namespace {

struct TConstant {
    const char* Name;
    GLenum Value;
};

/// All constants of GL/gl.h and GL/glu.h.
constexpr TConstant Constants[] = {
#include "GlConstants.inc"
};

constexpr std::array Primitives = {
    "GL_POINTS",         "GL_LINES",        "GL_LINE_LOOP", "GL_LINE_STRIP", "GL_TRIANGLES",
    "GL_TRIANGLE_STRIP", "GL_TRIANGLE_FAN", "GL_QUADS",     "GL_QUAD_STRIP", "GL_POLYGON"};

using TNames = std::unordered_map<GLenum, const char*>;

/// Bits and constants share numbers, so they are two tables; of synonyms the first stays.
TNames NamesOf(bool bits) {
    TNames names;
    for (const TConstant& constant : Constants) {
        const bool isBit = std::string_view(constant.Name).ends_with("_BIT");
        if (isBit == bits && (bits || constant.Value > 255))
            names.emplace(constant.Value, constant.Name);
    }
    return names;
}

template <class... Format>
std::string Digits(Format... format) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, format...).ptr;
    return {buffer, end};
}

} // namespace

std::string EnumName(GLenum value) {
    static const TNames names = NamesOf(false);
    const auto found = names.find(value);
    if (found != names.end()) return found->second;
    return value < 256 ? Digits(value) : HexNumber(value);
}

std::string BitNames(GLbitfield bits) {
    static const TNames names = NamesOf(true);
    if (bits == GL_ALL_ATTRIB_BITS) return "GL_ALL_ATTRIB_BITS";
    std::string text;
    for (GLbitfield bit = 1; bit != 0; bit <<= 1) {
        if (!(bits & bit)) continue;
        const auto found = names.find(bit);
        if (!text.empty()) text += " | ";
        text += found != names.end() ? found->second : HexNumber(bit);
    }
    return text.empty() ? "0" : text;
}

std::string Number(double value) {
    if (std::abs(value) < 1e-9) return "0";
    if (value == std::floor(value) && std::abs(value) < 1e15)
        return Digits(static_cast<long long>(value));
    return Digits(value, std::chars_format::general, 6);
}

std::string PrimitiveName(GLenum value) {
    return value < Primitives.size() ? Primitives[value] : EnumName(value);
}

std::string FactorName(GLenum value) {
    if (value == GL_ZERO) return "GL_ZERO";
    return value == GL_ONE ? "GL_ONE" : EnumName(value);
}

std::string HexNumber(GLuint value) {
    return "0x" + Digits(value, 16);
}

} // namespace ZEP::GlArgument
