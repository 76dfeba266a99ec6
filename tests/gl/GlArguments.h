#pragma once

#include <GL/gl.h>

#include <string>

/// How an argument of an OpenGL call is written down. Each wrapper converts back to what the
/// function takes.
namespace ZEP::GlArgument {

/// The name of a constant, or its number.
std::string EnumName(GLenum value);
/// The names of the bits, joined with ` | `.
std::string BitNames(GLbitfield bits);
std::string Number(double value);

std::string PrimitiveName(GLenum value);
std::string FactorName(GLenum value);
std::string HexNumber(GLuint value);
inline std::string BooleanName(GLboolean value) {
    return value ? "GL_TRUE" : "GL_FALSE";
}

template <class T, auto ToText>
struct Named {
    T Value;
    operator T() const { return Value; }
    std::string Text() const { return ToText(Value); }
};

/// A symbolic constant from 256 on; below, where one number has many meanings, its number.
using Enum = Named<GLenum, EnumName>;
/// What `glBegin` draws.
using Primitive = Named<GLenum, PrimitiveName>;
/// A factor of `glBlendFunc` or an operation of `glStencilOp`, where 0 and 1 have names.
using Factor = Named<GLenum, FactorName>;
using Bits = Named<GLbitfield, BitNames>;
using Boolean = Named<GLboolean, BooleanName>;

/// A constant that travels as a number of another type, or a plain number.
template <class T>
struct EnumOr {
    T Value;
    operator T() const { return Value; }
    std::string Text() const {
        const bool isEnum = Value >= T(256) && T(GLenum(Value)) == Value;
        return isEnum ? EnumName(GLenum(Value)) : Number(double(Value));
    }
};

template <class T>
EnumOr(T) -> EnumOr<T>;

/// A mask of a buffer, in hexadecimal digits.
template <class T>
struct Mask {
    T Value;
    operator T() const { return Value; }
    std::string Text() const { return HexNumber(Value); }
};
template <class T>
Mask(T) -> Mask<T>;

/// `Size` numbers in memory, each written as an `Item`.
template <class T, class Item>
struct List {
    const T* Data;
    int Size;
    operator const T*() const { return Data; }
    std::string Text() const {
        if (!Data) return "null";
        std::string text;
        for (int i = 0; i < Size; ++i) {
            if (i) text += ' ';
            text += Item{Data[i]}.Text();
        }
        return text;
    }
};

template <class T>
struct Plain {
    T Value;
    std::string Text() const { return Number(double(Value)); }
};

template <class T>
List<T, Plain<T>> Values(const T* data, int size) {
    return {data, size};
}
/// Of a setting, whose numbers may be constants.
template <class T>
List<T, EnumOr<T>> Settings(const T* data, int size) {
    return {data, size};
}

/// Memory whose content is not written down.
template <class T>
struct Memory {
    T* Data;
    explicit Memory(T* data) : Data(data) {}
    operator T*() const { return Data; }
    std::string Text() const { return Data ? "data" : "null"; }
};

template <class T>
std::string Text(const T& argument) {
    if constexpr (requires { argument.Text(); })
        return argument.Text();
    else
        return Number(static_cast<double>(argument));
}

} // namespace ZEP::GlArgument
