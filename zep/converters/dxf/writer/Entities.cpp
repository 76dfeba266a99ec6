#include <zep/converters/dxf/writer/Entities.h>

#include <zep/appearance/materials/FaceMaterial.h>
#include <zep/appearance/materials/Material.h>
#include <zep/converters/ReadReport.h>
#include <zep/converters/dxf/Weights.h>
#include <zep/converters/dxf/writer/Pairs.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace ZEP {

namespace {

/// The colour that it is drawn in.
TColor SeenColor(const TZEPObject& object) {
    const TZEPScene* scene = object.Scene();
    TZEPMaterial* material = scene ? scene->LibraryMaterial(object.MaterialIndex()) : nullptr;
    if (material) return material->FrontFace()->Diffuse();
    const auto* polyline = qobject_cast<const TZEPPolyline*>(&object);
    return polyline ? polyline->OrigColor() : object.GetColor();
}

/// How many times as long a length becomes on the average, along x and y.
double ScaleOf(const TGLMatrixd4& m) {
    const TGLArrayd3 x{m[0][0], m[0][1], m[0][2]}, y{m[1][0], m[1][1], m[1][2]};
    return std::sqrt(Length(x) * Length(y));
}

/// Of the largest pattern below, in the size of the drawing.
constexpr double DashesAcross = 500;

/// In place of pixels; null for a solid line.
const TZEPDashPattern* PatternOf(const TZEPLineShape& shape) {
    using TParts = std::vector<double>;
    const auto of = [](const char* name, const TParts& parts) {
        return TZEPDashPattern::Of(parts, QLatin1StringView(name));
    };
    static const std::map<TPenStyle, std::shared_ptr<const TZEPDashPattern>> patterns{
        {psDash, of("Dash", {3, -2})},
        {psDot, of("Dot", {1, -1})},
        {psDashDot, of("DashDot", {3, -1, 1, -1})},
        {psDashDotDot, of("DashDotDot", {3, -1, 1, -1, 1, -1})}};
    const bool isDashed = qobject_cast<const TZEPDashedPolyline*>(&shape) != nullptr;
    const auto pattern = isDashed ? patterns.end() : patterns.find(shape.Style());
    return pattern == patterns.end() ? nullptr : pattern->second.get();
}

} // namespace

struct TDXFEntityWriter::TKind {
    const QMetaObject* Class;
    TWrite Write;
};

/// Of the class itself, or of the nearest that it inherits; null for a class of others.
const TDXFEntityWriter::TKind* TDXFEntityWriter::KindOf(const TZEPObject& object) {
    static const TKind kinds[] = {
        {&TZEPLine::staticMetaObject, &TDXFEntityWriter::WriteLine},
        {&TZEPLineSet::staticMetaObject, &TDXFEntityWriter::WriteLines},
        {&TZEPDashedPolyline::staticMetaObject, &TDXFEntityWriter::WriteDashes},
        {&TZEPPolyline::staticMetaObject, &TDXFEntityWriter::WritePolyline},
        {&TZEPArc::staticMetaObject, &TDXFEntityWriter::WriteArc},
        {&TZEPCircle::staticMetaObject, &TDXFEntityWriter::WriteCircle},
        {&TZEPPoint::staticMetaObject, &TDXFEntityWriter::WritePoint},
        {&TZEPPolygon::staticMetaObject, &TDXFEntityWriter::WritePolygon},
        {&TZEPMesh::staticMetaObject, &TDXFEntityWriter::WriteMesh},
        {&TZEPLabel::staticMetaObject, &TDXFEntityWriter::WriteLabel},
    };
    for (const QMetaObject* type = object.metaObject(); type; type = type->superClass())
        for (const TKind& kind : kinds)
            if (kind.Class == type) return &kind;
    return nullptr;
}

void TDXFEntityWriter::Write(TZEPObject& object, const TDXFPlace& place) {
    const TKind* kind = KindOf(object);
    if (!kind && Draws(object))
        Count(QStringLiteral("%1, which drawings have no entity for").arg(object.ClassName()));
    if (!kind) return;
    m_place = place;
    m_style = StyleOf(object);
    const auto* shape = qobject_cast<const TZEPLineShape*>(&object);
    if (shape && shape->Style() == psClear) return;
    (this->*kind->Write)(object);
}

