#include <zep/converters/dxf/Entities.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Polyline.h>

namespace ZEP {

namespace {

constexpr int ClosedFlag = 1;
constexpr int FaceFlag = 128; // alone; a place in a mesh has 64 beside it

/// What stands between a POLYLINE and its SEQEND. Objects are made when all of it is there.
struct TChain {
    std::vector<TGLArrayd3> Points;
    std::vector<std::array<int, 3>> Faces; // from 0
    bool IsMesh = false;
};

/// A face of four corners is two triangles. Records of one or two corners (points and edges of a
/// mesh) are no faces.
void AddFace(TDXFDrawing& drawing, const TEntity& record, TChain& chain) {
    chain.IsMesh = true;
    const auto [a, b, c, d] = record.Corners;
    if (a == 0 || b == 0 || c == 0)
        return drawing.Report.Add("POLYLINE", TDXFReport::TReason::NoCorners, record.Line);
    chain.Faces.push_back({a - 1, b - 1, c - 1});
    if (d > 0) chain.Faces.push_back({a - 1, c - 1, d - 1});
}

bool ReadVertex(TDXFDrawing& drawing, TChain& chain) {
    TEntity vertex;
    if (!read_entity_data(drawing.Tags, vertex)) return false;
    if (vertex.Flags == FaceFlag)
        AddFace(drawing, vertex, chain);
    else
        chain.Points.push_back(vertex.Points[0]);
    return true;
}

void Fill(TZEPMesh& mesh, const TChain& chain) {
    mesh.SetColorFaces(false);
    for (const TGLArrayd3& point : chain.Points) mesh.Vertexes()->Add()->SetPoint(point);
    for (const auto& corners : chain.Faces) {
        TZEPFace3CI* face = mesh.Faces()->Add();
        for (int i = 0; i < 3; ++i) face->SetData(i, corners[static_cast<std::size_t>(i)]);
    }
}

// Its corners are meant: no spline through them.
void Fill(TZEPPolyline& polyline, const TChain& chain) {
    polyline.SetOrigColor(polyline.Color());
    polyline.SetSmooth(false);
    for (const TGLArrayd3& point : chain.Points) polyline.Vertexes()->Add()->SetPoint(point);
}

} // namespace

void read_polyline(TDXFDrawing& drawing) {
    TEntity entity;
    if (!read_entity_data(drawing.Tags, entity)) return;
    const TDXFSpot spot = drawing.Layers.FindOrMake(entity);
    const QPointer<TZEPObject> layer(spot.Layer);
    TChain chain;
    if (!ReadFollowers(drawing.Tags, "VERTEX", [&] { return ReadVertex(drawing, chain); })) return;
    // Without a layer, and with none to be made, it is owned by the root and stands nowhere.
    if (chain.IsMesh) {
        auto* mesh = MakeOfEntity<TZEPMesh>(drawing, entity, spot.Color);
        Fill(*mesh, chain);
        Place(mesh, layer, drawing.Root);
        return;
    }
    auto* polyline = MakeOfEntity<TZEPPolyline>(drawing, entity, spot.Color);
    polyline->SetClosed((entity.Flags & ClosedFlag) != 0);
    Fill(*polyline, chain);
    Place(polyline, layer, drawing.Root);
}

} // namespace ZEP
