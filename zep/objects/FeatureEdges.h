#pragma once

#include <zep/Export.h>

#include <array>
#include <vector>

namespace ZEP {

class TZEPMesh;

/// The edges of a mesh, each once.
struct TZEPFeatureEdges {
    struct TSmooth {
        std::array<int, 2> Vertexes;
        std::array<int, 2> Faces; ///< on both sides
        bool SameWay;             ///< both show the same side, as their vertexes go round
    };

    /// Numbers of both vertexes of each edge that tells the form: where the mesh ends, where two
    /// faces meet at an angle, and where more than two meet.
    std::vector<std::array<int, 2>> Sharp;
    /// The others. From some places they are on the outline.
    std::vector<TSmooth> Smooth;
};

/// Vertexes at the same place count as one.
/// \param angle  degrees between two faces, 0 .. 180, from which on their edge is sharp
/// \return without edges of faces that name a vertex that does not exist, or have no area
[[nodiscard]] ZEP_CORE_EXPORT TZEPFeatureEdges FeatureEdges(TZEPMesh& mesh, double angle = 30);

} // namespace ZEP