TDXFEntityWriter::TStyle TDXFEntityWriter::StyleOf(const TZEPObject& object) {
    TStyle style{.Layer = &m_tables.LayerOf(m_place.Layer, m_place.IsLayerVisible),
                 .Color = SeenColor(object),
                 .IsVisible = m_place.IsVisible};
    const auto* shape = qobject_cast<const TZEPLineShape*>(&object);
    if (const TZEPDashPattern* pattern = shape ? PatternOf(*shape) : nullptr)
        SetLineType(style, *pattern, m_size / DashesAcross);
    if (!shape || shape->Width() == 1) return style;
    style.Weight = TDXFWeights::WeightOf(shape->Width());
    m_hasWidths = true;
    return style;
}

void TDXFEntityWriter::SetLineType(TStyle& style, const TZEPDashPattern& pattern, double scale) {
    const TDXFUsedLineType type = m_tables.LineTypeOf(pattern, scale);
    style.LineType = type.Name;
    style.LineTypeScale = type.Scale;
}

void TDXFEntityWriter::Count(const QString& kind) {
    m_report.Add(kind);
}

TGLArrayd3 TDXFEntityWriter::Placed(TGLArrayd3 point) const {
    Xformd(m_place.Matrix, point);
    return point;
}

bool TDXFEntityWriter::Take(std::span<const TGLArrayd3> points) {
    if (!std::ranges::all_of(points, IsFinite)) {
        Count(QStringLiteral("objects with coordinates that are no numbers"));
        return false;
    }
    for (const TGLArrayd3& point : points) Widen(m_bounds, TZEPBounds{point, point});
    return true;
}

quint64 TDXFEntityWriter::Begin(std::string_view kind, std::string_view subclass) {
    const quint64 handle = m_pairs.NextHandle();
    m_pairs.Text(0, kind);
    m_pairs.Handle(5, handle);
    m_pairs.Fixed("330 A|100 AcDbEntity|");
    m_pairs.Words(8, m_style.Layer->Name);
    if (!m_style.LineType.isEmpty()) m_pairs.Words(6, m_style.LineType);
    if (m_style.Color != m_style.Layer->Color) WriteDXFColor(m_pairs, m_style.Color);
    if (!m_style.LineType.isEmpty() && m_style.LineTypeScale != 1)
        m_pairs.Number(48, m_style.LineTypeScale);
    if (m_style.Weight >= 0) m_pairs.Integer(370, m_style.Weight);
    if (!m_style.IsVisible) m_pairs.Integer(60, 1);
    m_pairs.Text(100, subclass);
    return handle;
}

void TDXFEntityWriter::BeginPart(std::string_view kind, quint64 owner, std::string_view subclass) {
    m_pairs.Text(0, kind);
    m_pairs.Handle(5, m_pairs.NextHandle());
    m_pairs.Handle(330, owner);
    m_pairs.Text(100, "AcDbEntity");
    m_pairs.Words(8, m_style.Layer->Name);
    if (!subclass.empty()) m_pairs.Text(100, subclass);
}

void TDXFEntityWriter::WriteExtrusion(const TGLArrayd3& normal) {
    if (normal != unitz) m_pairs.Point(210, normal);
}

void TDXFEntityWriter::WriteLine(TZEPObject& object) {
    auto& line = static_cast<TZEPLine&>(object);
    WriteSegment(Placed(line.P1()->Data()), Placed(line.P2()->Data()));
}

void TDXFEntityWriter::WriteLines(TZEPObject& object) {
    const TPoints ends = PlacedEach(*static_cast<TZEPLineSet&>(object).Vertexes());
    for (std::size_t i = 1; i < ends.size(); i += 2) WriteSegment(ends[i - 1], ends[i]);
}

void TDXFEntityWriter::WritePoint(TZEPObject& object) {
    const TGLArrayd3 place = Placed(static_cast<TZEPPoint&>(object).P()->Data());
    if (!Take({&place, 1})) return;
    Begin("POINT", "AcDbPoint");
    m_pairs.Point(10, place);
}

void TDXFEntityWriter::WriteDashes(TZEPObject& object) {
    auto& line = static_cast<TZEPDashedPolyline&>(object);
    if (line.Pattern()) SetLineType(m_style, *line.Pattern(), ScaleOf(m_place.Matrix));
    const TPoints points = PlacedEach(*line.Vertexes());
    if (points.size() == 2 && !line.Closed()) return WriteSegment(points[0], points[1]);
    WriteChain(points, line.Closed(), line.RunsOn());
}

void TDXFEntityWriter::WriteSegment(const TGLArrayd3& from, const TGLArrayd3& to) {
    if (!Take(std::array{from, to})) return;
    Begin("LINE", "AcDbLine");
    m_pairs.Point(10, from);
    m_pairs.Point(11, to);
}

} // namespace ZEP
