#include "tests/tracing/Stage.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace ZEP::Tracing {

namespace {

constexpr int Cells = 80;

TColor ColorOf(const TVector& color) {
    const auto byte = [](double part) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
    };
    return {byte(color.X) | byte(color.Y) << 8 | byte(color.Z) << 16};
}

void SetVector(TZEPVertex3& vector, const TVector& value) {
    vector.SetData(value.X, value.Y, value.Z);
}

void SetPlace(TZEPObject& object, const TPlace& place) {
    SetVector(*object.XForm()->Scale(), place.Scale);
    SetVector(*object.XForm()->Rotate(), place.Turn);
    SetVector(*object.XForm()->Translate(), place.Move);
}

void SetLook(TZEPObject& object, const TLook& look) {
    for (TZEPFaceMaterial* face : {object.Material()->FrontFace(), object.Material()->BackFace()}) {
        face->SetAmbient(clBlack);
        face->SetDiffuse(ColorOf(look.Matte));
        face->SetEmission(ColorOf(look.Glow));
    }
    object.SetShadows(0, look.Casts);
    object.SetShadows(1, look.Receives);
    if (auto* mirror = qobject_cast<TZEPReflexedObject*>(&object))
        mirror->SetReflection(look.Mirror);
}

template <class TCollection>
void AddCorners(TCollection& vertexes, const TCorners& corners) {
    for (const TVector& corner : corners) vertexes.Add()->SetPoint({corner.X, corner.Y, corner.Z});
}

} // namespace

TStage::TStage() {
    Scene.SetSceneAmbientColor(clBlack);
    Scene.SetReflections(true);
    m_tracer.Background = {0, 0, 0.4};
    Scene.SetBackgroundColor(ColorOf(m_tracer.Background));
    QObject::connect(&Scene, &TZEPScene::AfterCamera, [](TZEPScene* scene) {
        scene->Draw(*scene, dsPre, dkFull);
        scene->Draw(*scene, dsReflections, dkFull);
    });
}

TZEPObject& TStage::ObjectOf(int piece) {
    return piece == NoPiece ? Scene : *m_origins[static_cast<std::size_t>(piece)].Object;
}

TFrame TStage::FrameOf(int piece) const {
    return piece == NoPiece ? TFrame() : m_tracer.Pieces[static_cast<std::size_t>(piece)].Frame;
}

int TStage::Note(const TOrigin& origin, TShape shape, const TLook& look) {
    m_origins.push_back(origin);
    m_tracer.Pieces.emplace_back(FrameOf(origin.Parent).Outer(origin.Frame), std::move(shape),
                                 look);
    return static_cast<int>(m_origins.size()) - 1;
}

int TStage::Add(TZEPObject& object, TShape shape, const TPlace& place, const TLook& look,
                int parent) {
    object.SetParentComponent(&ObjectOf(parent));
    SetPlace(object, place);
    SetLook(object, look);
    const int piece = Note({&object, TFrame(place), parent}, std::move(shape), look);
    NoteCarved(piece, parent);
    return piece;
}

void TStage::NoteCarved(int piece, int parent) {
    const auto carving = std::ranges::find(m_carvings, parent);
    if (carving == m_carvings.end()) return;
    m_tracer.Pieces[static_cast<std::size_t>(piece)].IsCarved = true;
    TCarving& carved = m_tracer.Carvings[static_cast<std::size_t>(carving - m_carvings.begin())];
    (carved.First == NoPiece ? carved.First : carved.Second) = piece;
}

int TStage::AddFrame(const TPlace& place, int parent) {
    return Add<TZEPObject>(nullptr, place, {}, parent).Piece;
}

TAdded<TZEPSphere> TStage::AddBall(const TPlace& place, const TLook& look, int parent) {
    const auto added = Add<TZEPSphere>(Ball(), place, look, parent);
    added.Object.SetSmooth(true);
    added.Object.SetSlices(Cells);
    added.Object.SetStacks(Cells);
    return added;
}

TAdded<TZEPBox> TStage::AddBox(const TPlace& place, const TLook& look, int parent) {
    const auto added = Add<TZEPBox>(Box(), place, look, parent);
    for (const int axis : {0, 1, 2}) added.Object.SetSlices(axis, look.Receives ? Cells / 2 : 1);
    return added;
}

TAdded<TZEPHeightField> TStage::AddSheet(const TPlace& place, const TLook& look, int parent) {
    const TShape square =
        Flat([](double x, double y) { return std::max(std::abs(x), std::abs(y)) < 0.5; }, true);
    const auto added = Add<TZEPHeightField>(square, place, look, parent);
    added.Object.SetSmooth(true);
    added.Object.SetSlicesX(Cells);
    added.Object.SetSlicesY(Cells);
    return added;
}

