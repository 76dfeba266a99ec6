#pragma once

#include <zep/converters/dxf/Record.h>
#include <zep/objects/Tessellation.h>

namespace ZEP {

/// Parallel lines of a hatch pattern, as the file says: turned and scaled.
struct TDXFHatchFamily {
    double Angle = 0; ///< radians
    TGLArrayd3 Base{};
    TGLArrayd3 Step{}; ///< from a line to the next one
    std::vector<double>
        Dashes{}; ///< lengths of dashes, above 0, gaps, below 0, and dots; none: solid
};

[[nodiscard]] std::vector<TDXFHatchFamily> HatchFamilies(const TDXFRecord& record);

/// The lines of a pattern within contours.
struct TDXFHatchLines {
    /// Lines and dashes of a hatch; no more are seen on any screen.
    static constexpr std::size_t MaxLines = 50'000;

    std::vector<TGLArrayd3> Points; ///< two for each
    bool IsCoarser = false;         ///< than the pattern, which has too many, or cannot be drawn
};

/// A pattern of too many lines is drawn a whole number of times as large.
/// \param contours  filled by the odd rule
/// \param most      lines, at most `TDXFHatchLines::MaxLines`
[[nodiscard]] TDXFHatchLines LinesOf(const std::vector<TDXFHatchFamily>& pattern,
                                     const TContours& contours, std::size_t most);

} // namespace ZEP
