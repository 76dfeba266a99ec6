#pragma once

#include <zep/objects/HeightField.h>
#include <zep/view/Extent.h>

namespace ZEP {

/// A floor that the view lays below its content: shadows fall on it, and it mirrors a little. It is
/// no content itself: it is not selected, and seen from below it is not there.
class TGround : public TZEPHeightField {
    Q_OBJECT
public:
    /// \param scene  owns it
    explicit TGround(TZEPScene* scene);

    /// Lies at the foot of the content, and reaches beyond it.
    void LieBelow(const TZEPBounds& content);
    /// It goes well with that background.
    void Suit(TColor background);
    /// No light falls on it but what is all around.
    void SetEven(bool even) { m_even = even; }

    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;
    void DrawSpecific(GLenum face, bool draft) override;

private:
    bool m_even = false;
};

} // namespace ZEP
