#pragma once

#include <zep/scene/DrawPasses.h>
#include <zep/scene/Geom.h>

#include <QPointer>

#include <memory>
#include <unordered_map>
#include <vector>

#include <GL/gl.h>

namespace ZEP {

class TZEPMaterial;
class TZEPMesh;
class TZEPObject;
class TZEPSceneContext;

/// The triangles of a mesh with its `SmoothNormals`.
class TSmoothMesh {
public:
    explicit TSmoothMesh(TZEPMesh& mesh);
    /// The mesh is still what this was made of: it must be when this draws.
    [[nodiscard]] bool IsOf(TZEPMesh& mesh) const;

    /// As the mesh draws itself in the passes that show it, without its selection.
    void Draw(TZEPMesh& mesh, TZEPSceneContext& scene, TZEPDrawState state) const;

private:
    /// Neighbours that have one material: that of a face.
    struct TRun {
        int Face;
        std::size_t First, Count; // of the corners
    };

    void AddFace(TZEPMesh& mesh, int index, const TGLArrayf3* normals);
    void DrawCorners(const TRun& run, bool textured) const;

    // one for each corner of a face
    std::vector<TGLArrayf3> m_points, m_normals;
    std::vector<std::array<float, 2>> m_pictures; ///< places in the texture
    std::vector<TRun> m_runs;
    std::size_t m_signature; ///< of what it was made of
};

/// The smooth meshes of a layer, made when they are first drawn.
class TSmoothMeshes {
public:
    /// \return false for what is no mesh, or one that has a shading of its own, and in passes that
    ///         do not show it
    bool Draw(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state);
    /// It may have changed, or be another one.
    void Doubt(const TZEPObject& object);
    void ForgetFreed();

private:
    struct TKept {
        QPointer<TZEPMesh> Of;
        std::unique_ptr<TSmoothMesh> Mesh;
        bool IsDoubtful = false;
    };

    std::unordered_map<const TZEPObject*, TKept> m_meshes;
};

} // namespace ZEP
