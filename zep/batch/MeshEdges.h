#pragma once

#include <zep/objects/FeatureEdges.h>
#include <zep/scene/DrawPasses.h>
#include <zep/scene/Geom.h>

#include <optional>

namespace ZEP {

class TZEPMesh;
class TZEPObject;
class TZEPSceneContext;

/// The sharp edges of a mesh or a solid, and those that are on its outline from where it is seen.
class TMeshEdges {
public:
    explicit TMeshEdges(TZEPMesh& mesh);
    /// \param object  that shows what it was made of
    /// \param color   0 .. 1
    void Draw(TZEPObject& object, TZEPSceneContext& scene, const TGLArrayf3& color) const;

private:
    /// Where a mesh is seen from: a place, or with `IsFar` all places that way.
    struct TEye {
        TGLArrayd3 At;
        bool IsFar;
    };
    struct TPlane {
        TGLArrayf3 Normal;
        float Distance; ///< from the origin, along the normal
    };

    [[nodiscard]] static std::optional<TEye> EyeOfContext();
    [[nodiscard]] std::vector<TGLArrayf3> OutlineFrom(const TEye& eye) const;
    [[nodiscard]] std::vector<bool> FacesTo(const TEye& eye) const;

    std::vector<TGLArrayf3> m_sharp; ///< two places for each edge
    std::vector<TZEPFeatureEdges::TSmooth> m_smooth;
    std::vector<TGLArrayf3> m_vertexes; ///< that the smooth ones name
    std::vector<TPlane> m_planes;       ///< likewise, of faces
};

} // namespace ZEP
