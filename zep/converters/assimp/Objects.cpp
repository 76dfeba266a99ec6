#include <zep/converters/assimp/Objects.h>

#include <zep/appearance/effects/Light.h>
#include <zep/converters/Placing.h>
#include <zep/converters/ReadReport.h>
#include <zep/framework/Exception.h>
#include <zep/framework/ReadBudget.h>
#include <zep/objects/Line.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Point.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/view/Camera.h>

#include <assimp/scene.h>

#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr std::size_t BytesOfVertex = 72;
constexpr std::size_t BytesOfFace = 32;
constexpr std::size_t BytesOfObject = 512; // beside its class: its name, its places in lists
constexpr double DegreesOfRadian = 180 / std::numbers::pi;

QString TextOf(const aiString& text) {
    return QString::fromUtf8(text.C_Str());
}

TGLMatrixd4 MatrixOf(const aiMatrix4x4& m) {
    const auto row = [](float a, float b, float c, float d) {
        return TGLArrayd4{static_cast<double>(a), static_cast<double>(b), static_cast<double>(c),
                          static_cast<double>(d)};
    };
    return {row(m.a1, m.b1, m.c1, m.d1), row(m.a2, m.b2, m.c2, m.d2), row(m.a3, m.b3, m.c3, m.d3),
            row(m.a4, m.b4, m.c4, m.d4)};
}

TGLArrayd3 PointOf(const aiVector3D& point) {
    return {static_cast<double>(point.x), static_cast<double>(point.y),
            static_cast<double>(point.z)};
}

TGLArrayd3 Moved(const TGLMatrixd4& frame, TGLArrayd3 point) {
    Xformd(frame, point);
    return point;
}

/// Left and right change places in it.
bool Mirrors(const TGLMatrixd4& frame) {
    const auto axis = [&](std::size_t i) {
        return TGLArrayd3{frame[i][0], frame[i][1], frame[i][2]};
    };
    return Dotd(axis(0), Cross(axis(1), axis(2))) < 0;
}

/// Puts places where they belong, and counts numbers that are none, which would spoil every box.
class TPlaces {
public:
    TPlaces(const TGLMatrixd4& frame, qint64& strayNumbers)
        : m_frame(frame), m_strayNumbers(strayNumbers) {}

    [[nodiscard]] TGLArrayd3 operator()(const aiVector3D& point) const {
        TGLArrayd3 moved = Moved(m_frame, PointOf(point));
        for (double& value : moved) value = Finite(value);
        return moved;
    }
    [[nodiscard]] double Finite(double value) const {
        if (std::isfinite(value)) return value;
        ++m_strayNumbers;
        return 0;
    }

private:
    const TGLMatrixd4& m_frame;
    qint64& m_strayNumbers;
};

} // namespace

// --- nodes -------------------------------------------------------------------------------------

void TAssimpObjects::Make() {
    for (unsigned i = 0; i < m_model.mNumCameras; ++i)
        m_frames.try_emplace(TextOf(m_model.mCameras[i]->mName), WholeFrame());
    for (unsigned i = 0; i < m_model.mNumLights; ++i)
        m_frames.try_emplace(TextOf(m_model.mLights[i]->mName), WholeFrame());
    MakeNodes();
    for (unsigned i = 0; i < m_model.mNumCameras; ++i) MakeCamera(*m_model.mCameras[i]);
    for (unsigned i = 0; i < std::min(m_model.mNumLights, MaxLights); ++i)
        MakeLight(*m_model.mLights[i]);
    const auto report = [this](const char* kind, qint64 count) {
        if (count > 0) m_target.Report.Add(QLatin1StringView(kind), 0, count);
    };
    report("lights after the first 256", qint64(m_model.mNumLights) - MaxLights);
    if (m_model.mNumAnimations > 0)
        m_target.Report.AddMinor(QStringLiteral("animations"), 0, m_model.mNumAnimations);
    report("meshes with colours of their own for vertexes", m_coloredMeshes);
    report("numbers that are none (taken as 0)", m_strayNumbers);
}

// The way up that is used here is z.
TGLMatrixd4 TAssimpObjects::WholeFrame() const {
    TGLMatrixd4 frame = idd;
    if (m_target.Turned) frame = {{{1, 0, 0, 0}, {0, 0, 1, 0}, {0, -1, 0, 0}, {0, 0, 0, 1}}};
    return frame;
}

