#pragma once

#include "appearance/Fog.h"
#include "scene/SceneInterfaces.h"
#include "view/Context.h"
#include "view/MouseInput.h"

#include <QImage>
#include <QWidget>

#include <optional>

namespace ZEP {

class TZEPCamera;
class TZEPScene;

/// The window that shows a scene through a camera. It is a native child window with an OpenGL
/// context of its own, which is created and destroyed with the window's handle. The scene asks for
/// a repaint when it changes; painting waits for the event loop, however often it is asked for.
///
/// Sizes and mouse positions are device pixels, counted from the upper left corner.
///
/// Defaults: no camera, black; depth test, two-sided lighting and culling of back faces.
class TZEPPanel : public QWidget, public TZEPScenePanel {
    Q_OBJECT
    Q_MOC_INCLUDE("view/Camera.h")
    Q_PROPERTY(TAlign Align READ Align WRITE SetAlign)
    Q_CLASSINFO("Align", "alNone")
    Q_PROPERTY(bool Enabled READ Enabled WRITE SetEnabled)
    Q_CLASSINFO("Enabled", "true")
    Q_PROPERTY(bool TabStop READ TabStop WRITE SetTabStop)
    Q_CLASSINFO("TabStop", "false")
    Q_PROPERTY(ZEP::TZEPContext* Context READ Context)
    Q_PROPERTY(ZEP::TZEPCamera* Camera READ Camera WRITE SetCamera)
    Q_PROPERTY(ZEP::TZEPFog* Fog READ Fog)
    Q_PROPERTY(ZEP::TZEPOptions Options READ Options WRITE SetOptions)
    Q_CLASSINFO("Options", "goDepthTest,goTwoSidedLightModel,goCullFace,goLighting")
    Q_PROPERTY(bool ForceDraft READ ForceDraft WRITE SetForceDraft)
    Q_CLASSINFO("ForceDraft", "false")
    Q_PROPERTY(bool SelectInMouseUp READ SelectInMouseUp WRITE SetSelectInMouseUp)
    Q_CLASSINFO("SelectInMouseUp", "false")
public:
    /// The side of the parent that a panel keeps to; it has no effect in a layout.
    enum TAlign { alNone, alTop, alBottom, alLeft, alRight, alClient };
    Q_ENUM(TAlign)

    explicit TZEPPanel(QWidget* parent = nullptr);
    ~TZEPPanel() override;

    [[nodiscard]] TAlign Align() const { return m_align; }
    void SetAlign(TAlign align);
    /// A disabled panel is black. Whether the parent is enabled does not matter.
    [[nodiscard]] bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }
    void SetEnabled(bool enabled);
    /// Reached by the tabulator key; a click gives the focus in any case.
    [[nodiscard]] bool TabStop() const { return focusPolicy() & Qt::TabFocus; }
    void SetTabStop(bool stop);
    [[nodiscard]] TZEPContext* Context() { return &m_context; }
    [[nodiscard]] TZEPCamera* Camera() const { return m_camera; }
    /// The scene that the camera belongs to is shown, also when the camera moves to another one.
    void SetCamera(TZEPCamera* camera);
    /// Applied before each frame.
    [[nodiscard]] TZEPFog* Fog() { return &m_fog; }
    [[nodiscard]] TZEPOptions Options() const { return m_options; }
    /// OpenGL follows at the next frame.
    void SetOptions(TZEPOptions options);
    [[nodiscard]] bool ForceDraft() const { return m_forceDraft; }
    /// Draws outlines without shadows at all times.
    void SetForceDraft(bool force);
    [[nodiscard]] bool SelectInMouseUp() const { return m_selectInMouseUp; }
    void SetSelectInMouseUp(bool select) { m_selectInMouseUp = select; }

    [[nodiscard]] int Width() const;  ///< device pixels
    [[nodiscard]] int Height() const; ///< device pixels
    /// A mouse button is held.
    [[nodiscard]] bool MouseDowned() const { return m_mouseDowned; }

