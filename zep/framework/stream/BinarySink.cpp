#include <zep/framework/stream/BinarySink.h>

#include <zep/framework/stream/ExtendedFloat.h>
#include <zep/framework/stream/Tags.h>

#include <QtEndian>

#include <limits>

namespace ZEP {

namespace {

bool IsAscii(const QString& text) {
    for (const QChar c : text)
        if (c.unicode() >= 0x80) return false;
    return true;
}

std::string_view View(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace

void TBinarySink::Write(const TToken& token) {
    switch (token.Kind) {
    case TTokenKind::BeginComponent:
        return BeginComponent(token);
    case TTokenKind::EndComponent:
        return EndComponent();
    case TTokenKind::BeginItem:
        return BeginItem(token);
    case TTokenKind::EndList:
    case TTokenKind::EndCollection:
    case TTokenKind::EndItem:
        return WriteTag(0);
    case TTokenKind::EndSet:
        m_inSet = false;
        return WriteTag(0);
    case TTokenKind::End:
        return;
    default:
        if (!token.Name.empty()) WriteShort(token.Name);
        WriteValue(token);
    }
}

// --- structure ---------------------------------------------------------------------------------

void TBinarySink::BeginComponent(const TToken& token) {
    if (m_hasChildren.empty())
        m_output.Append(StreamSignature);
    else
        EndProperties();
    if (token.Bytes.size() > MaxStreamClassName)
        throw Exception(
            QStringLiteral("A class name of %1 bytes cannot be stored").arg(token.Bytes.size()));
    WriteShort(token.Bytes);
    WriteShort(token.Name);
    m_hasChildren.push_back(false);
}

void TBinarySink::EndComponent() {
    EndProperties();
    m_hasChildren.pop_back();
    WriteTag(0);
    if (m_hasChildren.empty()) m_output.Flush();
}

void TBinarySink::EndProperties() {
    if (m_hasChildren.back()) return;
    m_hasChildren.back() = true;
    WriteTag(0);
}

void TBinarySink::BeginItem(const TToken& token) {
    if (token.HasPosition) WriteInteger(token.Integer);
    WriteTag(ListTag);
}

// --- values ------------------------------------------------------------------------------------

void TBinarySink::WriteValue(const TToken& token) {
    switch (token.Kind) {
    case TTokenKind::Null:
        return WriteTag(NullTag);
    case TTokenKind::Nil:
        return WriteTag(NilTag);
    case TTokenKind::False:
        return WriteTag(FalseTag);
    case TTokenKind::True:
        return WriteTag(TrueTag);
    case TTokenKind::Integer:
        return WriteInteger(token.Integer);
    case TTokenKind::Float:
        return WriteFloat(token.Float);
    case TTokenKind::Identifier:
        if (!m_inSet) WriteTag(IdentifierTag);
        return WriteShort(token.Bytes);
    case TTokenKind::String:
        return WriteString(token.Text);
    case TTokenKind::Binary:
        return WriteLong(BinaryTag, token.Bytes, token.Bytes.size());
    case TTokenKind::BeginSet:
        m_inSet = true;
        return WriteTag(SetTag);
    case TTokenKind::BeginList:
        return WriteTag(ListTag);
    default:
        return WriteTag(CollectionTag);
    }
}

void TBinarySink::WriteInteger(qint64 value) {
    const auto fits = [value](auto limit) {
        using T = decltype(limit);
        return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
    };
    if (fits(qint8())) {
        WriteTag(Int8Tag);
        WriteNumber(static_cast<qint8>(value));
    } else if (fits(qint16())) {
        WriteTag(Int16Tag);
        WriteNumber(static_cast<qint16>(value));
    } else if (fits(qint32())) {
        WriteTag(Int32Tag);
        WriteNumber(static_cast<qint32>(value));
    } else {
        WriteTag(Int64Tag);
        WriteNumber(value);
    }
}

void TBinarySink::WriteFloat(double value) {
    const TExtendedFloat bytes = ToExtended(value);
    WriteTag(ExtendedTag);
    m_output.Append({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

void TBinarySink::WriteString(const QString& text) {
    if (!text.isValidUtf16()) { // half a pair of surrogates, which UTF-8 cannot hold
        QByteArray wide(2 * text.size(), Qt::Uninitialized);
        qToLittleEndian<char16_t>(text.utf16(), text.size(), wide.data());
        return WriteLong(WideStringTag, View(wide), static_cast<std::size_t>(text.size()));
    }
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    if (!IsAscii(text)) return WriteLong(UTF8StringTag, View(bytes), size);
    if (size > 255) return WriteLong(LongStringTag, View(bytes), size);
    WriteTag(StringTag);
    WriteShort(View(bytes));
}

// --- bytes -------------------------------------------------------------------------------------

void TBinarySink::WriteShort(std::string_view bytes) {
    if (bytes.size() > MaxStreamName)
        throw Exception(QStringLiteral("A name of %1 bytes cannot be stored").arg(bytes.size()));
    WriteTag(static_cast<unsigned char>(bytes.size()));
    m_output.Append(bytes);
}

void TBinarySink::WriteLong(unsigned char tag, std::string_view bytes, std::size_t count) {
    if (count > std::numeric_limits<quint32>::max())
        throw Exception(QStringLiteral("A value of %1 bytes cannot be stored").arg(bytes.size()));
    WriteTag(tag);
    WriteNumber(static_cast<quint32>(count));
    m_output.Append(bytes);
}

template <class T>
void TBinarySink::WriteNumber(T value) {
    char bytes[sizeof(T)];
    qToLittleEndian(value, bytes);
    m_output.Append({bytes, sizeof bytes});
}

} // namespace ZEP
