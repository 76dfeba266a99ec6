#pragma once

#include "viewer/drawing/DressedShadows.h"
#include "viewer/drawing/LookChoices.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>

namespace ZEP {

class TZEPHeadlight;
class TGround;
class TSunLight;
class TZEPPanel;
class TZEPScene;
struct TDrawMeans;
struct TZEPShown;

/// Rules for a batch, but for its light. \param even  it is lit evenly in any case
void GiveLook(const TViewLook& look, bool even, TZEPShown& shown);

/// A panel and the scene of its camera, dressed as a `TViewLook` says. What is dressed comes back
/// as it was. Both are there whenever it dresses.
///
/// Where no light shines all is lit alike from all around, in the colours that lamps show it in.
/// Surfaces without a light in their scene get the headlight in any case, to show their shape;
/// beside other lights it is weaker. Flat drawings keep their colours whatever shines.
///
/// Where shadows are switched on, all that has faces casts and receives them, and lights cast; see
/// `TDressedShadows`. Where none does, a sun stands in for them, and the headlight only brightens
/// what it leaves dark.
class TDressedView {
public:
    using TSetBackground = std::function<void(const std::optional<TColor>&)>;

    /// \param setBackground  makes the background one colour, or the view's own
    /// \param background     answers the colour that fog takes on
    TDressedView(TZEPPanel* panel, TSetBackground setBackground,
                 std::function<TColor()> background);

    TDressedView(const TDressedView&) = delete;
    TDressedView& operator=(const TDressedView&) = delete;

    /// Also where the look is the same but objects came into the scene.
    void Dress(const TViewLook& look);
    /// What stands on something already has no ground, whatever the look says.
    void SetGroundAllowed(bool allowed) { m_hasGround = allowed; }
    /// What the panel's context offers; none before it has one.
    [[nodiscard]] std::optional<TDrawMeans> Means() const;

private:
    void DressShadows(const TViewLook& look);
    void DressLights(const TViewLook& look);
    void DressGround(bool ground);
    [[nodiscard]] bool DressSun(bool wanted);
    void DressAmbient(bool lit);
    void DressBatches(const TViewLook& look);
    void DressFog(const TViewLook& look);
    void MeasureFog();

    TZEPPanel* m_panel;
    TSetBackground m_setBackground;
    std::function<TColor()> m_background;
    TZEPScene* m_scene;
    TZEPHeadlight* m_headlight;
    QPointer<TSunLight> m_sun;  ///< while it shines
    QPointer<TGround> m_ground; ///< while it is there
    TDressedShadows m_shadows;
    std::optional<TZEPBounds> m_content; ///< of what has faces, where shadows or ground ask for it
    QObject m_listener;
    bool m_openSurfaces = false;
    bool m_shines = false; ///< a light, so that surfaces are not lit alike from all around
    bool m_hasGround = true;
    bool m_ownShadows;      ///< of the scene, as it was made
    bool m_ownAccumulation; ///< likewise
    bool m_casts = false;   ///< shadows are switched on
};

} // namespace ZEP
