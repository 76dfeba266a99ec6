#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/Fog.h>
#include <zep/batch/Shown.h>
#include <zep/scene/Geom.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/view/Context.h>
#include <zep/view/MousePanel.h>
#include <zep/view/PanelControl.h>

#include <QBasicTimer>
#include <QCursor>
#include <QImage>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <new>
#include <optional>

class QPrinter;

namespace ZEP {

class TZEPCamera;
class TZEPFrameMean;
class TZEPRubberBand;
class TZEPScene;

/// How a picture differs from one of the panel's own frames.
struct TZEPPictureOptions {
    /// What the scene does not cover is left out, else it has the background's colour.
    bool Transparent = false;
    /// Frames whose mean the picture is, each shifted within a pixel: 2 to 66, none below.
    int Samples = 0;
    /// Factor of the widths of lines and points, above 0.
    double Widths = 1;
    /// The part of the view that is drawn, in its pixels from the upper left corner; empty: all.
    /// Parts that meet fit together.
    QRect Part{};
};

/// The window that shows a scene through a camera. It is a native child window with an OpenGL
/// context of its own, which is created and destroyed with the window's handle. The scene asks for
/// a repaint when it changes; painting waits for the event loop, however often it is asked for.
///
/// Sizes and mouse positions are device pixels, counted from the upper left corner.
///
/// Defaults: no camera, black; depth test, two-sided lighting and culling of back faces.
class ZEP_EXPORT TZEPPanel : public QWidget, public TZEPScenePanel, public TZEPMousePanel {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/view/Camera.h")
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
    Q_PROPERTY(ZEP::TZEPPanelControl* PanelControl READ PanelControl)
    Q_PROPERTY(bool ForceDraft READ ForceDraft WRITE SetForceDraft)
    Q_CLASSINFO("ForceDraft", "false")
    Q_PROPERTY(bool SelectInMouseUp READ SelectInMouseUp WRITE SetSelectInMouseUp)
    Q_CLASSINFO("SelectInMouseUp", "false")
    Q_PROPERTY(int RestSamples READ RestSamples WRITE SetRestSamples)
    Q_CLASSINFO("RestSamples", "0")
public:
    /// The side of the parent that a panel keeps to; it has no effect in a layout.
    enum TAlign { alNone, alTop, alBottom, alLeft, alRight, alClient };
    Q_ENUM(TAlign)

    explicit TZEPPanel(QWidget* parent = nullptr);
    ~TZEPPanel() override;
    /// A panel that is freed while the window system has it paint goes once that is done. Its
    /// window cannot wait so: free that by `deleteLater`.
    static void operator delete(TZEPPanel* panel, std::destroying_delete_t);
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void* operator new(std::size_t size, void* place) { return ::operator new(size, place); }
    static void operator delete(void* memory) { ::operator delete(memory); }
    static void operator delete(void* memory, void* place) { ::operator delete(memory, place); }

    [[nodiscard]] TAlign Align() const { return m_align; }
    void SetAlign(TAlign align);
    /// A disabled panel is black. Whether the parent is enabled does not matter.
    [[nodiscard]] bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }
    void SetEnabled(bool enabled);
    /// Reached by the tabulator key; a click gives the focus in any case.
    [[nodiscard]] bool TabStop() const { return focusPolicy() & Qt::TabFocus; }
    void SetTabStop(bool stop);
    [[nodiscard]] TZEPContext* Context() { return &m_context; }
    [[nodiscard]] TZEPCamera* Camera() const override { return m_camera; }
    /// The scene that the camera belongs to is shown, also when the camera moves to another one.
    void SetCamera(TZEPCamera* camera);
    /// Applied before each frame.
    [[nodiscard]] TZEPFog* Fog() { return &m_fog; }
    [[nodiscard]] TZEPOptions Options() const { return m_options; }
    /// OpenGL follows at the next frame.
    void SetOptions(TZEPOptions options);
    [[nodiscard]] const std::optional<TZEPShown>& Shown() const { return m_shown; }
    /// How this panel shows batches that have no rules of their own (`TZEPBatch::SetShown`), so
    /// that panels on one scene may differ. Asks for a repaint, unless only the share is another.
    /// \param shown  none, as at first: as the batches say
    void SetShown(const std::optional<TZEPShown>& shown);
    /// What the mouse does: nothing at first.
    [[nodiscard]] TZEPPanelControl* PanelControl() { return &m_control; }
    [[nodiscard]] bool ForceDraft() const { return m_forceDraft; }
    /// Draws outlines without shadows at all times.
    void SetForceDraft(bool force);
    /// Every release of a button selects what is under the mouse.
    [[nodiscard]] bool SelectInMouseUp() const override { return m_selectInMouseUp; }
    void SetSelectInMouseUp(bool select) { m_selectInMouseUp = select; }

