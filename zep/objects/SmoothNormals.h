#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <vector>

namespace ZEP {

class TZEPMesh;

/// Normals that make the faces of a mesh run into each other where they meet at a small angle;
/// edges stay sharp. Vertexes at the same place count as one, so that seams of textures do not
/// show. Larger faces count for more.
/// \param angle  degrees between two faces, 0 .. 180, from which on an edge is sharp
/// \return one of length 1 for each corner: of face i those of A, B and C at 3i, 3i + 1 and 3i + 2.
///         Zero where a face names a vertex that does not exist, or has no area. Corners where
///         more than 200 faces meet have the normals of their faces.
[[nodiscard]] ZEP_CORE_EXPORT std::vector<TGLArrayf3> SmoothNormals(TZEPMesh& mesh,
                                                                    double angle = 41.4);

} // namespace ZEP
