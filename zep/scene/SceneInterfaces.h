#pragma once

#include <zep/scene/DrawStates.h>

#include <GL/gl.h>

namespace ZEP {

class TZEPMaterial;
class TZEPObject;

/// What a scene asks of the camera that it is seen through.
class TZEPSceneCamera {
public:
    /// Sets up the projection and model-view matrices for one frame.
    /// \param width, height  size of the view in device pixels
    /// \param jitter         index into the current jitter table; -1 for none
    virtual void Apply(int width, int height, int jitter) = 0;
    /// As `Apply`, narrowed to a region of the current viewport about (x, y), which counts from the
    /// lower left corner in pixels.
    virtual void Pick(int width, int height, int x, int y, int pickWidth, int pickHeight) = 0;
    /// The camera as an object of a tree.
    [[nodiscard]] virtual TZEPObject* AsObject() = 0;

protected:
    ~TZEPSceneCamera() = default;
};

/// What a scene asks of a panel that shows it.
class TZEPScenePanel {
public:
    /// Asks for a repaint; never draws at once.
    virtual void Invalidate() = 0;
    /// The scene goes away; the panel forgets it.
    virtual void SceneDestroyed() = 0;

protected:
    ~TZEPScenePanel() = default;
};

/// What the objects of a tree ask of the scene that they are drawn in. `TZEPScene` is the one
/// implementation; the settings are plain values, since every object reads them in every pass.
class TZEPSceneContext {
public:
    [[nodiscard]] bool ManualUpdate() const { return m_manualUpdate; }
    [[nodiscard]] bool SelectionEnabled() const { return m_selectionEnabled; }
    [[nodiscard]] bool LimitCameraMovement() const { return m_limitCameraMovement; }
    [[nodiscard]] bool QuickMouse() const { return m_quickMouse; }
    [[nodiscard]] bool QuickDraw() const { return m_quickDraw; }
    [[nodiscard]] bool Shadows() const { return m_shadows; }
    [[nodiscard]] bool AccumShadows() const { return m_accumShadows; }
    [[nodiscard]] bool Reflections() const { return m_reflections; }

    /// The scene as an object: the root of its tree.
    [[nodiscard]] virtual TZEPObject* AsObject() = 0;
    /// The material of the scene's library at `index`; null without a library or outside of it.
    [[nodiscard]] virtual TZEPMaterial* LibraryMaterial(int index) const = 0;
    /// The 32-bit name under which a draw in select mode visits `object`.
    [[nodiscard]] virtual GLuint SelectName(TZEPObject* object) = 0;
    /// Fires the scene's `BeforeSelect` and `AfterSelect`.
    virtual void SelectionChanging(TZEPObject* object) = 0;
    virtual void SelectionChanged(TZEPObject* object) = 0;

protected:
    ~TZEPSceneContext() = default;

    bool m_manualUpdate = false;
    bool m_selectionEnabled = true;
    bool m_limitCameraMovement = false;
    bool m_quickMouse = false;
    bool m_quickDraw = false;
    bool m_shadows = false;
    bool m_accumShadows = false;
    bool m_reflections = false;
};

} // namespace ZEP
