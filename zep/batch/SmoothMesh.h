#pragma once

#include <zep/scene/DrawPasses.h>
#include <zep/scene/Geom.h>

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
    /// As the mesh that it was made of draws itself in the passes that show it, without its
    /// selection.
    /// \param sorted  what is transparent, from the farthest triangle on
    void Draw(TZEPMesh& mesh, TZEPSceneContext& scene, TZEPDrawState state, bool sorted) const;

private:
    /// Neighbours that have one material: that of a face.
    struct TRun {
        int Face;
        std::size_t First, Count; // of the corners
    };

    void AddFace(TZEPMesh& mesh, int index, const TGLArrayf3* normals);
    void DrawCorners(const TRun& run, bool textured, bool sorted) const;
    [[nodiscard]] std::vector<GLuint> CornersByDepth(const TRun& run) const;

    // one for each corner of a face
    std::vector<TGLArrayf3> m_points, m_normals;
    std::vector<std::array<float, 2>> m_pictures; ///< places in the texture
    std::vector<TRun> m_runs;
};

} // namespace ZEP
