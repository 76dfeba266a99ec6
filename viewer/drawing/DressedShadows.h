#pragma once

#include "viewer/drawing/SwitchedObjects.h"
#include <zep/view/Extent.h>

namespace ZEP {

class TZEPLight;

/// Makes what was made without shadows cast them: what has faces casts them and has them fall on
/// it, and lights cast. What has some of these choices of its own keeps them, file by file, and so
/// do files of thousands of faces that are objects of their own: each would need a volume of its
/// own for each light.
class TDressedShadows {
public:
    /// \param content  of the scene
    void Apply(TZEPScene& scene, const TZEPBounds& content);
    /// All is as it was. What was changed since stays.
    void Restore();

private:
    /// A light at infinity that was moved along its direction, since it casts from where it stands.
    struct TMovedLight {
        QPointer<TZEPObject> Light;
        TGLArrayd3 Was, Now;
    };

    void Switch(const std::vector<TZEPObject*>& group, const TZEPBounds& content);
    void SwitchLight(TZEPLight& light, const TZEPBounds& content);
    void MoveAway(TZEPLight& light, const TZEPBounds& content);

    TSwitchedObjects m_surfaces;
    TSwitchedObjects m_lights;
    TSwitchedObjects m_exact; ///< of them: models are seldom convex
    std::vector<TMovedLight> m_moved;
};

} // namespace ZEP
