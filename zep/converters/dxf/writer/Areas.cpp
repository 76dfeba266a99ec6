#include <zep/appearance/materials/FaceMaterial.h>
#include <zep/appearance/materials/Material.h>
#include <zep/converters/ReadReport.h>
#include <zep/converters/dxf/Frame.h>
#include <zep/converters/dxf/writer/Entities.h>
#include <zep/converters/dxf/writer/Pairs.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Tessellation.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace ZEP {

namespace {

constexpr double FlatEnough = 1e-9; ///< of the largest coordinate

enum TFaceFlag { ffMesh = 64, ffFace = 128, ffPlace = 192 };

/// Of what a mesh of a drawing can number.
constexpr std::size_t MostFacePlaces = 32'000;

/// Twice the area that the polygon runs round, along its normal.
TGLArrayd3 AreaVector(const std::vector<TGLArrayd3>& polygon) {
    TGLArrayd3 area{};
    for (std::size_t i = 2; i < polygon.size(); ++i)
        area += Cross(polygon[i - 1] - polygon[0], polygon[i] - polygon[0]);
    return area;
}

bool LiesInPlane(const std::vector<TGLArrayd3>& polygon, const TGLArrayd3& normal) {
    double largest = 0;
    for (const TGLArrayd3& point : polygon) largest = std::max(largest, Length(point - polygon[0]));
    return std::ranges::all_of(polygon, [&](const TGLArrayd3& point) {
        return std::abs(Dotd(point - polygon[0], normal)) <= FlatEnough * largest;
    });
}

/// Without the points on straight sides, which ways to islands leave behind where they cross
/// others, in single precision; begun at the leftmost.
std::vector<TGLArrayd3> CleanContour(const std::vector<TGLArrayd3>& contour) {
    constexpr double straight = 1e-7;
    std::vector<TGLArrayd3> clean;
    for (std::size_t i = 0, count = contour.size(); i < count; ++i) {
        const TGLArrayd3 before = contour[i] - contour[(i + count - 1) % count];
        const TGLArrayd3 behind = contour[(i + 1) % count] - contour[i];
        const double size = Length(before) * Length(behind);
        if (std::abs(Cross(before, behind)[2]) > straight * size) clean.push_back(contour[i]);
    }
    std::rotate(clean.begin(), std::ranges::min_element(clean), clean.end());
    return clean;
}

/// Of the area that the polygon runs round.
TContours CleanContours(const std::vector<TGLArrayd3>& polygon) {
    TContours contours(1, polygon);
    if (!AreTangled(contours)) contours = OutlinesOf(contours, TFillRule::Odd);
    for (std::vector<TGLArrayd3>& contour : contours) contour = CleanContour(contour);
    std::erase_if(contours, [](const auto& contour) { return contour.size() < 3; });
    std::ranges::sort(contours);
    return contours;
}

/// Whichever diagonal divides the four corners, both triangles look the same way.
bool HasNoDent(const std::vector<TGLArrayd3>& corners) {
    const auto area = [&](std::size_t a, std::size_t b, std::size_t c) {
        return Cross(corners[b] - corners[a], corners[c] - corners[a]);
    };
    return Dotd(area(0, 1, 2), area(0, 2, 3)) >= 0 && Dotd(area(1, 2, 3), area(1, 3, 0)) >= 0;
}

} // namespace

void TDXFEntityWriter::WritePolygon(TZEPObject& object) {
    const TPoints corners = PlacedEach(*static_cast<TZEPPolygon&>(object).Vertexes());
    if (corners.size() < 3 || !Take(corners)) return;
    if (!WriteFace(corners)) WriteArea(corners);
}

/// False for what has more than four corners, or a dent.
bool TDXFEntityWriter::WriteFace(TPoints corners) {
    if (corners.size() == 3) corners.resize(4, TGLArrayd3(corners[2]));
    if (corners.size() > 4 || !HasNoDent(corners)) return false;
    const bool isLevel = std::ranges::all_of(
        corners, [&](const TGLArrayd3& corner) { return corner[2] == corners[0][2]; });
    // Programs fill a SOLID, which lies in a plane, and show the edges of a 3DFACE.
    if (isLevel)
        WriteCorners("SOLID", "AcDbTrace", {0, 1, 3, 2}, corners);
    else
        WriteCorners("3DFACE", "AcDbFace", {0, 1, 2, 3}, corners);
    return true;
}

void TDXFEntityWriter::WriteCorners(std::string_view kind, std::string_view subclass,
                                    const std::array<std::size_t, 4>& order,
                                    const TPoints& corners) {
    Begin(kind, subclass);
    int code = 10;
    for (const std::size_t corner : order) m_pairs.Point(code++, corners[corner]);
}

