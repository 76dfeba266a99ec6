#include <zep/converters/dxf/writer/Tables.h>

#include <zep/converters/dxf/Palette.h>
#include <zep/converters/dxf/writer/Pairs.h>
#include <zep/objects/DashPattern.h>
#include <zep/scene/Object.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace ZEP {

namespace {

constexpr qsizetype LongestName = 200; // with room for a number behind it
constexpr double Proportional = 1e-12;
constexpr QStringView Forbidden = u"<>/\\\":;?*|,=`";

constexpr QChar PlainLayer = u'0'; ///< that all drawings have

/// Without what names may not have.
QString CleanName(const QString& name, const QString& otherwise) {
    QString clean = name.left(LongestName);
    for (QChar& c : clean)
        if (c.unicode() < ' ' || Forbidden.contains(c)) c = u'_';
    clean = clean.trimmed();
    return clean.isEmpty() ? otherwise : clean;
}

/// How many times as long the parts are; 0 where the patterns differ in more.
double TimesAsLong(std::span<const double> parts, std::span<const double> other) {
    if (parts.size() != other.size()) return 0;
    const auto longest = std::ranges::max_element(
        other, [](double a, double b) { return std::abs(a) < std::abs(b); });
    const double times = parts[static_cast<std::size_t>(longest - other.begin())] / *longest;
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (!(std::abs(parts[i] - times * other[i]) <= Proportional * std::abs(parts[i]))) return 0;
    return times > 0 ? times : 0;
}

/// Of patterns that may differ in length alone.
QString FormOf(const TZEPDashPattern& pattern) {
    constexpr int digits = 9;
    QString form = pattern.Name().toCaseFolded();
    for (const double part : pattern.Parts())
        form += u' ' + QString::number(part / pattern.Period(), 'g', digits);
    return form;
}

constexpr int DarkestGrey = 250;

} // namespace

QString TDXFFreeNames::Take(const QString& name, const QString& otherwise) {
    const QString clean = CleanName(name, otherwise);
    QString candidate = clean;
    while (m_next.contains(candidate.toCaseFolded()))
        candidate = QStringLiteral("%1_%2").arg(clean).arg(m_next[clean.toCaseFolded()]++);
    m_next.insert(candidate.toCaseFolded(), 2);
    return candidate;
}

int DXFPaletteNumber(TColor color) {
    static const std::array<TColor, 256> palette = [] {
        std::array<TColor, 256> colors{};
        for (std::size_t i = 0; i < colors.size(); ++i)
            colors[i] = DXFPaletteColor(static_cast<int>(i));
        return colors;
    }();
    if (color == clBlack) return DarkestGrey; // no number is black
    const auto distance = [&](TColor other) {
        int sum = 0;
        for (const unsigned shift : {0U, 8U, 16U}) {
            const int difference = static_cast<int>(ColorToRGB(color) >> shift & 0xFFU) -
                                   static_cast<int>(ColorToRGB(other) >> shift & 0xFFU);
            sum += difference * difference;
        }
        return sum;
    };
    const auto nearest = std::ranges::min_element(palette.begin() + 1, palette.end(), {}, distance);
    return static_cast<int>(nearest - palette.begin());
}

void WriteDXFColor(TDXFPairs& pairs, TColor color, bool isOff) {
    const int number = DXFPaletteNumber(color);
    pairs.Integer(62, isOff ? -number : number);
    const std::uint32_t rgb = ColorToRGB(color);
    if (rgb != ColorToRGB(DXFPaletteColor(number)))
        pairs.Integer(420, (rgb & 0xFFU) << 16U | (rgb & 0xFF00U) | rgb >> 16U);
}

std::size_t TDXFWrittenTables::NumberOf(const QString& ident) {
    const QString folded = ident.trimmed().toCaseFolded();
    const auto known = m_byIdent.constFind(folded);
    if (known != m_byIdent.cend()) return *known;
    m_layers.push_back({m_layerNames.Take(ident, QString(PlainLayer))});
    return *m_byIdent.insert(folded, m_layers.size() - 1);
}

