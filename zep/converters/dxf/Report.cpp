#include <zep/converters/dxf/Report.h>

#include <zep/converters/ReadReport.h>
#include <zep/converters/dxf/CodePage.h>

#include <algorithm>

namespace ZEP {

namespace {

constexpr std::size_t MaxKinds = 200;
constexpr std::string_view FurtherKinds = "entities of further kinds";

/// Longer than the name of any kind: what a broken file holds need not fill the window.
constexpr std::size_t MaxShownKind = 40;

QString KindText(const QString& name, TDXFReport::TReason reason) {
    switch (reason) {
    case TDXFReport::TReason::NoLayer:
        return name + QStringLiteral(" on an undeclared layer");
    case TDXFReport::TReason::NoCorners:
        return name + QStringLiteral(" faces of fewer than three corners");
    case TDXFReport::TReason::PaperSpace:
        return name + QStringLiteral(" in paper space");
    case TDXFReport::TReason::NoPoints:
        return name + QStringLiteral(" of too few points");
    case TDXFReport::TReason::NoBlock:
        return name + QStringLiteral(" of a block that is not there");
    case TDXFReport::TReason::InItself:
        return name + QStringLiteral(" of a block in itself");
    case TDXFReport::TReason::TooDeep:
        return name + QStringLiteral(" of blocks nested too deep");
    case TDXFReport::TReason::TooMany:
        return name + QStringLiteral(" beyond the limit of objects");
    case TDXFReport::TReason::TooFine:
        return name + QStringLiteral(" of a pattern that is too fine (drawn coarser or solid)");
    case TDXFReport::TReason::LineTexts:
        return name + QStringLiteral(" of a line type with texts (they are left out)");
    case TDXFReport::TReason::TooWide:
        return name + QStringLiteral(" of too many points for its width (drawn thin)");
    case TDXFReport::TReason::TooTangled:
        return name + QStringLiteral(" of too many islands or crossings");
    case TDXFReport::TReason::Beside:
        return name + QStringLiteral(" beside all that is drawn");
    case TDXFReport::TReason::NotSmooth:
        return name + QStringLiteral(" of a subdivision level (drawn without it)");
    case TDXFReport::TReason::NotClipped:
        return name + QStringLiteral(" clipped by a boundary (shown whole)");
    case TDXFReport::TReason::NotVertical:
        return name + QStringLiteral(" of a vertical style (its letters stand side by side)");
    case TDXFReport::TReason::NoColumns:
        return name + QStringLiteral(" in columns (shown as one)");
    case TDXFReport::TReason::NoBackground:
        return name + QStringLiteral(" with a background (without it)");
    case TDXFReport::TReason::NoFile:
        return name + QStringLiteral(" of a file that is not beside the drawing");
    case TDXFReport::TReason::NoPicture:
        return name + QStringLiteral(" of a file that is no picture");
    case TDXFReport::TReason::NoDrawing:
        return name + QStringLiteral(" of a file that is no ASCII DXF drawing");
    case TDXFReport::TReason::CutOff:
        return name + QStringLiteral(" sections that are cut off (the rest is missing)");
    case TDXFReport::TReason::NotDrawn:
        break;
    }
    return name.isEmpty() ? QStringLiteral("entities without a name") : name;
}

} // namespace

void TDXFReport::Add(const TDXFReport& other, qint64 line) {
    for (const TCount& count : other.m_counts) Add(count.Kind, count.Reason, line, count.Count);
}

void TDXFReport::Add(std::string_view kind, TReason reason, qint64 line, qint64 count) {
    if (m_counts.size() >= MaxKinds && !m_indexes[static_cast<std::size_t>(reason)].contains(kind))
        kind = FurtherKinds;
    const auto [place, isNew] =
        m_indexes[static_cast<std::size_t>(reason)].try_emplace(kind, m_counts.size());
    if (isNew) m_counts.push_back({kind, reason, 0, line});
    m_counts[place->second].Count += count;
}

void TDXFReport::MoveTo(TReadReport& report, const TDXFTextDecoder& text) {
    std::ranges::stable_sort(m_counts, {}, &TCount::FirstLine);
    for (const TCount& count : m_counts) {
        const QString name = text.Decode(count.Kind.substr(0, MaxShownKind)).simplified();
        report.Add(KindText(name, count.Reason), count.FirstLine, count.Count);
    }
    m_counts.clear();
    for (auto& indexes : m_indexes) indexes.clear();
}

} // namespace ZEP