void TAssimpObjects::MakeNodes() {
    std::vector<TNode> open{{m_model.mRootNode, &m_target.Root, WholeFrame(), 0}};
    while (!open.empty()) {
        const TNode node = Entered(open.back());
        open.pop_back();
        if (const auto named = m_frames.find(TextOf(node.Node->mName)); named != m_frames.end())
            named->second = node.Frame;
        if (!node.Parent) continue; // somebody has freed it
        for (unsigned i = 0; i < node.Node->mNumMeshes && node.Parent; ++i)
            MakeMesh(*m_model.mMeshes[node.Node->mMeshes[i]], node);
        for (unsigned i = node.Node->mNumChildren; i-- > 0;)
            open.push_back({node.Node->mChildren[i], node.Parent, node.Frame, node.Depth});
    }
}

/// With its own frame, and the object that its contents come below.
TAssimpObjects::TNode TAssimpObjects::Entered(const TNode& node) {
    TNode entered = node;
    MultMatrixd(node.Frame, MatrixOf(node.Node->mTransformation), entered.Frame);
    const bool holdsSeveral = node.Node->mNumMeshes + node.Node->mNumChildren > 1;
    if (!node.Parent || !holdsSeveral || node.Node == m_model.mRootNode ||
        node.Depth >= DeepestNode)
        return entered;
    auto* group = Made<TZEPObject>(TextOf(node.Node->mName));
    entered.Parent = group;
    ++entered.Depth;
    PlaceBelow(group, node.Parent);
    return entered;
}

// --- objects -----------------------------------------------------------------------------------

void TAssimpObjects::TakeBytes(std::size_t bytes) const {
    if (m_target.Budget.Take(static_cast<qint64>(bytes))) return;
    throw Exception(QStringLiteral("the model needs more memory than its size allows."));
}

template <class T>
T* TAssimpObjects::Made(const QString& ident) {
    TakeBytes(sizeof(T) + BytesOfObject);
    auto* object = new T(&m_target.Root);
    object->SetIdent(ident);
    return object;
}

void TAssimpObjects::PlaceBelow(TZEPObject* object, TZEPObject* parent) const {
    static_cast<void>(Place(object, parent, m_target.Root));
}

void TAssimpObjects::TellProgress() {
    ++m_made;
    const double share = static_cast<double>(m_made) / std::max(1U, m_model.mNumMeshes);
    if (m_target.Progress && !m_target.Progress(std::min(share, 1.0))) throw TReadingEnd();
}

void TAssimpObjects::MakeMesh(const aiMesh& mesh, const TNode& node) {
    TellProgress();
    if (mesh.mNumFaces == 0) return MakePoints(mesh, node);
    if (mesh.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) return MakeTriangles(mesh, node);
    if (mesh.mPrimitiveTypes & aiPrimitiveType_LINE) return MakeLines(mesh, node);
    if (mesh.mPrimitiveTypes & aiPrimitiveType_POINT) MakePoints(mesh, node);
}

void TAssimpObjects::MakeTriangles(const aiMesh& from, const TNode& node) {
    TakeBytes(BytesOfVertex * from.mNumVertices + BytesOfFace * from.mNumFaces);
    const bool isOnly = node.Node->mNumMeshes == 1;
    auto* mesh = Made<TZEPMesh>(TextOf(isOnly ? node.Node->mName : from.mName));
    if (from.HasVertexColors(0)) ++m_coloredMeshes;
    const TPlaces place(node.Frame, m_strayNumbers);
    mesh->Vertexes()->AddEach(from.mNumVertices, [&](TZEPVertex3TexCI& vertex, std::size_t i) {
        vertex.SetPointQuietly(place(from.mVertices[i]));
        if (!from.HasTextureCoords(0)) return;
        const aiVector3D& picture = from.mTextureCoords[0][i];
        vertex.SetTexCoordQuietly(place.Finite(static_cast<double>(picture.x)),
                                  place.Finite(static_cast<double>(picture.y)));
    });
    const bool mirrors = Mirrors(node.Frame);
    const int material = m_target.FirstMaterial < 0
                             ? -1
                             : m_target.FirstMaterial + static_cast<int>(from.mMaterialIndex);
    mesh->Faces()->AddEach(from.mNumFaces, [&](TZEPFace3CI& face, std::size_t i) {
        const aiFace& corners = from.mFaces[i];
        if (corners.mNumIndices != 3) return;
        const auto corner = [&](unsigned k) { return static_cast<int>(corners.mIndices[k]); };
        // Outside stays outside.
        face.SetCornersQuietly(corner(0), corner(mirrors ? 2 : 1), corner(mirrors ? 1 : 2));
        face.SetMaterialIndexQuietly(material);
    });
    PlaceBelow(mesh, node.Parent);
}

