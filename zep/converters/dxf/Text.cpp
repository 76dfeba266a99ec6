#include <zep/converters/dxf/Text.h>

#include <zep/converters/dxf/Palette.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr QChar Percent = u'%';
constexpr qsizetype MostDigits = 3;

struct TSign {
    char16_t Code;
    char16_t Sign; // 0: begins or ends a line
    TDXFRule Rule = drNone;
};
constexpr TSign Signs[] = {{u'c', u'\u00D8'},  {u'd', u'\u00B0'}, {u'p', u'\u00B1'},   {u'%', u'%'},
                           {u'u', 0, drUnder}, {u'o', 0, drOver}, {u'k', 0, drThrough}};

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Appends what the code at the start of `rest` ("%%...") stands for, or begins or ends a line; the
/// code's length, 0 for none.
qsizetype TakePercentCode(QStringView rest, QString& text, int& rules) {
    if (rest.size() < 3 || rest[0] != Percent || rest[1] != Percent) return 0;
    for (const TSign& sign : Signs) {
        if (rest[2].toLower() != QChar(sign.Code)) continue;
        if (sign.Sign != 0) text += QChar(sign.Sign);
        rules ^= sign.Rule;
        return 3;
    }
    qsizetype digits = 0;
    while (digits < MostDigits && 2 + digits < rest.size() && IsAsciiDigit(rest[2 + digits]))
        ++digits;
    if (digits == 0) return 0;
    text += QChar(rest.mid(2, digits).toUShort());
    return 2 + digits;
}

/// Goes through a text with inline codes once.
class TInlineText {
public:
    TInlineText(const QString& text, double height, const TDXFTextLook& look)
        : m_rest(text), m_height(height), m_look(look) {}

    [[nodiscard]] std::vector<TDXFTextLine> Lines();

private:
    void Step();
    void TakeCode();
    void TakeControl();
    void TakeStack();
    void TakeParameter();
    void Change(QChar code, QStringView parameter);
    void Append(const QString& text);
    void Take(qsizetype length, QChar character) {
        Append(character);
        m_rest = m_rest.mid(length);
    }
    void Skip(qsizetype length) { m_rest = m_rest.mid(length); }
    void EndLine(qsizetype length) {
        m_lines.push_back(std::move(m_line));
        m_line.clear();
        Skip(length);
    }
    void SetRule(TDXFRule rule, bool isOn) {
        m_look.Rules = isOn ? m_look.Rules | rule : m_look.Rules & ~rule;
        Skip(2);
    }
    void BeginGroup() {
        m_outer.push_back(m_look);
        Skip(1);
    }
    void EndGroup();

    QStringView m_rest;
    double m_height;
    TDXFTextLook m_look;
    std::vector<TDXFTextLook> m_outer; // of the groups around
    TDXFTextLine m_line;
    std::vector<TDXFTextLine> m_lines;
    bool m_hasSemicolon = true; // in the rest, as far as is known
};

std::vector<TDXFTextLine> TInlineText::Lines() {
    while (!m_rest.isEmpty()) Step();
    m_lines.push_back(std::move(m_line));
    return std::move(m_lines);
}

void TInlineText::Append(const QString& text) {
    if (text.isEmpty()) return;
    if (m_line.empty() || m_line.back().IsStack() || m_line.back().Look != m_look)
        m_line.push_back({{}, m_look});
    m_line.back().Text += text;
}

void TInlineText::EndGroup() {
    if (!m_outer.empty()) {
        m_look = m_outer.back();
        m_outer.pop_back();
    }
    Skip(1);
}

void TInlineText::Step() {
    const QChar c = m_rest.front();
    if (c == u'\\' && m_rest.size() > 1) return TakeCode();
    if (c == u'^' && m_rest.size() > 1) return TakeControl();
    if (c == u'{') return BeginGroup();
    if (c == u'}') return EndGroup();
    if (c == u'\n') return EndLine(1);
    if (c == u'\r') return Skip(1);
    QString sign;
    const qsizetype length = TakePercentCode(m_rest, sign, m_look.Rules);
    Append(sign);
    if (length > 0) return Skip(length);
    Take(1, c);
}

void TInlineText::TakeCode() {
    const QChar code = m_rest[1];
    switch (code.unicode()) {
    case u'P':
    case u'N':
    case u'X':
        return EndLine(2);
    case u'~':
        return Take(2, QChar::Nbsp);
    case u'\\':
    case u'{':
    case u'}':
        return Take(2, code);
    case u'L':
    case u'l':
        return SetRule(drUnder, code == u'L');
    case u'O':
    case u'o':
        return SetRule(drOver, code == u'O');
    case u'K':
    case u'k':
        return SetRule(drThrough, code == u'K');
    case u'S':
        return TakeStack();
    default:
        TakeParameter();
    }
}

