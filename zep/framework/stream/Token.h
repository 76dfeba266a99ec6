#pragma once

#include <zep/Export.h>
#include <zep/framework/UserError.h>

#include <string_view>

namespace ZEP {

/// What a component stream consists of, in its binary and in its text form alike.
enum class TTokenKind : unsigned char {
    BeginComponent, ///< `Bytes` is the class, `Name` the component's name or empty
    EndComponent,   ///< after its properties and its child components
    Null,
    Nil, ///< a reference to no component
    False,
    True,
    Integer,
    Float,
    Identifier, ///< `Bytes`: a value of an enumeration, or the name of a component
    String,     ///< `Text`
    Binary,     ///< `Bytes`
    BeginSet,   ///< identifiers without a name follow
    EndSet,
    BeginList, ///< values without a name follow
    EndList,
    BeginCollection, ///< items follow
    EndCollection,
    BeginItem, ///< properties follow; `Integer` is a position where `HasPosition`
    EndItem,
    End ///< after the outermost component
};

/// One step of a stream. A token that begins or is the value of a property carries the property's
/// name. Views stay valid until the next token is asked for.
struct TToken {
    TTokenKind Kind = TTokenKind::End;
    bool HasPosition = false;
    std::string_view Name;
    std::string_view Bytes;
    qint64 Integer = 0;
    double Float = 0;
    QString Text;
};

/// \name Limits of a stream
/// @{
/// Components, items and lists within each other. Deeper ones are an error, so that whoever reads
/// a tree may recurse into it.
inline constexpr int MaxStreamDepth = 1000;
/// Bytes of a name. A class name is shorter, since its length must not look like a prefix.
inline constexpr std::size_t MaxStreamName = 255;
inline constexpr std::size_t MaxStreamClassName = 0xEF;
/// @}

/// The error of a stream whose structure is broken; the message begins with the place.
class ZEP_CORE_EXPORT TStreamError : public TUserError {
public:
    using TUserError::TUserError;
    TStreamError(const QString& message, const TFilePlace& place)
        : TUserError(place.Text() + QStringLiteral(": ") + message, message, {.Place = place}) {}
};

/// Gives the tokens of a stream one after the other. Whatever the bytes are, it either gives tokens
/// that fit together or raises `TStreamError`; it allocates in proportion to the bytes there are.
class ZEP_CORE_EXPORT TTokenSource {
public:
    virtual ~TTokenSource() = default;

    /// The next token; `End` for ever after the outermost component.
    virtual const TToken& Next() = 0;
    /// Begins again.
    virtual void Restart() = 0;
    /// The place of the last token.
    [[nodiscard]] virtual TFilePlace Where() = 0;
    /// Bytes of the whole stream.
    [[nodiscard]] virtual std::size_t Size() const = 0;
    /// Raises `TStreamError` where something follows the outermost component.
    virtual void ExpectEnd() = 0;
};

/// Takes the tokens of one stream, in an order that fits together. Raises `Exception` for what its
/// form cannot hold and for output that cannot be written.
class ZEP_CORE_EXPORT TTokenSink {
public:
    virtual ~TTokenSink() = default;

    virtual void Write(const TToken& token) = 0;
};

/// Reads to the end of the stream. Raises `TStreamError`.
/// \return how many components stand within each other, the outermost one included
ZEP_CORE_EXPORT int CheckStructure(TTokenSource& source);

/// Passes the whole stream on. Raises `TStreamError` and what the sink raises.
ZEP_CORE_EXPORT void CopyStream(TTokenSource& source, TTokenSink& sink);

/// Whether bytes can be the name of a class, component, property or enumeration value: letters,
/// underscores, digits after the first, and dots between such names. Bytes from 0x80 on count as
/// letters.
[[nodiscard]] ZEP_CORE_EXPORT bool IsStreamName(std::string_view name);

/// Compares as streams do: without case, which only letters of ASCII have.
[[nodiscard]] ZEP_CORE_EXPORT bool SameName(std::string_view a, std::string_view b);

} // namespace ZEP
