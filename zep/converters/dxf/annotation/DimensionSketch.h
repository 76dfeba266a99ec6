#pragma once

#include <zep/converters/dxf/annotation/Sketch.h>

#include <string>

namespace ZEP {

/// Draws a dimension that has no block: its lines, heads and text in its plane.
class TDXFDimensionSketch {
public:
    TDXFDimensionSketch(TDXFBuilder& builder, const TDXFRecord& record);

    const TDXFDimensionStyle Style;

    /// \name Points of the dimension, in its plane
    /// @{
    [[nodiscard]] TGLArrayd3 Point(int code) const;
    [[nodiscard]] TGLArrayd3 InPlane(TGLArrayd3 point) const;
    [[nodiscard]] bool HasTextPlace() const;
    [[nodiscard]] TGLArrayd3 TextPlace() const;
    /// @}
    /// \name The text, in place of which the entity may have its own
    /// @{
    /// \param measured   what stands for "<>"
    /// \param otherwise  where the entity says nothing
    /// \param direction  of a text that runs along the dimension
    /// \param inside     between the lines that it measures
    void PlaceText(const std::string& measured, const TGLArrayd3& otherwise,
                   const TGLArrayd3& direction, bool inside);
    /// Above a line at that place, or on it, as the style says.
    [[nodiscard]] TGLArrayd3 Above(const TGLArrayd3& place, const TGLArrayd3& direction) const;
    [[nodiscard]] const TGLArrayd3& TextCenter() const { return m_note.Place; }
    /// What it takes up along its direction, with a gap at both ends.
    [[nodiscard]] double TextWidth() const { return m_halfWidth * 2; }
    [[nodiscard]] const TGLArrayd3& TextDirection() const { return m_note.Direction; }
    void AddText() const;
    /// @}

    /// \name Lines and heads
    /// @{
    /// Left out where the text covers it.
    void Line(const TGLArrayd3& from, const TGLArrayd3& to) const;
    void Arc(const TGLArrayd3& center, double radius, double start, double end) const;
    /// \param number  1 or 2: each may be suppressed
    void Extension(int number, const TGLArrayd3& from, const TGLArrayd3& to) const;
    /// \param direction  to its tip
    void Head(int number, const TGLArrayd3& tip, const TGLArrayd3& direction) const;
    [[nodiscard]] double LengthOfHead(int number) const;
    [[nodiscard]] double ArrowSize() const { return Style.ArrowSize(); }
    [[nodiscard]] bool HasTicks() const { return Style.Number(dvTickSize, 0) > 0; }
    [[nodiscard]] bool IsLineSuppressed(int number) const {
        return Style.Integer(number == 1 ? dvNoLine1 : dvNoLine2) != 0;
    }
    /// A cross, with lines to the circle where the style says so.
    void CenterMark(const TGLArrayd3& center, double radius) const;
    /// @}

private:
    [[nodiscard]] std::string_view HeadName(int number) const;
    [[nodiscard]] TDXFInk InkOf(int color, int weight) const;

    const TDXFRecord& m_record;
    const TDXFHandles& m_handles;
    TDXFSketch m_sketch;
    double m_z;
    TDXFInk m_ink;
    std::string m_text;
    TDXFNote m_note;
    double m_halfWidth = 0, m_halfHeight = 0;
};

/// \name The kinds of dimensions. False where the entity has not what it takes
/// @{
/// \param aligned  with the points that it measures
bool AddDXFLinearDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record, bool aligned);
bool AddDXFRadiusDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record);
bool AddDXFDiameterDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record);
/// Between two lines.
bool AddDXFAngularDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record);
/// Between two points, about a third.
bool AddDXFThreePointDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record);
bool AddDXFOrdinateDimension(TDXFDimensionSketch& sketch, const TDXFRecord& record);
/// @}

} // namespace ZEP