    [[nodiscard]] int RestSamples() const { return m_restSamples; }
    /// Smooths edges, lines and text of a view that rests: a twentieth of a second after a frame,
    /// unless a mouse button is held or the scene is animated, as many frames are drawn, each
    /// shifted within a pixel, and their mean is shown. One is drawn at a time,
    /// between other events, and whatever changes meanwhile calls them off. `BeforDraw` and
    /// `BeforFlush` are fired for each of them, so that what handlers draw is in the mean, and
    /// nothing is counted; `AfterDraw` is not fired.
    /// \param samples  2 to 66; none below
    void SetRestSamples(int samples);
    /// Multisampling smooths surfaces and lines of every frame, also while the view moves. Another
    /// wish than before has a window get another context, with all that is drawn in it; what was
    /// granted is told by `Context()->PixelFormat()`. At first none.
    void SetSampleWish(const TSampleWish& wish);
    /// The frame that was drawn last is not smoothed when the view rests, since another one follows
    /// then: for hosts that show less while they move it. To be called by a handler of `AfterDraw`.
    void StayRough() { m_staysRough = true; }

    [[nodiscard]] int Width() const override;  ///< device pixels
    [[nodiscard]] int Height() const override; ///< device pixels
    /// A mouse button is held.
    [[nodiscard]] bool MouseDowned() const { return m_control.MouseDowned(); }

    /// Draws a frame and shows it. The window system asks for it; a host asks by `Invalidate`. What
    /// is thrown on the way is told by `FrameFailed`.
    void Paint();
    /// Draws a frame into the back buffer and gives it back opaque, in device pixels, without
    /// showing it; a null image without a context. Also for a panel that is not on the screen.
    [[nodiscard]] QImage GrabFrame();
    /// Sets OpenGL to the options where they changed and draws the camera's scene into the current
    /// context; nothing without a camera.
    void Render(int width, int height, bool draft);

    /// \name Pictures and paper
    /// @{
    /// The scene as the camera sees it in a view of that size in pixels, in full quality. What is
    /// more than the driver draws at once is put together from tiles; memory alone is the limit.
    /// The panel's own frame events are not fired.
    /// \param transparent  what the scene does not cover is left out, else it has the background's
    ///                     colour. What an object throws goes on to the caller.
    /// \return `Format_RGB32`, or `Format_ARGB32_Premultiplied` where transparent. Raises
    ///         `Exception` ("RenderToCanvas: Can't set pixel format") where no context can be had,
    ///         and ("RenderToCanvas: the panel draws a frame") in an event of such a frame.
    [[nodiscard]] QImage RenderToCanvas(const QSize& size, bool transparent = false);
    /// The same, smooth, with other widths, or a part of a larger view, as the options say.
    [[nodiscard]] QImage RenderPicture(const QSize& view, const TZEPPictureOptions& options);
    /// Prints the view, as large as the page takes it, under the title "ZEP rendered image" unless
    /// the printer has a title. Asks nobody. Raises `Exception` where the printer cannot.
    void Print(QPrinter& printer);
    /// On the system's default printer.
    void Print();
    /// @}

    /// \name From the window into the scene and back
    /// Inverses of each other, as the camera looks now. Window places are device pixels from the
    /// upper left corner of the panel, whole numbers at the corners of pixels; the third coordinate
    /// is the depth, 0 at the near plane and 1 at the far one.
    /// @{
    /// None without camera or size.
    [[nodiscard]] std::optional<TGLArrayd3> GetWorldCoords(double x, double y, double depth) const;
    /// None without camera or size, and for a point in the plane of the eye.
    [[nodiscard]] std::optional<TGLArrayd3> GetScreenCoords(const TGLArrayd3& world) const;
    /// @}

    /// Frames with a scene in them: of this panel, and of all panels of the process.
    [[nodiscard]] int FrameCount() const { return m_frameCount; }
    [[nodiscard]] static int TotalFrameCount();
    [[nodiscard]] double LastRenderMilliseconds() const { return m_lastRenderMilliseconds; }

    void Invalidate() override;
    /// Asks that only what `DrawOver` draws be drawn anew, over the scene as it was drawn last:
    /// what costs little may follow the pointer over a scene that costs much. From the first call
    /// on a panel at rest keeps its frames, four bytes a pixel.
    void InvalidateOver();
    void SceneDestroyed() override;
    /// OpenGL draws in the window; Qt's painters cannot.
    [[nodiscard]] QPaintEngine* paintEngine() const override { return nullptr; }

