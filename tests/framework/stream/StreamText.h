#pragma once

#include <zep/framework/stream/StreamFile.h>

#include <QBuffer>

namespace ZEP {

inline std::string Joined(const QByteArray& bytes) {
    return bytes.toStdString();
}

/// A stream in the other form, or the error as text.
inline std::string Converted(std::string_view data, TStreamForm to) {
    const auto form = StreamFormOf(data);
    const auto source = MakeSource(form.value_or(TStreamForm::Binary), data);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    try {
        CopyStream(*source, *MakeSink(to, buffer));
    } catch (const Exception& error) {
        return error.what();
    }
    return Joined(buffer.data());
}

inline std::string ToText(std::string_view data) {
    return Converted(data, TStreamForm::Text);
}

inline std::string ToBinary(std::string_view data) {
    return Converted(data, TStreamForm::Binary);
}

inline std::string Times(const std::string& piece, int count) {
    return QByteArray::fromStdString(piece).repeated(count).toStdString();
}

/// A short string of the binary form.
inline std::string Short(std::string_view text) {
    return static_cast<char>(text.size()) + std::string(text);
}

/// "05 00 FF" as bytes.
inline std::string Hex(const char* digits) {
    return Joined(QByteArray::fromHex(digits));
}

/// A stream of one component with one property.
inline std::string WithValue(const std::string& value) {
    return "TPF0" + Short("T") + Short("") + Short("P") + value + std::string(2, '\0');
}

/// The value as it stands in the text form of `WithValue`; the error where there is one.
inline std::string TextOfValue(const std::string& value) {
    const std::string text = ToText(WithValue(value));
    constexpr std::string_view head = "object T\n  P = ";
    constexpr std::string_view tail = "\nend\n";
    if (!text.starts_with(head) || !text.ends_with(tail)) return text;
    return text.substr(head.size(), text.size() - head.size() - tail.size());
}

/// The bytes of a value that is written as this text; the error where there is one.
inline std::string BytesOfValue(const std::string& text) {
    const std::string bytes = ToBinary("object T P = " + text + " end");
    const std::string head = "TPF0" + Short("T") + Short("") + Short("P");
    if (!bytes.starts_with(head)) return bytes;
    return bytes.substr(head.size(), bytes.size() - head.size() - 2);
}

} // namespace ZEP
