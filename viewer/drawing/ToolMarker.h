#pragma once

#include <zep/objects/Node.h>

namespace ZEP {

class TZEPBatch;
class TZEPScene;

/// A tool that stands in the view with its tip where a path has come to: a cylinder of its
/// diameter, or where that is not known a cone, whose size goes with the view. It is no content: it
/// is neither selected nor fitted nor saved, and no light of the scene falls on it.
class TToolMarker : public TZEPNode {
    Q_OBJECT
public:
    /// Invisible at first. \param scene  owns it
    explicit TToolMarker(TZEPScene* scene);

    /// \param diameter  in the unit of the scene; 0: not known
    void SetDiameter(double diameter);
    /// Absolute.
    void Put(const TGLArrayd3& tip);

    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;
    void DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;

private:
    void Make();
    void AddFace(std::initializer_list<TGLArrayd3> corners);
    [[nodiscard]] double HeightInView();

    TZEPBatch* m_faces; ///< a child
    double m_diameter = 0;
};

} // namespace ZEP
