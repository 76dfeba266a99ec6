#include <zep/framework/stream/BinarySource.h>

#include <zep/framework/stream/ExtendedFloat.h>
#include <zep/framework/stream/Tags.h>

#include <QStringDecoder>
#include <QtEndian>

#include <algorithm>

namespace ZEP {

namespace {

QString FromBytes(std::string_view bytes) {
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(view);
    return decoder.hasError() ? QString::fromLatin1(view) : text;
}

QString FromWide(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size() / 2), Qt::Uninitialized);
    qFromLittleEndian<char16_t>(bytes.data(), text.size(), text.data());
    return text;
}

} // namespace

const TToken& TBinarySource::Next() {
    m_start = m_next;
    m_token.Name = {};
    if (m_parts.empty()) {
        if (m_started) return Emit(TTokenKind::End);
        m_started = true;
        if (!m_data.starts_with(StreamSignature))
            Fail(QStringLiteral("expected a component stream, which begins with \"TPF0\""));
        m_next = StreamSignature.size();
        return ReadComponent();
    }
    return Step();
}

const TToken& TBinarySource::Step() {
    switch (m_parts.back()) {
    case TPart::Properties:
        return ReadProperty();
    case TPart::Item:
        return ReadProperty();
    case TPart::Children:
        return ReadComponent();
    case TPart::Set:
        return ReadMember();
    case TPart::Collection:
        return ReadItem();
    case TPart::List:
        break;
    }
    const unsigned char tag = ReadByte("a value");
    return tag == NullTag ? EndPart(TTokenKind::EndList) : ReadValue(tag);
}

void TBinarySource::Restart() {
    m_next = m_start = 0;
    m_started = false;
    m_parts.clear();
}

TFilePlace TBinarySource::Where() {
    return {.Offset = static_cast<qint64>(m_start)};
}

void TBinarySource::ExpectEnd() {
    m_start = m_next;
    if (m_next < m_data.size())
        Fail(QStringLiteral("expected the end of the stream, but %1 bytes follow")
                 .arg(m_data.size() - m_next));
}

// --- structure ---------------------------------------------------------------------------------

const TToken& TBinarySource::Emit(TTokenKind kind) {
    m_token.Kind = kind;
    return m_token;
}

const TToken& TBinarySource::Begin(TTokenKind kind, TPart part) {
    if (m_parts.size() >= MaxStreamDepth)
        Fail(QStringLiteral("nested deeper than %1 levels").arg(MaxStreamDepth));
    m_parts.push_back(part);
    return Emit(kind);
}

const TToken& TBinarySource::EndPart(TTokenKind kind) {
    m_parts.pop_back();
    return Emit(kind);
}

const TToken& TBinarySource::ReadComponent() {
    const unsigned char first = ReadByte("a component");
    if (first == 0 && !m_parts.empty()) return EndPart(TTokenKind::EndComponent);
    if ((first & PrefixMask) != PrefixMark)
        --m_next;
    else if (first & PrefixPosition)
        static_cast<void>(ReadInteger(ReadByte("a position")));
    m_token.Bytes = Named(ReadShort("a class name"), "a class name");
    m_token.Name = ReadShort("a component name");
    if (!m_token.Name.empty()) m_token.Name = Named(m_token.Name, "a component name");
    return Begin(TTokenKind::BeginComponent, TPart::Properties);
}

const TToken& TBinarySource::ReadProperty() {
    const std::string_view name = ReadShort("a property name");
    if (!name.empty()) {
        m_token.Name = Named(name, "a property name");
        return ReadValue(ReadByte("a value"));
    }
    if (m_parts.back() == TPart::Item) return EndPart(TTokenKind::EndItem);
    m_parts.back() = TPart::Children;
    m_start = m_next;
    return ReadComponent();
}

const TToken& TBinarySource::ReadItem() {
    unsigned char tag = ReadByte("an item");
    if (tag == NullTag) return EndPart(TTokenKind::EndCollection);
    m_token.HasPosition = tag != ListTag;
    if (m_token.HasPosition) {
        m_token.Integer = ReadInteger(tag);
        tag = ReadByte("an item");
    }
    if (tag != ListTag) Fail(QStringLiteral("expected an item, but found tag %1").arg(tag));
    return Begin(TTokenKind::BeginItem, TPart::Item);
}

const TToken& TBinarySource::ReadMember() {
    const std::string_view name = ReadShort("a member of a set");
    if (name.empty()) return EndPart(TTokenKind::EndSet);
    m_token.Bytes = Named(name, "a member of a set");
    return Emit(TTokenKind::Identifier);
}

// --- values ------------------------------------------------------------------------------------

