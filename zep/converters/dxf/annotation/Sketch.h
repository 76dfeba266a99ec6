#pragma once

#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Part.h>

namespace ZEP {

/// A text of an annotation: it lies in the plane of its entity.
struct TDXFNote {
    std::string_view Text{}; ///< as in MTEXT; outlives the drawing of it
    TGLArrayd3 Place{};
    TGLArrayd3 Direction{1, 0, 0};
    double Height = 1;
    int Attachment = 1;       ///< 1 top left, 2 top centre ... 9 bottom right
    std::string_view Style{}; ///< name
    double Width = 0;         ///< at which its lines are broken; 0: nowhere
    double Spacing = 1;       ///< of its lines
};

/// Draws what an entity shows without saying so piece by piece: lines, arcs, arrow heads, texts.
/// All coordinates are those of the entity's plane.
class TDXFSketch {
public:
    /// \param extrusion  of the plane
    TDXFSketch(TDXFBuilder& builder, const TDXFRecord& whole, const TGLArrayd3& extrusion);

    /// Of a point of the drawing, and of a direction in it.
    [[nodiscard]] TGLArrayd3 ToPlane(const TGLArrayd3& point) const;

    void Chain(std::vector<TGLArrayd3> points, const TDXFInk& ink, bool closed = false) const;
    void Line(const TGLArrayd3& a, const TGLArrayd3& b, const TDXFInk& ink) const;
    /// Counter-clockwise from one angle to the other, in radians.
    void Arc(const TGLArrayd3& center, double radius, double start, double end,
             const TDXFInk& ink) const;
    /// A smooth curve through points, with those directions at its ends.
    void Curve(std::vector<TGLArrayd3> points, const TGLArrayd3& start, const TGLArrayd3& end,
               const TDXFInk& ink) const;
    void Triangle(const std::array<TGLArrayd3, 3>& corners, const TDXFInk& ink) const;
    /// What contours run round, by the even-odd rule.
    void Area(const TContours& contours, const TDXFInk& ink) const;
    void Text(const TDXFNote& note, const TDXFInk& ink) const;
    [[nodiscard]] TDXFTextBox BoxOf(const TDXFNote& note) const;
    /// \param name       of a block; a filled triangle where it is empty or not there
    /// \param direction  from the shaft to the tip
    void Arrow(std::string_view name, const TGLArrayd3& tip, const TGLArrayd3& direction,
               double size, const TDXFInk& ink) const;
    /// From the tip to where the shaft begins.
    [[nodiscard]] static double LengthOfArrow(std::string_view name, double size);

private:
    void Fill(TDXFPart& part, const TDXFNote& note) const;
    [[nodiscard]] TGLArrayd3 InDrawing(TGLArrayd3 point) const;

    TDXFBuilder& m_builder;
    const TDXFRecord& m_whole;
    TGLMatrixd4 m_frame;
};

} // namespace ZEP
