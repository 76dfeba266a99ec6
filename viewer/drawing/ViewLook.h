#pragma once

#include "viewer/drawing/EvenMaterials.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

namespace ZEP {

class TEyeLight;
class TZEPPanel;

/// How a view shows its scene: what the View menu chooses.
struct TViewLook {
    enum class TFog { Off, Linear, Exp, Exp2 };

    bool Lights = true;
    bool Headlight = false;
    TFog Fog = TFog::Off;
    bool Flat = false;
    bool Wire = false;
    std::optional<TColor> Background{}; ///< none: the view's own

    bool operator==(const TViewLook&) const = default;

    /// As the user's settings keep it; what they do not hold, or hold wrongly, is as above.
    [[nodiscard]] static TViewLook Load();
    void Save() const;
};

/// Objects that are switched, and back to what they were.
class TSwitchedObjects {
public:
    using TSwitch = std::function<void(TZEPObject&)>;

    void Add(TZEPObject& object, const TSwitch& change);
    void Restore(const TSwitch& change);

private:
    std::vector<QPointer<TZEPObject>> m_objects;
};

/// A panel and the scene of its camera, dressed as a `TViewLook` says. What is dressed comes back
/// as it was. Both are there whenever it dresses.
///
/// Where no light shines all is lit alike from all around, in the colours that lamps show it in.
/// Surfaces without a light in their scene get the headlight in any case, to show their shape;
/// beside other lights it is weaker. Flat drawings keep their colours whatever shines.
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

private:
    void DressLights(const TViewLook& look);
    void DressAmbient(bool shines, bool lit);
    void DressWire(bool wire);
    void DressFog(const TViewLook& look);
    void MeasureFog();

    TZEPPanel* m_panel;
    TSetBackground m_setBackground;
    std::function<TColor()> m_background;
    TZEPScene* m_scene;
    TEyeLight* m_headlight;
    TEvenMaterials m_even;
    QObject m_listener;
    TSwitchedObjects m_dark;  ///< lights
    TSwitchedObjects m_wired; ///< solids
    bool m_openSurfaces = false;
};

} // namespace ZEP
