#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/framework/Persistent.h>
#include <zep/framework/Property.h>

namespace ZEP {

class TZEPScenePanel;

/// Fog of a panel: what is farther from the eye takes on its colour. Off at first, black, linear
/// and with all numbers 0.
class ZEP_CORE_EXPORT TZEPFog : public TPersistent {
    Q_GADGET
    Q_PROPERTY(ZEP::TColor Color READ Color WRITE SetColor)
    Q_PROPERTY(double FogStart READ FogStart WRITE SetStart)
    Q_PROPERTY(double FogEnd READ FogEnd WRITE SetEnd)
    Q_PROPERTY(double Density READ Density WRITE SetDensity)
    Q_PROPERTY(TFogMode Mode READ Mode WRITE SetMode)
    Q_PROPERTY(bool Enabled READ Enabled WRITE SetEnabled)
public:
    /// How much is seen at the distance z: (end - z) / (end - start), exp(-density z) or
    /// exp(-(density z)^2).
    enum TFogMode : unsigned char { fmLinear, fmExp, fmExp2 };
    Q_ENUM(TFogMode)

    /// \param panel  asked to repaint at each change; may be null
    explicit TZEPFog(TZEPScenePanel* panel = nullptr) : m_panel(panel) {}
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] TColor Color() const { return m_color; }
    void SetColor(TColor color) { Store(m_color, color); }
    [[nodiscard]] double FogStart() const { return m_start; }
    /// Distance at which linear fog begins.
    void SetStart(double distance) { Store(m_start, distance); }
    [[nodiscard]] double FogEnd() const { return m_end; }
    /// Distance from which on linear fog hides everything.
    void SetEnd(double distance) { Store(m_end, distance); }
    [[nodiscard]] double Density() const { return m_density; }
    /// Of the exponential modes, for a distance of 1.
    void SetDensity(double density) { Store(m_density, density); }
    [[nodiscard]] TFogMode Mode() const { return m_mode; }
    void SetMode(TFogMode mode) { Store(m_mode, mode); }
    [[nodiscard]] bool Enabled() const { return m_enabled; }
    void SetEnabled(bool enabled) { Store(m_enabled, enabled); }

    /// Hands the settings to OpenGL, or switches fog off.
    void Apply() const;

    /// Copies the settings of another fog and repaints; others raise `Exception`.
    void Assign(const TPersistent* source) override;

private:
    template <class T>
    void Store(T& field, T value) {
        if (Change(field, value)) Repaint();
    }
    void Repaint() const;

    TZEPScenePanel* m_panel;
    double m_start = 0;
    double m_end = 0;
    double m_density = 0;
    TColor m_color;
    TFogMode m_mode = fmLinear;
    bool m_enabled = false;
};

using TFogMode = TZEPFog::TFogMode;
using enum TZEPFog::TFogMode;

} // namespace ZEP