    /// Draws a frame and shows it. The window system asks for it; a host asks by `Invalidate`.
    void Paint();
    /// Draws a frame into the back buffer and gives it back opaque, in device pixels, without
    /// showing it; a null image without a context. Also for a panel that is not on the screen.
    [[nodiscard]] QImage GrabFrame();
    /// Sets OpenGL to the options where they changed and draws the camera's scene into the current
    /// context; nothing without a camera.
    void Render(int width, int height, bool draft);

    /// Frames with a scene in them: of this panel, and of all panels of the process.
    [[nodiscard]] int FrameCount() const { return m_frameCount; }
    [[nodiscard]] static int TotalFrameCount();
    [[nodiscard]] double LastRenderMilliseconds() const { return m_lastRenderMilliseconds; }

    void Invalidate() override { update(); }
    void SceneDestroyed() override;
    /// OpenGL draws in the window; Qt's painters cannot.
    [[nodiscard]] QPaintEngine* paintEngine() const override { return nullptr; }

signals:
    /// Around each frame: with the context current before anything is drawn, before the frame is
    /// flushed, and after it is shown.
    void BeforDraw(ZEP::TZEPPanel* sender);
    void BeforFlush(ZEP::TZEPPanel* sender);
    void AfterDraw(ZEP::TZEPPanel* sender);
    /// Around each selection by the mouse.
    void BeforSelect(ZEP::TZEPPanel* sender);
    void AfterSelect(ZEP::TZEPPanel* sender);

    /// Around what the panel does with the mouse.
    void BeforeMouseDown(ZEP::TZEPPanel* sender, ZEP::TMouseButton button, ZEP::TShiftState shift,
                         int x, int y);
    void AfterMouseDown(ZEP::TZEPPanel* sender, ZEP::TMouseButton button, ZEP::TShiftState shift,
                        int x, int y);
    void BeforeMouseMove(ZEP::TZEPPanel* sender, ZEP::TShiftState shift, int x, int y);
    void AfterMouseMove(ZEP::TZEPPanel* sender, ZEP::TShiftState shift, int x, int y);
    void BeforeMouseUp(ZEP::TZEPPanel* sender, ZEP::TMouseButton button, ZEP::TShiftState shift,
                       int x, int y);
    void AfterMouseUp(ZEP::TZEPPanel* sender, ZEP::TMouseButton button, ZEP::TShiftState shift,
                      int x, int y);
    /// `delta` is 120 for each notch, positive away from the user.
    void BeforeMouseWheel(ZEP::TZEPPanel* sender, ZEP::TShiftState shift, int delta, int x, int y);
    void AfterMouseWheel(ZEP::TZEPPanel* sender, ZEP::TShiftState shift, int delta, int x, int y);
    void AfterMouseDblClick(ZEP::TZEPPanel* sender, ZEP::TMouseButton button,
                            ZEP::TShiftState shift, int x, int y);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void OpenHandle();
    void CloseHandle();
    void UpdateViewport();
    void FollowScene();
    void CameraDestroyed();
    void FollowParent();
    void Realign();
    bool DrawFrame();
    void DrawContent();
    void ApplyOptions();
    [[nodiscard]] bool DrawsDraft() const;
    [[nodiscard]] QPoint DevicePosition(const QPointF& position) const;
    void Press(QMouseEvent* event, TShiftState extra);

    TZEPContext m_context;
    TZEPCamera* m_camera = nullptr;
    TZEPScene* m_scene = nullptr; ///< the one that this panel is registered with
    QWidget* m_watchedParent = nullptr;
    TZEPFog m_fog{this};
    TZEPOptions m_options = goDepthTest | goTwoSidedLightModel | goCullFace | goLighting;
    std::optional<TZEPOptions> m_appliedOptions; ///< none in a new context
    TAlign m_align = alNone;
    bool m_forceDraft = false;
    bool m_selectInMouseUp = false;
    bool m_mouseDowned = false;
    bool m_drewDraft = false;
    bool m_drawing = false;
    int m_frameCount = 0;
    double m_lastRenderMilliseconds = 0;
};

} // namespace ZEP