/// "\fArial|b0;" and the like: what ends with a semicolon.
void TInlineText::TakeParameter() {
    const bool isCode = QStringView(u"ACcfFHQTWp").contains(m_rest[1]);
    const qsizetype end = isCode && m_hasSemicolon ? m_rest.indexOf(u';') : -1;
    if (end >= 0) {
        Change(m_rest[1], m_rest.mid(2, end - 2));
        return Skip(end + 1);
    }
    m_hasSemicolon = m_hasSemicolon && !isCode;
    Take(1, m_rest.front());
}

/// A number that makes no letters of a size that can be seen is passed over.
void TInlineText::Change(QChar code, QStringView parameter) {
    constexpr double least = 1e-3, most = 1e3, steepest = 85;
    constexpr int lastNumber = 255;
    const bool isTimes = parameter.endsWith(u'x', Qt::CaseInsensitive);
    if (isTimes) parameter.chop(1);
    bool isNumber = false;
    double value = parameter.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value)) return;
    const bool isSize = value > 0;
    if (code == u'A') m_look.Alignment = std::clamp(static_cast<int>(value), 0, 2);
    if (code == u'H') value *= isTimes ? m_look.Height : 1 / m_height;
    if (code == u'H' && isSize) m_look.Height = std::clamp(value, least, most);
    if (code == u'W' && isSize) m_look.Width = std::clamp(value, least, most);
    if (code == u'Q') m_look.Oblique = std::clamp(value, -steepest, steepest);
    if (code == u'C' && (value == 0 || value > lastNumber)) m_look.Color.reset();
    if (code == u'C' && isSize && value <= lastNumber)
        m_look.Color = DXFPaletteColor(static_cast<int>(value));
    if (code == u'c' && value >= 0 && value <= 0xFFFFFF)
        m_look.Color = TColor{static_cast<std::uint32_t>(value)};
}

/// "\S1/2;", with "#" for a slanted line and "^" for none; either part may be empty.
void TInlineText::TakeStack() {
    QString upper, lower;
    QString* part = &upper;
    QChar bar = u'^';
    qsizetype at = 2;
    for (; at < m_rest.size() && m_rest[at] != u';'; ++at) {
        const QChar c = m_rest[at];
        if (c == u'\\' && at + 1 < m_rest.size()) {
            *part += m_rest[++at];
        } else if (part == &upper && (c == u'/' || c == u'#' || c == u'^')) {
            part = &lower;
            bar = c;
        } else {
            *part += c;
        }
    }
    upper = upper.trimmed();
    lower = lower.trimmed();
    if (bar == u'#')
        Append(upper + u'/' + lower);
    else if (part == &upper)
        Append(upper);
    else if (!upper.isEmpty() || !lower.isEmpty())
        m_line.push_back({upper, m_look, lower, bar});
    Skip(std::min(at + 1, m_rest.size()));
}

/// Control characters are written as "^J".
void TInlineText::TakeControl() {
    switch (m_rest[1].unicode()) {
    case u'J':
        return EndLine(2);
    case u'M':
        return Skip(2);
    case u'I':
        return Take(2, QChar::Tabulation);
    case u' ':
        return Take(2, m_rest.front());
    default:
        Take(1, m_rest.front());
    }
}

} // namespace

QString PlainDXFText(const QString& text, std::vector<TDXFTextRules>* rules) {
    if (!text.contains(QLatin1String("%%"))) return text;
    QString plain;
    TDXFTextRules now;
    const auto end = [&](int next) {
        now.To = plain.size();
        if (rules && now.Rules != drNone && now.To > now.From) rules->push_back(now);
        now = {next, plain.size(), 0};
    };
    for (QStringView rest = text; !rest.isEmpty();) {
        int next = now.Rules;
        const qsizetype length = TakePercentCode(rest, plain, next);
        if (next != now.Rules) end(next);
        if (length == 0) plain += rest.front();
        rest = rest.mid(std::max<qsizetype>(length, 1));
    }
    end(drNone);
    return plain;
}

std::vector<TDXFTextLine> DXFTextLines(const QString& text, double height,
                                       const TDXFTextLook& look) {
    return TInlineText(text, height, look).Lines();
}

} // namespace ZEP
