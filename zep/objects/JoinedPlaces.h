#pragma once

#include <zep/objects/Mesh.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace ZEP {

/// A number for each vertex of a mesh, from 0 on: those at the same place, at both sides of a seam
/// say, have the same one.
struct TJoinedPlaces {
    explicit TJoinedPlaces(TZEPMesh& mesh) {
        const auto& vertexes = *mesh.Vertexes();
        std::vector<int> order(static_cast<std::size_t>(vertexes.Count()));
        std::iota(order.begin(), order.end(), 0);
        const auto at = [&](int i) -> const TGLArrayd3& { return vertexes[i].Data(); };
        // What is no number would have no order.
        std::erase_if(order, [&](int i) { return at(i) != at(i); });
        std::sort(order.begin(), order.end(), [&](int a, int b) { return at(a) < at(b); });
        Of.assign(static_cast<std::size_t>(vertexes.Count()), 0);
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (i > 0 && at(order[i]) != at(order[i - 1])) ++Last;
            Of[static_cast<std::size_t>(order[i])] = Last;
        }
    }

    std::vector<std::size_t> Of; ///< each vertex
    std::size_t Last = 0;
};

} // namespace ZEP
