#pragma once

#include <string_view>

namespace ZEP {

/// What the binary form begins with.
inline constexpr std::string_view StreamSignature = "TPF0";

/// The byte before each value of the binary form.
enum TStreamTag : unsigned char {
    NullTag,
    ListTag,
    Int8Tag,
    Int16Tag,
    Int32Tag,
    ExtendedTag,
    StringTag,
    IdentifierTag,
    FalseTag,
    TrueTag,
    BinaryTag,
    SetTag,
    LongStringTag,
    NilTag,
    CollectionTag,
    SingleTag,
    CurrencyTag,
    DateTag,
    WideStringTag,
    Int64Tag,
    UTF8StringTag,
    DoubleTag
};

/// Bits of the byte that may stand before a component.
enum TStreamPrefix : unsigned char {
    PrefixMark = 0xF0,
    PrefixMask = 0xF8,
    PrefixPosition = 2 ///< an integer value follows
};

} // namespace ZEP
