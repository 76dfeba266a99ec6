#pragma once

#include <zep/scene/DrawPasses.h>
#include <zep/scene/Geom.h>

#include <memory>
#include <unordered_map>
#include <vector>

#include <GL/gl.h>

namespace ZEP {

class TZEPMaterial;
class TZEPMesh;
class TZEPObject;
class TZEPSceneContext;

/// The triangles of a mesh with normals that make them run into each other where they meet at a
/// small angle; edges stay sharp. Vertexes at the same place count as one, so that seams of
/// textures do not show. It holds what it was made of: the mesh must not have changed when it
/// draws.
class TSmoothMesh {
public:
    explicit TSmoothMesh(TZEPMesh& mesh);

    /// As the mesh draws itself in the passes that show it, in that of shadows on it without its
    /// selection.
    void Draw(TZEPMesh& mesh, TZEPSceneContext& scene, TZEPDrawState state) const;

private:
    /// Neighbours that have one material: that of a face.
    struct TRun {
        int Face;
        std::size_t First, Count; // of the corners
    };
    class TBuilder;

    void DrawRun(const TRun& run, TZEPMaterial& material) const;

    // one for each corner of a face
    std::vector<TGLArrayf3> m_points, m_normals;
    std::vector<std::array<float, 2>> m_pictures; ///< places in the texture
    std::vector<TRun> m_runs;
};

/// The smooth meshes of a file, made when they are first drawn.
class TSmoothMeshes {
public:
    /// \return false for what is no mesh, or one that has a shading of its own, and in passes that
    ///         do not show it
    bool Draw(TZEPObject& object, TZEPSceneContext& scene, TZEPDrawState state);
    /// It has changed. One that was only hidden or shown stays as it is.
    void NoteChange(TZEPObject& object);
    /// It has gone, maybe with what is below it.
    void Forget(const TZEPObject* gone);
    void Clear() { m_meshes.clear(); }

private:
    struct TKept {
        std::unique_ptr<TSmoothMesh> Mesh;
        bool WasVisible;
    };

    std::unordered_map<const TZEPObject*, TKept> m_meshes;
};

} // namespace ZEP
