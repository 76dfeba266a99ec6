#pragma once

#include <QtGlobal>

#include <array>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEP {

class TDXFTextDecoder;
class TReadReport;

/// Counts what is passed over while a drawing is read, without a string for each: the kinds are
/// views into its text. A drawing can bring up 200 kinds; further ones count as one.
class TDXFReport {
public:
    enum class TReason : unsigned char {
        NotDrawn,
        NoLayer,
        NoCorners,
        PaperSpace,
        NoPoints,
        NoBlock,
        InItself,
        TooDeep,
        TooMany,
        TooFine,
        LineTexts,
        TooWide,
        TooTangled,
        Beside,
        NotSmooth,
        NotClipped,
        NotVertical,
        NoColumns,
        NoBackground,
        NoFile,
        NoPicture,
        NoDrawing,
        CutOff
    };
    static constexpr std::size_t ReasonCount = 23;

    /// \param kind  of the entity, as it stands in the text; the name of a section that is cut off
    void Add(std::string_view kind, TReason reason, qint64 line, qint64 count = 1);
    /// What was counted in a drawing that this one shows. \param line  where it does
    void Add(const TDXFReport& other, qint64 line);
    /// Adds all that was counted to `report`, in the order of their first lines.
    void MoveTo(TReadReport& report, const TDXFTextDecoder& text);

private:
    struct TCount {
        std::string_view Kind;
        TReason Reason;
        qint64 Count;
        qint64 FirstLine;
    };

    std::vector<TCount> m_counts;
    std::array<std::unordered_map<std::string_view, std::size_t>, ReasonCount>
        m_indexes; // by reason
};

} // namespace ZEP
