#pragma once

#include <zep/converters/dxf/writer/Tables.h>
#include <zep/scene/Geom.h>
#include <zep/view/Extent.h>

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace ZEP {

class TReadReport;
class TZEPDashPattern;
struct TDXFEllipse;

/// How an object stands in the drawing.
struct TDXFPlace {
    TGLMatrixd4 Matrix = idd;          ///< from its coordinates to those of the drawing
    const TZEPObject* Layer = nullptr; ///< the actor above it; null for none
    bool IsLayerVisible = true;
    bool IsVisible = true; ///< what stands between it and its layer, too
};

/// Writes objects as entities.
class TDXFEntityWriter {
public:
    /// \param report  of what is left out
    TDXFEntityWriter(TDXFPairs& pairs, TDXFWrittenTables& tables, TReadReport& report)
        : m_pairs(pairs), m_tables(tables), m_report(report) {}

    /// Of the whole, by which lines that are dashed in pixels get lengths.
    void SetSize(double size) { m_size = size; }
    /// The object itself; what only holds others writes nothing.
    void Write(TZEPObject& object, const TDXFPlace& place);

    /// Counts what is left out.
    void Count(const QString& kind);

    /// \name Of all that was written
    /// @{
    [[nodiscard]] const std::optional<TZEPBounds>& Bounds() const { return m_bounds; }
    /// A line is wider than others.
    [[nodiscard]] bool HasWidths() const { return m_hasWidths; }
    /// @}

private:
    /// What all entities of an object have in common.
    struct TStyle {
        const TDXFWrittenLayer* Layer = nullptr;
        TColor Color;
        QString LineType{};
        double LineTypeScale = 1;
        int Weight = -1; ///< hundredths of a millimetre; -1: none of its own
        bool IsVisible = true;
    };
    using TWrite = void (TDXFEntityWriter::*)(TZEPObject&);
    struct TKind;
    struct TRound;
    using TPoints = std::vector<TGLArrayd3>;
    using TFace = std::array<int, 3>; ///< numbers of points

    [[nodiscard]] static const TKind* KindOf(const TZEPObject& object);
    [[nodiscard]] TStyle StyleOf(const TZEPObject& object);
    void SetLineType(TStyle& style, const TZEPDashPattern& pattern, double scale);
    [[nodiscard]] TGLArrayd3 Placed(TGLArrayd3 point) const;
    template <class TList>
    [[nodiscard]] TPoints PlacedEach(TList& vertexes) const {
        TPoints points;
        points.reserve(static_cast<std::size_t>(vertexes.Count()));
        for (int i = 0; i < vertexes.Count(); ++i) points.push_back(Placed(vertexes[i].Data()));
        return points;
    }
    /// Extends the bounds; false for coordinates that are no numbers, which are counted.
    [[nodiscard]] bool Take(std::span<const TGLArrayd3> points);
    /// The pairs of an entity up to those of its class.
    quint64 Begin(std::string_view kind, std::string_view subclass);
    void BeginPart(std::string_view kind, quint64 owner, std::string_view subclass);
    void WriteExtrusion(const TGLArrayd3& normal);

    /// \name Kinds of objects
    /// @{
    void WriteNothing(TZEPObject&) {}
    void WriteLine(TZEPObject& object);
    void WriteLines(TZEPObject& object);
    void WritePoint(TZEPObject& object);
    void WritePolyline(TZEPObject& object);
    void WriteDashes(TZEPObject& object);
    void WriteCircle(TZEPObject& object);
    void WriteArc(TZEPObject& object);
    void WritePolygon(TZEPObject& object);
    void WriteMesh(TZEPObject& object);
    void WriteLabel(TZEPObject& object);
    /// @}

    /// \name Entities
    /// @{
    void WriteSegment(const TGLArrayd3& from, const TGLArrayd3& to);
    void WriteChain(TPoints points, bool closed, bool runsOn);
    void WriteFlatChain(const TPoints& points, int flags);
    void WriteSpatialChain(const TPoints& points, int flags);
    void WriteVertex(quint64 owner, std::string_view subclass, const TGLArrayd3& point, int flags);
    /// Of the circle of diameter 1. \param sweep  degrees
    void WriteRound(double start, double sweep);
    void WriteCircular(const TRound& round);
    void WriteEllipse(const TDXFEllipse& ellipse);
    void WriteCorners(std::string_view kind, std::string_view subclass,
                      const std::array<std::size_t, 4>& order, const TPoints& corners);
    [[nodiscard]] bool WriteFace(TPoints corners);
    void WriteArea(const TPoints& polygon);
    void WriteHatch(const std::vector<TPoints>& contours, const TGLArrayd3& normal);
    void WriteContour(const TPoints& contour);
    /// As many meshes as it takes.
    void WriteFaces(const TPoints& points, std::span<const TFace> faces);
    void WriteFaceMesh(const TPoints& places, std::span<const TFace> faces);
    void WriteText(const QString& text, double up);
    /// @}

    TDXFPairs& m_pairs;
    TDXFWrittenTables& m_tables;
    TReadReport& m_report;
    std::optional<TZEPBounds> m_bounds;
    bool m_hasWidths = false;
    double m_size = 1;
    // Of the object that is written.
    TDXFPlace m_place;
    TStyle m_style;
};

/// The direction of unit length, z where it is none or as good as z.
[[nodiscard]] TGLArrayd3 WrittenDXFNormal(const TGLArrayd3& normal);
/// A point of the drawing in the coordinates of a plane.
/// \param frame  as `ExtrusionFrame` makes it
[[nodiscard]] TGLArrayd3 InDXFPlane(const TGLMatrixd4& frame, const TGLArrayd3& point);

} // namespace ZEP