const TDXFWrittenLayer& TDXFWrittenTables::LayerOf(const TZEPObject* actor, bool visible) {
    const auto place = m_byActor.constFind(actor);
    if (place != m_byActor.cend()) return m_layers[*place];
    const std::size_t count = m_layers.size();
    const QString ident = actor ? actor->Ident() : QString();
    const std::size_t number = NumberOf(ident.isEmpty() ? QString(PlainLayer) : ident);
    m_byActor.insert(actor, number);
    TDXFWrittenLayer& layer = m_layers[number];
    if (actor && number == count) layer.Color = actor->GetColor();
    if (actor && number == count) layer.Visible = visible;
    return layer;
}

TDXFUsedLineType TDXFWrittenTables::LineTypeOf(const TZEPDashPattern& pattern, double scale) {
    const QString form = FormOf(pattern);
    const auto known = m_byForm.constFind(form);
    if (known != m_byForm.cend())
        if (const double times = TimesAsLong(pattern.Parts(), m_lineTypes[*known].Parts); times > 0)
            return {m_lineTypes[*known].Name, times * scale};
    m_byForm.insert(form, m_lineTypes.size());
    m_lineTypes.push_back(
        {m_lineTypeNames.Take(pattern.Name(), QStringLiteral("Dashes")), pattern.Parts()});
    return {m_lineTypes.back().Name, scale};
}

quint64 TDXFWrittenTables::WriteLineTypes(TDXFPairs& pairs, quint64 first) const {
    pairs.Fixed("0 TABLE|2 LTYPE|5 2|330 0|100 AcDbSymbolTable|");
    pairs.Integer(70, static_cast<qint64>(m_lineTypes.size()) + 3);
    constexpr std::pair<std::string_view, int> plain[] = {
        {"ByBlock", 0x14}, {"ByLayer", 0x15}, {"Continuous", 0x16}};
    const auto begin = [&](quint64 handle) {
        pairs.Text(0, "LTYPE");
        pairs.Handle(5, handle);
        pairs.Fixed("330 2|100 AcDbSymbolTableRecord|100 AcDbLinetypeTableRecord|");
    };
    for (const auto& [name, handle] : plain) {
        begin(static_cast<quint64>(handle));
        pairs.Text(2, name);
        pairs.Fixed("70 0|3 |72 65|73 0|40 0.0|");
    }
    for (const TLineType& type : m_lineTypes) {
        begin(first++);
        pairs.Words(2, type.Name);
        pairs.Fixed("70 0|3 |72 65|");
        pairs.Integer(73, static_cast<qint64>(type.Parts.size()));
        double length = 0;
        for (const double part : type.Parts) length += std::abs(part);
        pairs.Number(40, length);
        for (const double part : type.Parts) {
            pairs.Number(49, part);
            pairs.Integer(74, 0);
        }
    }
    pairs.Text(0, "ENDTAB");
    return first;
}

quint64 TDXFWrittenTables::WriteLayers(TDXFPairs& pairs, quint64 first) const {
    pairs.Fixed("0 TABLE|2 LAYER|5 3|330 0|100 AcDbSymbolTable|");
    pairs.Integer(70, static_cast<qint64>(m_layers.size()));
    for (const TDXFWrittenLayer& layer : m_layers) {
        pairs.Text(0, "LAYER");
        pairs.Handle(5, first++);
        pairs.Fixed("330 3|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|");
        pairs.Words(2, layer.Name);
        pairs.Integer(70, 0);
        WriteDXFColor(pairs, layer.Color, !layer.Visible);
        pairs.Fixed("6 Continuous|370 -3|390 13|");
    }
    pairs.Text(0, "ENDTAB");
    return first;
}

} // namespace ZEP
