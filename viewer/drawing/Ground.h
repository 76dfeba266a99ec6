#pragma once

#include "viewer/content/Box.h"
#include <zep/objects/HeightField.h>

namespace ZEP {

/// A floor that the view lays below its content: shadows fall on it, and it mirrors a little. It is
/// no content itself: it is not selected, and seen from below it is not there.
class TGround : public TZEPHeightField {
    Q_OBJECT
public:
    /// \param scene  owns it
    explicit TGround(TZEPScene* scene);

    /// Lies at the foot of the content, and reaches beyond it.
    void LieBelow(const TBox& content);
    /// It goes well with that background.
    void Suit(TColor background);

    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;
    void DrawSpecific(GLenum face, bool draft) override;
};

} // namespace ZEP