// Of what is bent there is no hatch: its triangles are a mesh.
void TDXFEntityWriter::WriteArea(const TPoints& polygon) {
    const TGLArrayd3 normal = WrittenDXFNormal(AreaVector(polygon));
    if (!LiesInPlane(polygon, normal)) {
        const TTriangles triangles = TrianglesOf(polygon);
        std::vector<TFace> faces;
        for (int i = 0; i + 2 < static_cast<int>(triangles.Points.size()); i += 3)
            faces.push_back({i, i + 1, i + 2});
        return WriteFaces(triangles.Points, faces);
    }
    const TGLMatrixd4 frame = ExtrusionFrame(normal);
    TPoints flat = polygon;
    for (TGLArrayd3& point : flat) point = InDXFPlane(frame, point);
    for (TGLArrayd3& point : flat) point[2] = flat[0][2];
    const TContours contours = CleanContours(flat);
    if (contours.empty()) return;
    TPoints whole = contours.front();
    for (TGLArrayd3& point : whole) Xformd(frame, point);
    if (contours.size() > 1 || !WriteFace(std::move(whole))) WriteHatch(contours, normal);
}

void TDXFEntityWriter::WriteHatch(const std::vector<TPoints>& contours, const TGLArrayd3& normal) {
    Begin("HATCH", "AcDbHatch");
    m_pairs.Point(10, {0, 0, contours[0][0][2]});
    m_pairs.Point(210, normal);
    m_pairs.Fixed("2 SOLID|70 1|71 0|");
    m_pairs.Integer(91, static_cast<qint64>(contours.size()));
    for (const TPoints& contour : contours) WriteContour(contour);
    m_pairs.Fixed("75 0|76 1|98 0|");
}

/// An island runs clockwise.
void TDXFEntityWriter::WriteContour(const TPoints& contour) {
    constexpr int outer = 3, island = 2;
    m_pairs.Integer(92, AreaVector(contour)[2] > 0 ? outer : island);
    m_pairs.Fixed("72 0|73 1|");
    m_pairs.Integer(93, static_cast<qint64>(contour.size()));
    for (const TGLArrayd3& point : contour) m_pairs.FlatPoint(10, point);
    m_pairs.Integer(97, 0);
}

/// A mesh of a drawing has one colour: there is one for each.
void TDXFEntityWriter::WriteMesh(TZEPObject& object) {
    auto& mesh = static_cast<TZEPMesh&>(object);
    const TPoints points = PlacedEach(*mesh.Vertexes());
    const TZEPScene* scene = mesh.ColorFaces() ? mesh.Scene() : nullptr;
    std::map<int, std::vector<TFace>> faces; // by material
    const auto isCorner = [&](int i) { return i >= 0 && i < static_cast<int>(points.size()); };
    for (int i = 0; i < mesh.Faces()->Count(); ++i) {
        const TZEPFace3CI& face = (*mesh.Faces())[i];
        if (isCorner(face.A()) && isCorner(face.B()) && isCorner(face.C()))
            faces[scene ? face.MaterialIndex() : -1].push_back({face.A(), face.B(), face.C()});
    }
    const TColor plain = m_style.Color;
    for (const auto& [number, ofMaterial] : faces) {
        TZEPMaterial* material = scene ? scene->LibraryMaterial(number) : nullptr;
        m_style.Color = material ? material->FrontFace()->Diffuse() : plain;
        WriteFaces(points, ofMaterial);
    }
}

void TDXFEntityWriter::WriteFaces(const TPoints& points, std::span<const TFace> faces) {
    std::vector<int> numbers(points.size(), -1); // of the points, in the mesh that is gathered
    TPoints places;
    std::vector<TFace> gathered;
    const auto finish = [&] {
        if (!gathered.empty()) WriteFaceMesh(places, gathered);
        places.clear();
        gathered.clear();
    };
    for (const TFace& face : faces) {
        if (places.size() + 3 > MostFacePlaces || gathered.size() == MostFacePlaces) {
            finish();
            std::ranges::fill(numbers, -1);
        }
        TFace& own = gathered.emplace_back();
        for (std::size_t i = 0; i < own.size(); ++i) {
            const auto corner = static_cast<std::size_t>(face[i]);
            if (numbers[corner] < 0) {
                numbers[corner] = static_cast<int>(places.size());
                places.push_back(points[corner]);
            }
            own[i] = numbers[corner];
        }
    }
    finish();
}

void TDXFEntityWriter::WriteFaceMesh(const TPoints& places, std::span<const TFace> faces) {
    if (!Take(places)) return;
    const quint64 owner = Begin("POLYLINE", "AcDbPolyFaceMesh");
    m_pairs.Integer(66, 1);
    m_pairs.Point(10, zero3d);
    m_pairs.Integer(70, ffMesh);
    m_pairs.Integer(71, static_cast<qint64>(places.size()));
    m_pairs.Integer(72, static_cast<qint64>(faces.size()));
    for (const TGLArrayd3& place : places)
        WriteVertex(owner, "AcDbPolyFaceMeshVertex", place, ffPlace);
    for (const TFace& face : faces) {
        BeginPart("VERTEX", owner, "AcDbFaceRecord");
        m_pairs.Point(10, zero3d);
        m_pairs.Integer(70, ffFace);
        for (int i = 0; i < 3; ++i) m_pairs.Integer(71 + i, face[static_cast<std::size_t>(i)] + 1);
    }
    BeginPart("SEQEND", owner, {});
}

} // namespace ZEP
