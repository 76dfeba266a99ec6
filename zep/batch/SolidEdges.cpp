#include <zep/batch/SolidEdges.h>

#include <zep/framework/Exception.h>
#include <zep/gl/Feedback.h>
#include <zep/gl/Scopes.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Solid.h>
#include <zep/scene/Frame.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vectors.h>

#include <QMetaProperty>
#include <QScopedValueRollback>

#include <cmath>
#include <initializer_list>

namespace ZEP {

namespace {

constexpr int Side = 4096;         // pixels of the picture that a solid is looked at in
constexpr double Joins = 1.0 / 64; // pixels: the same place, but for rounding

/// Looks at a ball about a box from where hardly any face is seen edge on, which OpenGL would pass
/// over. Nothing is cut off or hidden.
class TSight {
public:
    TSight(const TGLArrayd3& min, const TGLArrayd3& max)
        : m_middle((min + max) / 2), m_reach(Length(max - min) * 0.6) {
        m_axes[2] = Unit({0.3119, 0.4703, 0.8247});
        m_axes[0] = Unit(Cross({0.1093, 0.9137, -0.2011}, m_axes[2]));
        m_axes[1] = Cross(m_axes[2], m_axes[0]);
    }

    void Load() const {
        glViewport(0, 0, Side, Side);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-m_reach, m_reach, -m_reach, m_reach, -m_reach, m_reach);
        glMatrixMode(GL_MODELVIEW);
        TGLMatrixd4 view = idd;
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t k = 0; k < 3; ++k) view[k][i] = m_axes[i][k];
            view[3][i] = -Dotd(m_axes[i], m_middle);
        }
        glLoadMatrixd(view[0].data());
    }
    /// \param at  x, y, z in the window
    [[nodiscard]] TGLArrayd3 Place(std::span<const GLfloat> at) const {
        const auto along = [this](double pixels) {
            return (2 * std::round(pixels / Joins) * Joins / Side - 1) * m_reach;
        };
        return m_middle + m_axes[0] * along(static_cast<double>(at[0])) +
               m_axes[1] * along(static_cast<double>(at[1])) -
               m_axes[2] * along(static_cast<double>(at[2]) * Side);
    }

private:
    TGLArrayd3 m_middle;
    double m_reach;
    std::array<TGLArrayd3, 3> m_axes{};
};

/// What a solid draws, as fans of triangles.
void TakeFaces(TZEPSolid& solid, TZEPFrame& frame, const TSight& sight, TZEPMesh& mesh) {
    TZEPFeedback feedback;
    const TZEPAttribScope state(GL_VIEWPORT_BIT | GL_ENABLE_BIT | GL_POLYGON_BIT);
    const TZEPMatricesScope matrices;
    for (const GLenum off : std::initializer_list<GLenum>{
             GL_CULL_FACE, GL_LIGHTING, GL_POLYGON_OFFSET_FILL, GL_CLIP_PLANE0, GL_CLIP_PLANE1,
             GL_CLIP_PLANE2, GL_CLIP_PLANE3, GL_CLIP_PLANE4, GL_CLIP_PLANE5})
        glDisable(off);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    sight.Load();
    const auto tokens = feedback.Render([&] {
        const QScopedValueRollback feedsBack(frame.IsNotRendering, true);
        solid.DrawSpecific(GL_FRONT_AND_BACK, false);
    });
    std::vector<TGLArrayd3> places;
    std::vector<std::array<int, 3>> faces;
    ForEachPolygon(tokens, [&](std::span<const GLfloat> corners) {
        const auto first = static_cast<int>(places.size());
        for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
            places.push_back(sight.Place(corners.subspan(i, 3)));
        for (int last = first + 2; last < static_cast<int>(places.size()); ++last)
            faces.push_back({first, last - 1, last});
    });
    mesh.Vertexes()->AddEach(places.size(), [&](TZEPVertex3TexCI& vertex, std::size_t i) {
        vertex.SetPointQuietly(places[i]);
    });
    mesh.Faces()->AddEach(faces.size(), [&](TZEPFace3CI& face, std::size_t i) {
        face.SetCornersQuietly(faces[i][0], faces[i][1], faces[i][2]);
    });
}

} // namespace

const TMeshEdges* TSolidEdges::Of(TZEPObject& object, TZEPSceneContext& scene) {
    auto* solid = qobject_cast<TZEPSolid*>(&object);
    if (!solid || !TZEPKnownClass::Is(typeid(object))) return nullptr;
    TKept& kept = m_kept[&object];
    if (!kept.Of) kept = {&object, Shared(*solid, scene)};
    return kept.Edges.get();
}

TSolidEdges::TEdges TSolidEdges::Shared(TZEPSolid& solid, TZEPSceneContext& scene) {
    std::weak_ptr<const TMeshEdges>& shared = m_shared[KeyOf(solid)];
    if (TEdges known = shared.lock()) return known;
    TGLArrayd3 min, max;
    solid.GetSize(min, max);
    scene.Frame().Run.End();
    TZEPMesh mesh;
    try {
        if (Length(max - min) > 0) TakeFaces(solid, scene.Frame(), TSight(min, max), mesh);
    } catch (const Exception&) { // it draws lines, too
        mesh.Faces()->Clear();
    }
    const auto edges = std::make_shared<const TMeshEdges>(mesh);
    shared = edges;
    return edges;
}

/// Its own published numbers.
TSolidEdges::TKey TSolidEdges::KeyOf(const TZEPSolid& solid) {
    TKey key{typeid(solid), {}};
    const QMetaObject& type = *solid.metaObject();
    for (int i = TZEPSolid::staticMetaObject.propertyCount(); i < type.propertyCount(); ++i) {
        const QVariant value = type.property(i).read(&solid);
        key.second.push_back(value.canConvert<double>() ? value.toDouble() : value.toInt());
    }
    return key;
}

void TSolidEdges::Doubt(const TZEPObject& object) {
    m_kept.erase(&object);
}

void TSolidEdges::ForgetFreed() {
    std::erase_if(m_kept, [](const auto& kept) { return !kept.second.Of; });
    std::erase_if(m_shared, [](const auto& shared) { return shared.second.expired(); });
}

} // namespace ZEP
