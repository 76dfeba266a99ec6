#include "tests/tracing/Stage.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <algorithm>
#include <cmath>

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

TVector VectorAt(const TWords& words, std::size_t place) {
    return {words.Number(place), words.Number(place + 1), words.Number(place + 2)};
}

TVector VectorOf(const TWords& words, const std::string& keyword, const TVector& otherwise = {}) {
    return words.Has(keyword) ? VectorAt(words, words.After(keyword)) : otherwise;
}

TPlace PlaceOf(const TWords& words) {
    return {VectorOf(words, "at"), VectorOf(words, "turn"), VectorOf(words, "scale", {1, 1, 1})};
}

TLook LookOf(const TWords& words) {
    static const std::map<std::string, TLook> looks{
        {"", {}},
        {"ground", {.Matte = {1, 1, 1}, .Receives = true}},
        {"plain", {.Matte = {1, 1, 1}}},
        {"caster", {.Glow = {0.4, 0.4, 0.1}, .Casts = true}},
        {"both", {.Matte = {1, 1, 1}, .Casts = true, .Receives = true}},
        {"red", {.Glow = {0.3, 0, 0}, .Matte = {0.6, 0, 0}}},
        {"green", {.Glow = {0, 0.3, 0}, .Matte = {0, 0.6, 0}}},
        {"glow", {.Glow = {0, 0.3, 0.3}}},
        {"lemon", {.Glow = {0.4, 0.4, 0}}},
        {"wall", {.Glow = {0.3, 0.2, 0}, .Matte = {0.3, 0.3, 0.3}}},
        {"glass", {.Glow = {0.1, 0.2, 0.1}, .Matte = {0.5, 0.5, 0.5}, .Mirror = 0.7}},
        {"dark", {.Glow = {0.1, 0.2, 0.1}, .Mirror = 0.7}},
        {"water", {.Matte = {1, 1, 1}, .Receives = true, .Mirror = 0.5}}};
    TLook look = looks.at(words.Word("look"));
    look.Casts = look.Casts || words.Has("casts");
    look.Receives = look.Receives || words.Has("receives");
    return look;
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

/// The letter U of 3 by 3, from (0, 0) on.
const TCorners& LetterU() {
    static const TCorners corners{{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {2, 3, 0},
                                  {2, 1, 0}, {1, 1, 0}, {1, 3, 0}, {0, 3, 0}};
    return corners;
}

/// In the plane z = 0.
TCorners OutlineOf(const std::string& name) {
    if (name == "square") return {{-0.5, -0.5, 0}, {0.5, -0.5, 0}, {0.5, 0.5, 0}, {-0.5, 0.5, 0}};
    if (name == "triangle") return {{-0.5, -0.5, 0}, {0.5, -0.5, 0}, {0, 0.5, 0}};
    TCorners corners = LetterU();
    if (name == "clockwise-u") std::ranges::reverse(corners);
    if (name == "u")
        for (TVector& corner : corners) corner = (corner - TVector{1.5, 1.5, 0}) * (1.0 / 3);
    return corners;
}

} // namespace

void TStage::Do(const std::string& line) {
    static const std::map<std::string, void (TStage::*)(const TWords&)> verbs{
        {"ground", &TStage::AddGround},
        {"frame", &TStage::AddFrame},
        {"ball", &TStage::AddBall},
        {"box", &TStage::AddBox},
        {"sheet", &TStage::AddSheet},
        {"roof", &TStage::AddRoof},
        {"letter", &TStage::AddLetter},
        {"polygon", &TStage::AddPolygon},
        {"proxy", &TStage::AddProxy},
        {"carving", &TStage::AddCarving},
        {"lamp", &TStage::AddLamp},
        {"move", &TStage::Move},
        {"bend", &TStage::Bend},
        {"eye", &TStage::SetEye},
        {"shadows", &TStage::ChooseMethods}};
    const TWords words(line);
    (this->*verbs.at(words.Verb()))(words);
}

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

int TStage::PieceOf(const std::string& name) const {
    return name.empty() ? NoPiece : m_named.at(name);
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

int TStage::Add(TZEPObject& object, TShape shape, const TWords& words) {
    const int parent = PieceOf(words.Word("on"));
    const TLook look = LookOf(words);
    object.SetParentComponent(&ObjectOf(parent));
    SetPlace(object, PlaceOf(words));
    SetLook(object, look);
    const int piece = Note({&object, TFrame(PlaceOf(words)), parent}, std::move(shape), look);
    if (words.Has("as")) m_named[words.Word("as")] = piece;
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

void TStage::AddGround(const TWords&) {
    Do("eye 2 -9 6 to 0 0 0.5");
    Do("sheet scale 9 9 1 look ground");
}

void TStage::AddFrame(const TWords& words) {
    Add<TZEPObject>(nullptr, words);
}

void TStage::AddBall(const TWords& words) {
    auto& ball = Add<TZEPSphere>(Ball(), words);
    ball.SetSmooth(true);
    ball.SetSlices(Cells);
    ball.SetStacks(Cells);
}

void TStage::AddBox(const TWords& words) {
    auto& box = Add<TZEPBox>(Box(), words);
    for (const int axis : {0, 1, 2}) box.SetSlices(axis, LookOf(words).Receives ? Cells / 2 : 1);
}

/// A square of fine cells that is seen from above.
void TStage::AddSheet(const TWords& words) {
    const TShape square =
        Flat([](double x, double y) { return std::max(std::abs(x), std::abs(y)) < 0.5; }, true);
    auto& sheet = Add<TZEPHeightField>(square, words);
    sheet.SetSmooth(true);
    sheet.SetSlicesX(Cells);
    sheet.SetSlicesY(Cells);
}

/// The surface z = 0.5 - |x| over a square, drawn in an even number of cells.
void TStage::AddRoof(const TWords& words) {
    const TCorners corners{{-0.5, -0.5, 0}, {0, -0.5, 0.5}, {0.5, -0.5, 0},
                           {-0.5, 0.5, 0},  {0, 0.5, 0.5},  {0.5, 0.5, 0}};
    Add<TZEPHeightField>(Triangles(corners, {{0, 1, 4}, {0, 4, 3}, {1, 2, 5}, {1, 5, 4}}), words)
        .SetOnHeight([](double x, double) { return 0.5 - std::abs(x); });
}

/// The letter U as a solid of 1 by 1 by 1/3, from the origin on.
void TStage::AddLetter(const TWords& words) {
    TCorners corners;
    for (const double z : {0.0, 1.0})
        for (const TVector& corner : LetterU())
            corners.push_back((corner + TVector{0, 0, z}) * (1.0 / 3));
    TTriangles triangles;
    for (const auto& [a, b, c] :
         TTriangles{{1, 2, 3}, {1, 3, 4}, {0, 1, 4}, {0, 4, 5}, {0, 5, 6}, {0, 6, 7}}) {
        triangles.push_back({c, b, a});
        triangles.push_back({a + 8, b + 8, c + 8});
    }
    for (int i = 0; i < 8; ++i) {
        const int next = (i + 1) % 8;
        triangles.push_back({i, next, next + 8});
        triangles.push_back({i, next + 8, i + 8});
    }
    auto& mesh = Add<TZEPMesh>(Triangles(corners, triangles), words);
    AddCorners(*mesh.Vertexes(), corners);
    for (const auto& [a, b, c] : triangles) {
        TZEPFace3CI* face = mesh.Faces()->Add();
        face->SetA(a);
        face->SetB(b);
        face->SetC(c);
    }
}

void TStage::AddPolygon(const TWords& words) {
    const TCorners corners = OutlineOf(words.Word("of"));
    auto& polygon = Add<TZEPPolygon>(Flat(corners), words);
    AddCorners(*polygon.Vertexes(), corners);
    polygon.SetColorVertexes(false);
    polygon.SetConcave(!words.Has("convex"));
    polygon.SetUseDisplayList(!words.Has("unlisted"));
}

void TStage::AddProxy(const TWords& words) {
    const int target = PieceOf(words.Word("of"));
    auto* proxy = new TZEPProxy(&Scene);
    const int own = Add(*proxy, nullptr, words);
    proxy->SetProxy(&ObjectOf(target));
    std::map<int, int> shown;
    for (int i = target; i < own; ++i) {
        const TOrigin origin = m_origins[static_cast<std::size_t>(i)];
        if (i != target && !shown.contains(origin.Parent)) continue;
        const TPiece piece = m_tracer.Pieces[static_cast<std::size_t>(i)];
        TLook look = piece.Look;
        if (i == target) look.Receives = words.Has("receives");
        const int above = i == target ? own : shown.at(origin.Parent);
        shown[i] = Note({origin.Object, origin.Frame, above}, piece.Shape, look);
    }
}

void TStage::AddCarving(const TWords& words) {
    auto* carving = new TZEPLogicalObject(&Scene);
    m_carvings.push_back(Add(*carving, nullptr, words));
    const TSetOperation operation = words.Has("union")    ? TSetOperation::Union
                                    : words.Has("common") ? TSetOperation::Common
                                                          : TSetOperation::Difference;
    carving->SetOperation(operation == TSetOperation::Union    ? loOR
                          : operation == TSetOperation::Common ? loAND
                                                               : loSUB);
    m_tracer.Carvings.push_back({operation, NoPiece, NoPiece});
}

void TStage::AddLamp(const TWords& words) {
    const TLamp lamp{VectorOf(words, "at"), VectorOf(words, "color"), !words.Has("parallel"),
                     !words.Has("still"), words.Has("exact")};
    const int parent = PieceOf(words.Word("on"));
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
}

/// What stands on something comes after it.
void TStage::PlaceAll() {
    for (std::size_t i = 0; i < m_origins.size(); ++i)
        m_tracer.Pieces[i].SetFrame(FrameOf(m_origins[i].Parent).Outer(m_origins[i].Frame));
    for (std::size_t i = 0; i < m_lampOrigins.size(); ++i)
        m_tracer.Lamps[i].Position =
            FrameOf(m_lampOrigins[i].Parent).Point(m_lampOrigins[i].Position);
}

void TStage::Move(const TWords& words) {
    TZEPObject& object = ObjectOf(PieceOf(words.Word("of")));
    SetPlace(object, PlaceOf(words));
    for (TOrigin& origin : m_origins)
        if (origin.Object == &object) origin.Frame = TFrame(PlaceOf(words));
    PlaceAll();
}

void TStage::Bend(const TWords& words) {
    const int piece = PieceOf(words.Word("as"));
    auto& vertexes = *qobject_cast<TZEPPolygon*>(&ObjectOf(piece))->Vertexes();
    TCorners corners = OutlineOf(words.Word("of"));
    corners.back() = VectorOf(words, "at");
    vertexes.Item(vertexes.Count() - 1)
        ->SetPoint({corners.back().X, corners.back().Y, corners.back().Z});
    m_tracer.Pieces[static_cast<std::size_t>(piece)].Shape = Flat(corners);
}

void TStage::SetEye(const TWords& words) {
    m_eye = {VectorAt(words, 1), VectorOf(words, "to"),
             words.Has("field") ? words.Number(words.After("field")) : TEye().Field};
    SetVector(*m_camera.Position(), m_eye.Position);
    SetVector(*m_camera.Target(), m_eye.Target);
    m_camera.SetFOVY(m_eye.Field);
}

void TStage::ChooseMethods(const TWords& words) {
    m_methods.clear();
    if (!words.Has("accumulated")) m_methods.push_back(TMethod::Subtracted);
    if (!words.Has("subtracted")) m_methods.push_back(TMethod::Accumulated);
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
