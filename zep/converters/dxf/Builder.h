#pragma once

#include <zep/converters/dxf/Drawing.h>
#include <zep/converters/dxf/Scope.h>

namespace ZEP {

struct TDXFChain;

/// What inserted blocks may cost: a small file can name a block a million times, and blocks in it.
class TDXFLimits {
public:
    static constexpr qint64 MaxBytes = 1LL << 30;
    /// As many points of a curve cost like an object.
    static constexpr std::size_t PointsOfObject = 16;

    /// \param objects  that may be made in all
    explicit TDXFLimits(qint64 objects) : m_objects(objects) {}

    /// \name False where the limit is exceeded, from then on
    /// @{
    bool TakeObject(std::size_t points) {
        m_objects -= static_cast<qint64>(1 + points / PointsOfObject);
        return !AreReached();
    }
    /// \param bytes  that are read for it
    bool TakeInsertion(std::size_t bytes) {
        m_bytes -= static_cast<qint64>(bytes);
        return TakeObject(0);
    }
    /// @}
    [[nodiscard]] bool AreReached() const { return m_objects < 0 || m_bytes < 0; }

private:
    qint64 m_objects;
    qint64 m_bytes = MaxBytes;
};

/// Makes the objects of entities in one scope.
class TDXFBuilder {
public:
    TDXFBuilder(TDXFDrawing& drawing, TDXFScope& scope, TDXFLimits& limits)
        : Drawing(drawing), m_scope(scope), m_limits(limits) {}

    TDXFDrawing& Drawing;

    /// A new object on the entity's layer, in its colour, which `fill` completes. It gets its
    /// parent last of all, so that what was set before had nobody to tell.
    /// \param points  that it will have
    template <class T, class Fill>
    void Add(const TDXFRecord& record, std::size_t points, Fill&& fill) {
        TZEPObject* layer = m_scope.LayerOf(record);
        if (!layer) return Pass(record, TDXFReport::TReason::NoLayer);
        if (m_scope.IsInBlock() && !m_limits.TakeObject(points)) return;
        auto* object = new T(&Drawing.Root);
        object->SetColor(m_scope.ColorOf(record, *layer));
        if (record.Integer(60) != 0) object->SetVisible(false);
        fill(*object);
        object->SetParentComponent(m_scope.ParentOn(layer));
    }

    /// A polyline along the chain, which lies in `frame`; one of too few points is counted as
    /// passed over.
    void AddChain(const TDXFRecord& record, TDXFChain chain, const TGLMatrixd4& frame = idd);

    /// Counts an entity that is passed over.
    void Pass(const TDXFRecord& record, TDXFReport::TReason reason) {
        Drawing.Report.Add(record.Kind(), reason, record.Line());
    }

private:
    TDXFScope& m_scope;
    TDXFLimits& m_limits;
};

/// Makes what an entity shows. It is read to its end; what belongs to it (the vertexes of a
/// polyline) comes next.
using TDXFAddEntity = void (*)(TDXFBuilder& builder, const TDXFRecord& record);

/// \name The kinds of entities that become objects
/// @{
void AddDXFPoint(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFLine(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFCircle(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFArc(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFFace(TDXFBuilder& builder, const TDXFRecord& record);
/// SOLID and TRACE: the third and fourth corner lie across.
void AddDXFSolid(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFLightPolyline(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFEllipse(TDXFBuilder& builder, const TDXFRecord& record);
/// SPLINE, and HELIX, which is one.
void AddDXFSpline(TDXFBuilder& builder, const TDXFRecord& record);
/// TEXT and ATTRIB.
void AddDXFText(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFLines(TDXFBuilder& builder, const TDXFRecord& record);
/// POLYLINE: a chain, a mesh of rows and columns, or faces.
void AddDXFPolyline(TDXFBuilder& builder, const TDXFRecord& record);
/// @}

/// From the plane that the entity's extrusion says to the drawing.
[[nodiscard]] TGLMatrixd4 FrameOf(const TDXFRecord& record);
/// Puts what is flat into that plane: at `place` in it, turned by `rotation` degrees.
void PlaceFlat(TZEPObject& object, const TGLMatrixd4& frame, const TGLArrayd3& place,
               double rotation, const TGLArrayd3& scale);

} // namespace ZEP