TAdded<TZEPPolygon> TStage::AddPolygon(const TCorners& corners, const TPlace& place,
                                       const TLook& look, int parent) {
    const auto added = Add<TZEPPolygon>(Flat(corners), place, look, parent);
    AddCorners(*added.Object.Vertexes(), corners);
    added.Object.SetColorVertexes(false);
    return added;
}

TAdded<TZEPMesh> TStage::AddMesh(const TCorners& corners, const TTriangles& triangles,
                                 const TPlace& place, const TLook& look, int parent) {
    const auto added = Add<TZEPMesh>(Triangles(corners, triangles), place, look, parent);
    AddCorners(*added.Object.Vertexes(), corners);
    for (const auto& [a, b, c] : triangles) {
        TZEPFace3CI* face = added.Object.Faces()->Add();
        face->SetA(a);
        face->SetB(b);
        face->SetC(c);
    }
    return added;
}

TAdded<TZEPProxy> TStage::AddProxy(int target, const TPlace& place, bool receives, int parent) {
    const auto proxy = Add<TZEPProxy>(nullptr, place, {.Receives = receives}, parent);
    proxy.Object.SetProxy(&ObjectOf(target));
    std::map<int, int> shown;
    for (int i = target; i < proxy.Piece; ++i) {
        const TOrigin origin = m_origins[static_cast<std::size_t>(i)];
        if (i != target && !shown.contains(origin.Parent)) continue;
        const TPiece piece = m_tracer.Pieces[static_cast<std::size_t>(i)];
        TLook look = piece.Look;
        if (i == target) look.Receives = receives;
        const int above = i == target ? proxy.Piece : shown.at(origin.Parent);
        shown[i] = Note({origin.Object, origin.Frame, above}, piece.Shape, look);
    }
    return proxy;
}

int TStage::AddCarving(TSetOperation operation, const TPlace& place, int parent) {
    static const std::map<TSetOperation, TZEPLogicalOperation> operations{
        {TSetOperation::Union, loOR},
        {TSetOperation::Common, loAND},
        {TSetOperation::Difference, loSUB}};
    const auto added = Add<TZEPLogicalObject>(nullptr, place, {}, parent);
    added.Object.SetOperation(operations.at(operation));
    m_carvings.push_back(added.Piece);
    m_tracer.Carvings.push_back({operation, NoPiece, NoPiece});
    return added.Piece;
}

TZEPLight& TStage::AddLamp(const TLamp& lamp, int parent) {
    auto* light = new TZEPLight(&Scene);
    light->SetParentComponent(&ObjectOf(parent));
    light->SetDirectional(lamp.IsAimed);
    SetVector(*light->Position(), lamp.Position);
    light->SetColor(ColorOf(lamp.Color));
    light->SetCastShadows(lamp.Casts);
    light->SetExactShadows(lamp.IsExact);
    m_tracer.Lamps.push_back(lamp);
    m_lampOrigins.push_back({lamp.Position, parent});
    PlaceAll();
    return *light;
}

/// What stands on something comes after it.
void TStage::PlaceAll() {
    for (std::size_t i = 0; i < m_origins.size(); ++i)
        m_tracer.Pieces[i].SetFrame(FrameOf(m_origins[i].Parent).Outer(m_origins[i].Frame));
    for (std::size_t i = 0; i < m_lampOrigins.size(); ++i)
        m_tracer.Lamps[i].Position =
            FrameOf(m_lampOrigins[i].Parent).Point(m_lampOrigins[i].Position);
}

void TStage::Move(int piece, const TPlace& place) {
    SetPlace(ObjectOf(piece), place);
    for (TOrigin& origin : m_origins)
        if (origin.Object == &ObjectOf(piece)) origin.Frame = TFrame(place);
    PlaceAll();
}

void TStage::Reshape(int piece, TShape shape) {
    m_tracer.Pieces[static_cast<std::size_t>(piece)].Shape = std::move(shape);
}

void TStage::SetEye(const TEye& eye) {
    m_eye = eye;
    SetVector(*m_camera.Position(), eye.Position);
    SetVector(*m_camera.Target(), eye.Target);
    m_camera.SetFOVY(eye.Field);
}

void TStage::SetMethod(TMethod method) {
    m_tracer.Method = method;
    Scene.SetFShadows(method != TMethod::NoShadows);
    Scene.SetAccumShadows(method == TMethod::Accumulated);
}

void TStage::Draw() {
    Scene.Render(&m_camera, Size, Size, false);
}

std::vector<TSample> TStage::Trace() const {
    std::vector<TSample> samples;
    for (int y = 0; y < Size; ++y)
        for (int x = 0; x < Size; ++x)
            samples.push_back(m_tracer.Trace(m_eye, (x + 0.5) / Size, (y + 0.5) / Size, 1));
    return samples;
}

} // namespace ZEP::Tracing