    /// \name What the mouse control asks
    /// @{
    bool MakeCurrent() override;
    void DoneCurrent() override;
    /// What is thrown is told by `FrameFailed`.
    bool TryFind(const std::function<void()>& find) override;
    void RepaintFull() override;
    void CaptureMouse() override;
    void ReleaseCapture() override;
    void ShowCursor(int index) override;
    void ShowRubberBand(const QRect& place) override;
    void ShowBand(const QRect& place, TZEPBand band) override;
    void HideRubberBand() override;
    void ShowPivot(const TGLArrayd3& point) override;
    void HidePivot() override;
    void FireBeforSelect() override { Q_EMIT BeforSelect(this); }
    void FireAfterSelect() override { Q_EMIT AfterSelect(this); }
    void ProcessMessages() override;
    /// @}

Q_SIGNALS:
    /// Around each frame: with the context current before anything is drawn, before the frame is
    /// flushed, and after it is shown.
    void BeforDraw(ZEP::TZEPPanel* sender);
    void BeforFlush(ZEP::TZEPPanel* sender);
    void AfterDraw(ZEP::TZEPPanel* sender);
    /// After `BeforFlush`, and without a frame where `InvalidateOver` asked for that: the place to
    /// draw what lies over the scene. The camera is applied, without lights, depth test, culling,
    /// fog and textures; all of OpenGL's state comes back as it was. Not in pictures.
    void DrawOver(ZEP::TZEPPanel* sender);
    /// Something in a frame has thrown: the frame was ended there, with OpenGL's stacks as they
    /// were before it, and shown as it is. Told from the event loop, and not again until a frame
    /// succeeds.
    void FrameFailed(ZEP::TZEPPanel* sender, const QString& message);
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
    void timerEvent(QTimerEvent* event) override;

private:
    void OpenWindow();
    void OpenHandle();
    void CloseHandle();
    void UpdateViewport();
    void FollowScene();
    void CameraDestroyed();
    void FollowParent();
    void Realign();
    /// A frame of the panel. A handler may free the panel, make other contexts current and draw in
    /// other panels: it is true as long as the panel exists, and draws in its window then.
    class TFrame {
    public:
        explicit TFrame(TZEPPanel& panel);
        ~TFrame();
        TFrame(const TFrame&) = delete;
        TFrame& operator=(const TFrame&) = delete;
        explicit operator bool() const;
        /// The innermost one goes on, whose context may not be current any more.
        static void Resume();

    private:
        inline static TFrame* s_innermost = nullptr;

        QPointer<TZEPPanel> m_panel;
        TFrame* m_outer;
    };
    struct TPicture;
    void PaintBlack();
    void GoLater();
    void AwaitRest();
    void ForgetRest();
    void DrawRestFrame();
    void ShowRested();
    void ShowAgain();
    void DrawFrame(bool over, const std::function<void()>& use);
    template <class Draw>
    [[nodiscard]] std::optional<QString> TryFrame(const TFrame& frame, const Draw& draw);
    void TellFailure(const QString& error);
    [[nodiscard]] std::optional<QString> TryOver(const TFrame& frame);
    [[nodiscard]] bool HasKept() const;
    void PaintOver();
    void KeepFrame();
    void DrawPivot() const;
    void NoteFrame(const std::optional<QString>& error);
    void DrawContent(const TFrame& frame);
    [[nodiscard]] QImage ReadPixels(const QRect& area) const;
    void ApplyOptions();
    [[nodiscard]] bool DrawsDraft() const;
    [[nodiscard]] int TileLength() const;
    void DrawTransparent(QImage& image, const TPicture& picture);
    void DrawTiles(QImage& image, const TPicture& picture);
    void DrawTile(QImage& image, const TPicture& picture, const QRect& tile, int margin);
    [[nodiscard]] QImage DrawSample(const TPicture& picture, const QRectF& part, int margin);
    [[nodiscard]] QPoint DevicePosition(const QPointF& position) const;
    void Press(QMouseEvent* event, TShiftState extra);

    TZEPContext m_context;
    TZEPPanelControl m_control;
    std::unique_ptr<TZEPRubberBand> m_band;
    std::optional<QCursor> m_ownCursor; ///< while another one is shown; none: the parent's
    TZEPCamera* m_camera = nullptr;
    TZEPScene* m_scene = nullptr; ///< the one that this panel is registered with
    QWidget* m_watchedParent = nullptr;
    TZEPFog m_fog{this};
    TZEPOptions m_options = goDepthTest | goTwoSidedLightModel | goCullFace | goLighting;
    std::optional<TZEPShown> m_shown;
    std::optional<TZEPOptions> m_appliedOptions; ///< none in a new context
    TAlign m_align = alNone;
    bool m_showsCursor = false; ///< one that is not its own
    bool m_forceDraft = false;
    bool m_selectInMouseUp = false;
    int m_restSamples = 0;
    QBasicTimer m_restTimer;
    std::unique_ptr<TZEPFrameMean> m_restMean; ///< of the frames that were drawn so far
    double m_widths = 1;                       ///< of the picture that is drawn
    bool m_staysRough = false;
    bool m_drawsRest = false; ///< a frame of the mean
    bool m_drewDraft = false;
    bool m_fullNext = false; ///< the next frame is no draft
    bool m_drawing = false;
    bool m_inPaintEvent = false;
    bool m_goes = false;   ///< as soon as its paint event ends
    bool m_failed = false; ///< the last frame has
    /// What the next paint event draws, where something has asked for it.
    enum class TPending : unsigned char { Nothing, Over, Frame };
    TPending m_pending = TPending::Nothing;
    bool m_keeps = false; ///< frames, for what is drawn over them
    /// The last frame, or the mean of those of a view at rest; the lowest row first, null: not
    /// kept.
    QImage m_kept;
    std::optional<TGLArrayd3> m_pivot;
    int m_frameCount = 0;
    double m_lastRenderMilliseconds = 0;
};

} // namespace ZEP
