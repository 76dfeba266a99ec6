#include <zep/converters/dxf/writer/Pairs.h>

#include <zep/framework/Exception.h>

#include <QIODevice>

#include <algorithm>
#include <charconv>

namespace ZEP {

namespace {

constexpr std::size_t LongestNumber = 32;

template <class T, class... Form>
std::string_view Digits(std::array<char, LongestNumber>& digits, T value, Form... form) {
    const char* end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, form...).ptr;
    return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

std::string EncodedText(const QString& text) {
    std::string encoded;
    for (const QChar c : text) {
        if (c.unicode() < ' ' || c.unicode() == 0x7F)
            encoded += ' ';
        else if (c.unicode() < 0x80)
            encoded += static_cast<char>(c.unicode());
        else
            encoded +=
                "\\U+" +
                QByteArray::number(c.unicode(), 16).toUpper().rightJustified(4, '0').toStdString();
    }
    return encoded;
}

} // namespace

void TDXFPairs::Append(int code, std::string_view value) {
    if (!m_device) return;
    std::array<char, LongestNumber> digits;
    m_buffer.append(Digits(digits, code)).append("\n").append(value).append("\n");
    if (m_buffer.size() >= BufferSize) Flush();
}

void TDXFPairs::Flush() {
    if (!m_device || m_buffer.empty()) return;
    const auto size = static_cast<qint64>(m_buffer.size());
    if (m_device->write(m_buffer.data(), size) != size)
        throw Exception(
            QStringLiteral("Can't write the drawing: %1.").arg(m_device->errorString()));
    m_buffer.clear();
}

void TDXFPairs::Text(int code, std::string_view value) {
    Append(code, value);
}

void TDXFPairs::Words(int code, const QString& value) {
    if (m_device) Append(code, EncodedText(value));
}

void TDXFPairs::Integer(int code, qint64 value) {
    if (!m_device) return;
    std::array<char, LongestNumber> digits;
    Append(code, Digits(digits, value));
}

// A whole number gets a point, by which some readers tell it from an integer.
void TDXFPairs::Number(int code, double value) {
    if (!m_device) return;
    std::array<char, LongestNumber> digits;
    const std::string_view shortest = Digits(digits, value);
    if (shortest.find_first_of(".e") != std::string_view::npos) return Append(code, shortest);
    Append(code, std::string(shortest) + ".0");
}

void TDXFPairs::Handle(int code, quint64 handle) {
    if (!m_device) return;
    std::array<char, LongestNumber> digits;
    std::string text(Digits(digits, handle, 16));
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    Append(code, text);
}

void TDXFPairs::FlatPoint(int code, const TGLArrayd3& point) {
    Number(code, point[0]);
    Number(code + 10, point[1]);
}

void TDXFPairs::Point(int code, const TGLArrayd3& point) {
    FlatPoint(code, point);
    Number(code + 20, point[2]);
}

void TDXFPairs::Fixed(std::string_view pairs) {
    while (!pairs.empty()) {
        const std::string_view pair = pairs.substr(0, pairs.find('|'));
        pairs.remove_prefix(pair.size() + 1);
        const std::size_t blank = pair.find(' ');
        int code = 0;
        std::from_chars(pair.data(), pair.data() + blank, code);
        Append(code, pair.substr(blank + 1));
    }
}

} // namespace ZEP
