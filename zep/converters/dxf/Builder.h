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

/// Inserts blocks.
class TDXFInserter {
public:
    /// \param record  whose layer and look the block gets
    /// \return false where there is no such block. What else keeps it away is counted
    virtual bool InsertNamed(TDXFScope& scope, const TDXFRecord& record, std::string_view name,
                             const TDXFInsertion& insertion) = 0;

protected:
    ~TDXFInserter() = default;
};

/// Makes the objects of entities in one scope.
class TDXFBuilder {
public:
    TDXFBuilder(TDXFDrawing& drawing, TDXFScope& scope, TDXFLimits& limits, TDXFInserter& inserter)
        : Drawing(drawing), Scope(scope), m_limits(limits), m_inserter(inserter) {}

    TDXFDrawing& Drawing;
    TDXFScope& Scope;

    /// A new object on the entity's layer, in its colour, which `fill` completes. It gets its
    /// parent last of all, so that what was set before had nobody to tell.
    /// \param points  that it will have
    template <class T, class Fill>
    void Add(const TDXFRecord& record, std::size_t points, Fill&& fill) {
        TZEPObject* layer = Scope.LayerOf(record);
        T* object = Make<T>(record, layer, points);
        if (!object) return;
        fill(*object);
        Place(object, Scope.ParentOn(layer), Drawing.Root);
    }
    /// The same without a parent. \return null where it cannot be, which is counted
    template <class T>
    T* Make(const TDXFRecord& record, TZEPObject* layer, std::size_t points) {
        if (!MayMake(record, layer, points)) return nullptr;
        auto* object = new T(&Drawing.Root);
        object->SetColor(Scope.ColorOf(record, *layer));
        if (Drawing.Weights.AreShown) Widen(*object, Scope.WeightOf(record, *layer));
        if (record.Integer(60) != 0 || Scope.IsHidden()) object->SetVisible(false);
        return object;
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

    /// The block of that name, in the look of the entity. \return false where there is none
    bool Insert(const TDXFRecord& record, std::string_view name, const TDXFInsertion& insertion) {
        return m_inserter.InsertNamed(Scope, record, name, insertion);
    }

    /// Points that a curve can still have.
    [[nodiscard]] std::size_t PointsLeft() const { return m_limits.PointsLeft(); }
    /// Counts an entity that is passed over.
    void Pass(const TDXFRecord& record, TDXFReport::TReason reason) {
        Drawing.Report.Add(record.Kind(), reason, record.Line());
    }

    /// Null for what is solid.
    [[nodiscard]] const TDXFLineType* LineTypeOf(const TDXFRecord& record);

private:
    static constexpr int ThicknessCode = 39;

    [[nodiscard]] bool MayMake(const TDXFRecord& record, const TZEPObject* layer,
                               std::size_t points);
    static void Widen(TZEPObject& object, int weight);
    void AddWide(const TDXFRecord& record, std::span<const TDXFBulgeVertex> vertexes, bool closed,
                 const TGLMatrixd4& frame);
    void AddPolyline(const TDXFRecord& record, const TDXFChain& chain, bool runsOn);
    [[nodiscard]] std::shared_ptr<const TZEPDashPattern> PatternOf(const TDXFRecord& record,
                                                                   const TDXFChain& chain);

    TDXFLimits& m_limits;
    TDXFInserter& m_inserter;
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
/// XLINE and RAY.
void AddDXFEndlessLine(TDXFBuilder& builder, const TDXFRecord& record);
/// HATCH: an area or the lines of its pattern.
void AddDXFHatch(TDXFBuilder& builder, const TDXFRecord& record);
void AddDXFLeader(TDXFBuilder& builder, const TDXFRecord& record);
/// MULTILEADER: its lines, arrow heads, and text or block.
void AddDXFMultiLeader(TDXFBuilder& builder, const TDXFRecord& record);
/// MLINE: its lines, caps and area.
void AddDXFMultiLine(TDXFBuilder& builder, const TDXFRecord& record);
/// TOLERANCE: a frame with texts.
void AddDXFTolerance(TDXFBuilder& builder, const TDXFRecord& record);
/// IMAGE: a picture beside the drawing, or its outline.
void AddDXFImage(TDXFBuilder& builder, const TDXFRecord& record);
/// MESH: its faces as they stand in the file.
void AddDXFMesh(TDXFBuilder& builder, const TDXFRecord& record);
/// ACAD_TABLE: the block that was made for it.
void AddDXFTable(TDXFBuilder& builder, const TDXFRecord& record);
/// DIMENSION and what else shows an anonymous block that was made for it.
void AddDXFDimension(TDXFBuilder& builder, const TDXFRecord& record);
/// @}

/// What a text of several lines (MTEXT) takes up, from its place on: along its direction, and up.
struct TDXFTextBox {
    double Left = 0, Right = 0, Bottom = 0, Top = 0;
};
[[nodiscard]] TDXFTextBox DXFTextBox(TDXFBuilder& builder, const TDXFRecord& record);

/// From the plane that the entity's extrusion says to the drawing.
[[nodiscard]] TGLMatrixd4 FrameOf(const TDXFRecord& record);
/// From the foot of a thick entity (group 39) to its top.
[[nodiscard]] TGLArrayd3 DXFWall(const TDXFRecord& record);
/// Puts what is flat into that plane: at `place` in it, turned by `rotation` degrees.
void PlaceFlat(TZEPObject& object, const TGLMatrixd4& frame, const TGLArrayd3& place,
               double rotation, const TGLArrayd3& scale);

} // namespace ZEP