TColor TAssimpObjects::ColorOf(const aiMesh& mesh, unsigned vertex) const {
    const aiColor4D color = mesh.HasVertexColors(0)
                                ? mesh.mColors[0][vertex]
                                : m_materials.Diffuse(*m_model.mMaterials[mesh.mMaterialIndex]);
    return TAssimpMaterials::ColorOf(color);
}

void TAssimpObjects::MakeLines(const aiMesh& from, const TNode& node) {
    const TPlaces place(node.Frame, m_strayNumbers);
    for (unsigned i = 0; i < from.mNumFaces && node.Parent; ++i) {
        const aiFace& ends = from.mFaces[i];
        if (ends.mNumIndices != 2 ||
            std::max(ends.mIndices[0], ends.mIndices[1]) >= from.mNumVertices)
            continue;
        auto* line = Made<TZEPLine>(TextOf(from.mName));
        line->SetColor(ColorOf(from, ends.mIndices[0]));
        line->P1()->SetData(place(from.mVertices[ends.mIndices[0]]));
        line->P2()->SetData(place(from.mVertices[ends.mIndices[1]]));
        PlaceBelow(line, node.Parent);
    }
}

void TAssimpObjects::MakePoints(const aiMesh& from, const TNode& node) {
    const TPlaces place(node.Frame, m_strayNumbers);
    for (unsigned i = 0; i < from.mNumVertices && node.Parent; ++i) {
        auto* point = Made<TZEPPoint>(TextOf(from.mName));
        point->SetColor(ColorOf(from, i));
        point->P()->SetData(place(from.mVertices[i]));
        PlaceBelow(point, node.Parent);
    }
}

void TAssimpObjects::MakeCamera(const aiCamera& from) {
    auto* camera = Made<TZEPCamera>(TextOf(from.mName));
    const TPlaces place(m_frames.at(TextOf(from.mName)), m_strayNumbers);
    const TGLArrayd3 eye = place(from.mPosition);
    camera->Position()->SetData(eye);
    camera->Target()->SetData(place(from.mPosition + from.mLookAt));
    camera->Up()->SetData(place(from.mPosition + from.mUp) - eye);
    const double across = std::tan(place.Finite(static_cast<double>(from.mHorizontalFOV)) / 2);
    const double aspect = from.mAspect > 0 ? static_cast<double>(from.mAspect) : 1;
    if (across > 0) camera->SetFOVY(2 * std::atan(across / aspect) * DegreesOfRadian);
    if (from.mClipPlaneNear > 0 && from.mClipPlaneFar > from.mClipPlaneNear) {
        camera->SetNearClipPlane(place.Finite(static_cast<double>(from.mClipPlaneNear)));
        camera->SetFarClipPlane(place.Finite(static_cast<double>(from.mClipPlaneFar)));
    }
    PlaceBelow(camera, &m_target.Root);
}

void TAssimpObjects::MakeLight(const aiLight& from) {
    auto* light = Made<TZEPLight>(TextOf(from.mName));
    const TPlaces place(m_frames.at(TextOf(from.mName)), m_strayNumbers);
    const bool isFar = from.mType == aiLightSource_DIRECTIONAL;
    const TGLArrayd3 start = place(from.mPosition);
    const TGLArrayd3 aim = place(from.mPosition + from.mDirection);
    light->Position()->SetData(isFar ? start - aim : start);
    const aiColor3D& color = from.mColorDiffuse;
    light->SetColor(TAssimpMaterials::ColorOf(aiColor4D(color.r, color.g, color.b, 1)));
    if (from.mType == aiLightSource_SPOT) {
        light->Target()->SetData(aim);
        light->SetCutoff(static_cast<float>(
            place.Finite(static_cast<double>(from.mAngleOuterCone)) / 2 * DegreesOfRadian));
        light->SetDirectional(true);
    }
    PlaceBelow(light, &m_target.Root);
}

} // namespace ZEP
