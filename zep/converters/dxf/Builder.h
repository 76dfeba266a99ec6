#pragma once

#include <zep/converters/Placing.h>
#include <zep/converters/dxf/Drawing.h>
#include <zep/converters/dxf/Scope.h>
#include <zep/framework/ReadBudget.h>
#include <zep/objects/Tessellation.h>

#include <optional>
#include <span>

namespace ZEP {

struct TDXFBulgeVertex;
struct TDXFChain;

/// What inserted blocks and curves may cost: a small file can name a block a million times, and
/// blocks in it, and a curve has many points for one that is written down.
class TDXFLimits {
public:
    /// That are read again for blocks, which takes time.
    static constexpr qint64 MaxBytes = 1LL << 30;
    /// Memory of an object with its transform, and of a point of a curve.
    static constexpr qint64 ObjectBytes = 896;
    static constexpr qint64 PointBytes = 56;

    /// \param budget  outlives this
    explicit TDXFLimits(TReadBudget& budget) : m_budget(budget) {}

    /// \name False where the limit is exceeded
    /// @{
    /// An object of a block, and then no more of blocks.
    bool TakeObject(std::size_t points) {
        m_reached = m_reached || !Take(ObjectBytes, points);
        return !m_reached;
    }
    /// \param bytes  that are read for it
    bool TakeInsertion(std::size_t bytes) {
        m_bytes -= static_cast<qint64>(bytes);
        m_reached = m_reached || m_bytes < 0;
        return TakeObject(0);
    }
    /// The points of a curve outside of blocks.
    bool TakePoints(std::size_t points) { return Take(0, points); }
    /// @}
    [[nodiscard]] bool AreReached() const { return m_reached; }
    /// Points that a curve can still have.
    [[nodiscard]] std::size_t PointsLeft() const {
        return static_cast<std::size_t>(m_budget.Left() / PointBytes);
    }

private:
    [[nodiscard]] bool Take(qint64 bytes, std::size_t points) {
        return m_budget.Take(bytes + PointBytes * static_cast<qint64>(points));
    }

    TReadBudget& m_budget;
    qint64 m_bytes = MaxBytes;
    bool m_reached = false;
};

/// Makes the objects of entities in one scope.
class TDXFBuilder {
public:
    TDXFBuilder(TDXFDrawing& drawing, TDXFScope& scope, TDXFLimits& limits)
        : Drawing(drawing), Scope(scope), m_limits(limits) {}

    TDXFDrawing& Drawing;
    TDXFScope& Scope;

    /// A new object on the entity's layer, in its colour, which `fill` completes. It gets its
    /// parent last of all, so that what was set before had nobody to tell.
    /// \param points  that it will have
    template <class T, class Fill>
    void Add(const TDXFRecord& record, std::size_t points, Fill&& fill) {
        TZEPObject* layer = Scope.LayerOf(record);
        if (!layer) return Pass(record, TDXFReport::TReason::NoLayer);
        if (Scope.IsInBlock() && !m_limits.TakeObject(points)) return;
        if (!Scope.IsInBlock() && !m_limits.TakePoints(points))
            return Pass(record, TDXFReport::TReason::TooMany);
        auto* object = new T(&Drawing.Root);
        object->SetColor(Scope.ColorOf(record, *layer));
        if (Drawing.Weights.AreShown) Widen(*object, Scope.WeightOf(record, *layer));
        if (record.Integer(60) != 0 || Scope.IsHidden()) object->SetVisible(false);
        fill(*object);
        Place(object, Scope.ParentOn(layer), Drawing.Root);
    }

    /// A polyline along the chain, which lies in `frame`; one of too few points is counted as
    /// passed over.
    /// \param runsOn  as a curve does: the pattern of its line type runs on round corners
    void AddChain(const TDXFRecord& record, TDXFChain chain, const TGLMatrixd4& frame = idd,
                  bool runsOn = true);
    /// The same along a polyline, which may have widths.
    void AddBulged(const TDXFRecord& record, std::span<const TDXFBulgeVertex> vertexes, bool closed,
                   const TGLMatrixd4& frame, bool runsOn);
    /// What the entity shows is made by `AddChain`: its line type breaks lines up, or it is thick.
    [[nodiscard]] bool IsChain(const TDXFRecord& record) {
        return record.Has(ThicknessCode) || (Drawing.LineTypes.AreThere() && LineTypeOf(record));
    }
    /// The walls of a chain of a thick entity (group 39), along its extrusion.
    void AddWalls(const TDXFRecord& record, const TDXFChain& chain);

    /// A flat area that contours fill in `frame`. One of no area is counted, and so is one that
    /// would take too long.
    /// \param color  in place of the entity's
    void AddFilled(const TDXFRecord& record, const TContours& contours, TFillRule rule,
                   const TGLMatrixd4& frame, const std::optional<TColor>& color = {});

    /// Points that a curve can still have.
    [[nodiscard]] std::size_t PointsLeft() const { return m_limits.PointsLeft(); }
    /// Counts an entity that is passed over.
    void Pass(const TDXFRecord& record, TDXFReport::TReason reason) {
        Drawing.Report.Add(record.Kind(), reason, record.Line());
    }

private:
    static constexpr int ThicknessCode = 39;

    static void Widen(TZEPObject& object, int weight);
    void AddWide(const TDXFRecord& record, std::span<const TDXFBulgeVertex> vertexes, bool closed,
                 const TGLMatrixd4& frame);
    void AddPolyline(const TDXFRecord& record, const TDXFChain& chain, bool runsOn);
    [[nodiscard]] const TDXFLineType* LineTypeOf(const TDXFRecord& record);
    [[nodiscard]] std::shared_ptr<const TZEPDashPattern> PatternOf(const TDXFRecord& record,
                                                                   const TDXFChain& chain);

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
/// TEXT, ATTRIB, and ATTDEF, which shows its tag; in a block it shows the text that all insertions
/// have in common, or nothing.
void AddDXFText(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFLines(TDXFBuilder& builder, const TDXFRecord& record);
/// POLYLINE: a chain, a mesh of rows and columns, or faces.
void AddDXFPolyline(TDXFBuilder& builder, const TDXFRecord& record);
/// HATCH: an area or the lines of its pattern.
void AddDXFHatch(TDXFBuilder& builder, const TDXFRecord& record);
/// @}

/// From the plane that the entity's extrusion says to the drawing.
[[nodiscard]] TGLMatrixd4 FrameOf(const TDXFRecord& record);
/// From the foot of a thick entity (group 39) to its top.
[[nodiscard]] TGLArrayd3 DXFWall(const TDXFRecord& record);
/// Puts what is flat into that plane: at `place` in it, turned by `rotation` degrees.
void PlaceFlat(TZEPObject& object, const TGLMatrixd4& frame, const TGLArrayd3& place,
               double rotation, const TGLArrayd3& scale);

} // namespace ZEP
