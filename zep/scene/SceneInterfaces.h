#pragma once

#include <zep/Export.h>
#include <zep/framework/Notify.h>
#include <zep/framework/Watch.h>
#include <zep/scene/DrawStates.h>
#include <zep/scene/Geom.h>
#include <zep/scene/Sections.h>

#include <GL/gl.h>

#include <optional>

namespace ZEP {

class TZEPMaterial;
class TZEPObject;
struct TZEPFrame;

/// What a scene asks of the camera that it is seen through.
class ZEP_CORE_EXPORT TZEPSceneCamera {
public:
    /// Sets up the projection and model-view matrices for one frame.
    /// \param width, height  size of the view in device pixels
    /// \param jitter         index into the current jitter table; -1 for none
    virtual void Apply(int width, int height, int jitter) = 0;
    /// As `Apply`, narrowed to a region of the current viewport about (x, y), which counts from the
    /// lower left corner in pixels.
    virtual void Pick(int width, int height, int x, int y, int pickWidth, int pickHeight) = 0;
    /// From the scene to the eye as it is applied without jitter, in full precision: OpenGL counts
    /// in floats, which are coarse far from the origin. None where the camera cannot tell.
    [[nodiscard]] virtual std::optional<TGLMatrixd4> ExactView() const { return {}; }
    /// What its view shows in place of the whole scene: an object of it, visible or not, with what
    /// is below it (`TZEPLayout` for one). Null, as here: the whole scene.
    [[nodiscard]] virtual TZEPObject* Sheet() const { return nullptr; }
    /// Where its view cuts the scene open: nowhere.
    [[nodiscard]] virtual TZEPSections Sections() const { return {}; }
    /// The camera as an object of a tree.
    [[nodiscard]] virtual TZEPObject* AsObject() = 0;

protected:
    ~TZEPSceneCamera() = default;
};

/// What a scene asks of a panel that shows it.
class ZEP_CORE_EXPORT TZEPScenePanel {
public:
    /// Asks for a repaint; never draws at once.
    virtual void Invalidate() = 0;
    /// The scene goes away; the panel forgets it.
    virtual void SceneDestroyed() = 0;
    /// What a repaint is for: `sender`, or something that belongs to it, has changed; where it is
    /// the scene itself, anything may have. An animation tells at once, and repaints with its
    /// ticks. May not change the scene.
    virtual void Changed(TObject* sender) { static_cast<void>(sender); }

protected:
    ~TZEPScenePanel() = default;
};

/// What the objects of a tree ask of the scene that they are drawn in. `TZEPScene` is the one
/// implementation; the settings are plain values, since every object reads them in every pass.
class ZEP_CORE_EXPORT TZEPSceneContext {
public:
    [[nodiscard]] bool ManualUpdate() const { return m_manualUpdate; }
    [[nodiscard]] bool SelectionEnabled() const { return m_selectionEnabled; }
    [[nodiscard]] bool LimitCameraMovement() const { return m_limitCameraMovement; }
    [[nodiscard]] bool QuickMouse() const { return m_quickMouse; }
    [[nodiscard]] bool QuickDraw() const { return m_quickDraw; }
    [[nodiscard]] bool Shadows() const { return m_shadows; }
    [[nodiscard]] bool AccumShadows() const { return m_accumShadows; }
    [[nodiscard]] bool Reflections() const { return m_reflections; }

    /// What drawing carries from one object to the next.
    [[nodiscard]] TZEPFrame& Frame() const { return *m_frame; }

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
    explicit TZEPSceneContext(TZEPFrame& frame) : m_frame(&frame) {}
    ~TZEPSceneContext() { TZEPWatch::Forget(this); }

    bool m_manualUpdate = false;
    bool m_selectionEnabled = true;
    bool m_limitCameraMovement = false;
    bool m_quickMouse = false;
    bool m_quickDraw = false;
    bool m_shadows = false;
    bool m_accumShadows = false;
    bool m_reflections = false;

private:
    friend class TZEPFrameLoan;
    TZEPFrame* m_frame;
};

} // namespace ZEP
