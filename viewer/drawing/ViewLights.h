#pragma once

#include <zep/view/Extent.h>
#include <zep/view/Headlight.h>

namespace ZEP {

/// A light that stands still and casts shadows: from the left, the front and above.
class TSunLight : public TZEPViewLight {
    Q_OBJECT
public:
    /// \param scene  owns it
    explicit TSunLight(TZEPScene* scene);
    /// Moves to where the content lies far below it.
    void ShineOn(const TZEPBounds& content);
    void DrawLight(bool shadowPass) override;
};

/// How far off a light has to be that shines on all of the content in one direction.
[[nodiscard]] double FarFrom(const TZEPBounds& content);

} // namespace ZEP
