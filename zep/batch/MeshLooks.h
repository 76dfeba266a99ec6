#pragma once

#include <zep/batch/MeshEdges.h>
#include <zep/batch/SmoothMesh.h>
#include <zep/batch/SolidEdges.h>
#include <zep/batch/Steps.h>

#include <QPointer>

#include <memory>
#include <unordered_map>

namespace ZEP {

/// Of all that shapes, normals and edges of a mesh depend on.
[[nodiscard]] std::size_t SignatureOf(TZEPMesh& mesh);

/// What is made of meshes, each when it is first asked for, and again when the mesh has changed.
template <class TMade>
class TMadeOfMeshes {
public:
    [[nodiscard]] const TMade& Of(TZEPMesh& mesh) {
        TKept& kept = m_kept[&mesh];
        if (!kept.Of || kept.IsDoubtful) Renew(kept, mesh);
        return *kept.Made;
    }
    /// It may have changed, or be another one.
    void Doubt(const TZEPObject& object) {
        if (const auto kept = m_kept.find(&object); kept != m_kept.end())
            kept->second.IsDoubtful = true;
    }
    void ForgetFreed() {
        std::erase_if(m_kept, [](const auto& kept) { return !kept.second.Of; });
    }

private:
    struct TKept {
        QPointer<TZEPMesh> Of;
        std::unique_ptr<TMade> Made;
        std::size_t Signature = 0; ///< of what it was made of
        bool IsDoubtful = false;
    };

    static void Renew(TKept& kept, TZEPMesh& mesh) {
        const std::size_t signature = SignatureOf(mesh);
        if (!kept.Of || kept.Signature != signature) kept.Made = std::make_unique<TMade>(mesh);
        kept = {&mesh, std::move(kept.Made), signature, false};
    }

    std::unordered_map<const TZEPObject*, TKept> m_kept;
};

/// How the meshes of a layer look that do not draw themselves, or not alone.
class TMeshLooks {
public:
    /// Makes what the first frame would make.
    /// \param steps  told of each face
    void Prepare(TZEPObject& object, bool smooth, bool edges, TSteps& steps);
    /// With smooth normals.
    /// \param sorted  transparent faces from the farthest on
    /// \return false for what is no mesh, or one that has a shading of its own, and in passes that
    ///         do not show it
    bool DrawSmooth(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state, bool sorted);
    /// In passes that show it; nothing for what is no mesh and no solid.
    void DrawEdges(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state,
                   const TGLArrayf3& color);
    /// It may have changed, or be another one.
    void Doubt(const TZEPObject& object);
    void ForgetFreed();

private:
    TMadeOfMeshes<TSmoothMesh> m_smooth;
    TMadeOfMeshes<TMeshEdges> m_edges;
    TSolidEdges m_solids;
};

} // namespace ZEP