const TToken& TBinarySource::ReadValue(unsigned char tag) {
    switch (tag) {
    case NullTag:
        return Emit(TTokenKind::Null);
    case ListTag:
        return Begin(TTokenKind::BeginList, TPart::List);
    case ExtendedTag: {
        TExtendedFloat bytes;
        std::ranges::copy(ReadBytes(bytes.size(), "a float"), bytes.begin());
        return EmitFloat(FromExtended(bytes));
    }
    case DoubleTag:
    case DateTag:
        return EmitFloat(ReadNumber<double>());
    case SingleTag:
        return EmitFloat(static_cast<double>(ReadNumber<float>()));
    case CurrencyTag:
        return EmitFloat(static_cast<double>(ReadNumber<qint64>()) / 10000);
    case StringTag:
    case LongStringTag:
    case WideStringTag:
    case UTF8StringTag:
        return ReadString(tag);
    case IdentifierTag:
        return ReadIdentifier();
    case FalseTag:
        return Emit(TTokenKind::False);
    case TrueTag:
        return Emit(TTokenKind::True);
    case BinaryTag:
        m_token.Bytes = ReadLong(1, "binary data");
        return Emit(TTokenKind::Binary);
    case SetTag:
        return Begin(TTokenKind::BeginSet, TPart::Set);
    case NilTag:
        return Emit(TTokenKind::Nil);
    case CollectionTag:
        return Begin(TTokenKind::BeginCollection, TPart::Collection);
    default:
        return EmitInteger(ReadInteger(tag));
    }
}

const TToken& TBinarySource::EmitInteger(qint64 value) {
    m_token.Integer = value;
    return Emit(TTokenKind::Integer);
}

const TToken& TBinarySource::EmitFloat(double value) {
    m_token.Float = value;
    return Emit(TTokenKind::Float);
}

const TToken& TBinarySource::ReadString(unsigned char tag) {
    if (tag == StringTag)
        m_token.Text = FromBytes(ReadShort("a string"));
    else if (tag == WideStringTag)
        m_token.Text = FromWide(ReadLong(2, "a string"));
    else
        m_token.Text = FromBytes(ReadLong(1, "a string"));
    return Emit(TTokenKind::String);
}

// The text form cannot tell these from values of their own kind, so that neither form does.
const TToken& TBinarySource::ReadIdentifier() {
    m_token.Bytes = Named(ReadShort("an identifier"), "an identifier");
    const auto is = [this](const char* word) { return SameName(m_token.Bytes, word); };
    if (is("True")) return Emit(TTokenKind::True);
    if (is("False")) return Emit(TTokenKind::False);
    if (is("nil")) return Emit(TTokenKind::Nil);
    if (is("Null") && m_parts.back() == TPart::List)
        Fail(QStringLiteral("expected a value, but a list cannot hold Null"));
    if (is("Null")) return Emit(TTokenKind::Null);
    return Emit(TTokenKind::Identifier);
}

qint64 TBinarySource::ReadInteger(unsigned char tag) {
    switch (tag) {
    case Int8Tag:
        return ReadNumber<qint8>();
    case Int16Tag:
        return ReadNumber<qint16>();
    case Int32Tag:
        return ReadNumber<qint32>();
    case Int64Tag:
        return ReadNumber<qint64>();
    default:
        Fail(QStringLiteral("no value has the tag %1").arg(tag));
    }
}

// --- bytes -------------------------------------------------------------------------------------

unsigned char TBinarySource::ReadByte(const char* what) {
    return static_cast<unsigned char>(ReadBytes(1, what).front());
}

std::string_view TBinarySource::ReadBytes(std::size_t count, const char* what) {
    const std::size_t left = m_data.size() - m_next;
    if (count > left)
        Fail(QStringLiteral("expected %1 of %2 bytes, but %3 are left")
                 .arg(QLatin1StringView(what))
                 .arg(count)
                 .arg(left));
    const std::string_view bytes = m_data.substr(m_next, count);
    m_next += count;
    return bytes;
}

std::string_view TBinarySource::ReadShort(const char* what) {
    return ReadBytes(ReadByte(what), what);
}

std::string_view TBinarySource::ReadLong(std::size_t unit, const char* what) {
    return ReadBytes(unit * ReadNumber<quint32>(), what);
}

std::string_view TBinarySource::Named(std::string_view name, const char* what) const {
    if (!IsStreamName(name))
        Fail(QStringLiteral("expected %1, but found \"%2\"")
                 .arg(QLatin1StringView(what),
                      QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))));
    return name;
}

template <class T>
T TBinarySource::ReadNumber() {
    return qFromLittleEndian<T>(ReadBytes(sizeof(T), "a number").data());
}

void TBinarySource::Fail(const QString& message) const {
    throw TStreamError(message, TFilePlace{.Offset = static_cast<qint64>(m_start)});
}

} // namespace ZEP
