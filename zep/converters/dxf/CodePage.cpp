#include <zep/converters/dxf/CodePage.h>

#include <zep/framework/Ascii.h>

#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <iconv.h>
#include <string>

namespace ZEP {

namespace {

constexpr const char* Unicode = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "UTF-16LE" : "UTF-16BE";
constexpr const char* DefaultPage = "CP1252";
/// By the digit of "\M+", from 1 on.
constexpr std::array MultiBytePages = {"CP932", "CP950", "CP949", "CP1361", "CP936"};
constexpr std::string_view FirstUtf8Version = "AC1021";
constexpr qsizetype CodeStart = 3; // "\U+", "\M+"

struct TNamedPage {
    std::string_view Name;
    const char* Page;
};
constexpr TNamedPage NamedPages[] = {
    {"GB2312", "CP936"},    {"GBK", "CP936"},           {"BIG5", "CP950"},
    {"KSC5601", "CP949"},   {"JOHAB", "CP1361"},        {"SHIFTJIS", "CP932"},
    {"UTF8", "UTF-8"},      {"MACINTOSH", "MACINTOSH"}, {"MACROMAN", "MACINTOSH"},
    {"ISO88591", "CP1252"},
};

/// Letters and digits alone, upper case.
std::string Simplified(std::string_view name) {
    std::string simple;
    for (const char c : name)
        if (IsDigit(c) || IsLetter(c)) simple += ToUpper(c);
    return simple;
}

/// What the converter calls the page.
std::string PageOf(std::string_view codePageName) {
    const std::string name = Simplified(codePageName);
    for (const TNamedPage& named : NamedPages)
        if (named.Name == name) return named.Page;
    const auto digits = std::find_if(name.begin(), name.end(), IsDigit);
    const std::string number(digits, name.end());
    if (name.starts_with("ISO8859")) return "ISO-8859-" + name.substr(7);
    return number.empty() ? DefaultPage : "CP" + number;
}

bool IsPlain(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(),
                        [](char c) { return c == '\\' || static_cast<signed char>(c) < 0; });
}

bool IsAscii(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(),
                        [](char c) { return static_cast<signed char>(c) < 0; });
}

/// The value of hexadecimal digits; below 0 where one is none.
int HexValue(QStringView digits) {
    int value = 0;
    for (const QChar digit : digits) {
        const char16_t c = digit.unicode();
        const char16_t letter = c | 0x20;
        const bool isNumber = c >= u'0' && c <= u'9';
        if (!isNumber && (letter < u'a' || letter > u'f')) return -1;
        value = value * 16 + (isNumber ? c - u'0' : letter - u'a' + 10);
    }
    return value;
}

} // namespace

/// The C library's converter of one code page.
class TDXFTextDecoder::TConverter {
public:
    explicit TConverter(const char* page) : m_handle(iconv_open(Unicode, page)) {}
    ~TConverter() {
        if (IsOpen()) iconv_close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(TConverter)

    [[nodiscard]] bool IsOpen() const {
        return m_handle != reinterpret_cast<iconv_t>(-1); // NOLINT: the interface of iconv
    }
    [[nodiscard]] QString Convert(std::string_view bytes);

private:
    bool Step(char** in, std::size_t* left, QString& text);

    iconv_t m_handle;
};

/// One buffer's worth; false where a byte is in the way. Without `in`, what is held back is handed
/// out.
bool TDXFTextDecoder::TConverter::Step(char** in, std::size_t* left, QString& text) {
    std::array<char16_t, 256> buffer; // NOLINT: filled by the converter
    char* out = reinterpret_cast<char*>(buffer.data());
    std::size_t room = sizeof buffer;
    const std::size_t result = iconv(m_handle, in, left, &out, &room);
    const bool isFull = result == static_cast<std::size_t>(-1) && errno == E2BIG;
    text += QStringView(buffer.data(), static_cast<qsizetype>((sizeof buffer - room) / 2));
    return isFull || result != static_cast<std::size_t>(-1);
}

QString TDXFTextDecoder::TConverter::Convert(std::string_view bytes) {
    if (!IsOpen()) return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QString text;
    iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
    char* in = const_cast<char*>(bytes.data()); // NOLINT: the interface of iconv; only read
    std::size_t left = bytes.size();
    while (left > 0) {
        if (Step(&in, &left, text)) continue;
        text += QChar(QChar::ReplacementCharacter);
        ++in;
        --left;
    }
    Step(nullptr, nullptr, text);
    return text;
}

TDXFTextDecoder::TDXFTextDecoder(std::string_view codePageName, std::string_view acadVersion) {
    const std::string page = PageOf(codePageName);
    m_page = std::make_unique<TConverter>(page.c_str());
    if (!m_page->IsOpen()) m_page = std::make_unique<TConverter>(DefaultPage);
    const bool isDouble =
        std::find(MultiBytePages.begin(), MultiBytePages.end(), page) != MultiBytePages.end();
    m_pageFirst = isDouble && acadVersion < FirstUtf8Version;
}

TDXFTextDecoder::~TDXFTextDecoder() = default;
TDXFTextDecoder::TDXFTextDecoder(TDXFTextDecoder&&) noexcept = default;
TDXFTextDecoder& TDXFTextDecoder::operator=(TDXFTextDecoder&&) noexcept = default;

QString TDXFTextDecoder::Decode(std::string_view bytes) const {
    if (IsPlain(bytes))
        return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QString text = Characters(bytes);
    ReplaceCodes(text);
    return text;
}

QString TDXFTextDecoder::Characters(std::string_view bytes) const {
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    if (IsAscii(bytes)) return QString::fromLatin1(view);
    if (m_pageFirst) return m_page->Convert(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(view);
    return utf8.hasError() ? m_page->Convert(bytes) : text;
}

void TDXFTextDecoder::ReplaceCodes(QString& text) const {
    qsizetype from = text.indexOf(QLatin1Char('\\'));
    if (from < 0) return;
    QString result;
    qsizetype done = 0;
    for (; from >= 0; from = text.indexOf(QLatin1Char('\\'), from)) {
        const QStringView rest = QStringView(text).mid(from++);
        const bool isUnicode = rest.startsWith(QLatin1String("\\U+"), Qt::CaseInsensitive);
        const bool isMultiByte = rest.startsWith(QLatin1String("\\M+"), Qt::CaseInsensitive);
        const qsizetype length = CodeStart + (isUnicode ? 4 : 5);
        if ((!isUnicode && !isMultiByte) || rest.size() < length) continue;
        const QStringView code = rest.mid(CodeStart, length - CodeStart);
        const int value = isUnicode ? HexValue(code) : 0;
        if (value < 0) continue;
        const QString character = isUnicode ? QString(QChar(value)) : MultiByteCode(code);
        if (character.isEmpty()) continue;
        result += QStringView(text).mid(done, from - 1 - done);
        result += character;
        done = from = from - 1 + length;
    }
    if (done == 0) return;
    result += QStringView(text).mid(done);
    text = result;
}

QString TDXFTextDecoder::MultiByteCode(QStringView code) const {
    const auto index = static_cast<std::size_t>(code.front().unicode() - u'1');
    const int value = HexValue(code.mid(1));
    if (index >= m_multiByte.size() || value < 0) return {};
    if (!m_multiByte[index])
        m_multiByte[index] = std::make_unique<TConverter>(MultiBytePages[index]);
    const std::array bytes = {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
    return m_multiByte[index]->Convert({bytes.data(), bytes.size()});
}

} // namespace ZEP
