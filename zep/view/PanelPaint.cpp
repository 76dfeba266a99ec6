#include <zep/gl/Names.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/FrameState.h>
#include <zep/view/OverPixels.h>
#include <zep/view/Panel.h>

#include <QElapsedTimer>
#include <QMetaMethod>
#include <QPainter>
#include <QPointer>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <exception>
#include <utility>

namespace ZEP {

namespace {

int TotalFrames = 0;

void Switch(GLenum capability, bool on) {
    (on ? glEnable : glDisable)(capability);
}

template <class Draw>
std::optional<QString> ThrownBy(const Draw& draw) {
    try {
        draw();
        return {};
    } catch (const std::exception& thrown) {
        return QString::fromUtf8(thrown.what());
    } catch (...) {
        return QStringLiteral("Something was thrown that is no exception.");
    }
}

} // namespace

int TZEPPanel::TotalFrameCount() {
    return TotalFrames;
}

void TZEPPanel::paintEvent(QPaintEvent*) {
    if (!m_context.HasContext()) return PaintBlack();
    const QScopedValueRollback paints(m_inPaintEvent, true); // it exists: freed, it goes later
    if (m_pending == TPending::Over && HasKept()) return PaintOver();
    Paint();
}

// Qt paints where OpenGL cannot.
void TZEPPanel::PaintBlack() {
    if (!testAttribute(Qt::WA_PaintOnScreen)) return QPainter(this).fillRect(rect(), Qt::black);
    setAttribute(Qt::WA_PaintOnScreen, false);
    update();
}

// Qt goes on with a widget when its paint event ends.
void TZEPPanel::operator delete(TZEPPanel* panel, std::destroying_delete_t) {
    if (panel->m_inPaintEvent) return panel->GoLater();
    void* const memory = dynamic_cast<void*>(panel);
    panel->~TZEPPanel();
    ::operator delete(memory);
}

void TZEPPanel::GoLater() {
    if (std::exchange(m_goes, true)) return;
    SetCamera(nullptr);
    hide();
    setParent(nullptr);
    deleteLater();
}

TZEPPanel::TFrame::TFrame(TZEPPanel& panel)
    : m_panel(&panel), m_outer(std::exchange(s_innermost, this)) {
    panel.m_drawing = true;
}

TZEPPanel::TFrame::~TFrame() {
    s_innermost = m_outer;
    if (m_panel) m_panel->m_drawing = false;
    Resume();
}

TZEPPanel::TFrame::operator bool() const {
    if (!m_panel || m_panel->m_goes) return false;
    m_panel->m_context.MakeCurrent();
    return m_panel->m_context.IsCurrent();
}

void TZEPPanel::TFrame::Resume() {
    if (s_innermost) static_cast<void>(static_cast<bool>(*s_innermost));
}

void TZEPPanel::Paint() {
    if (m_drawing || m_goes) return; // a handler of a frame event asks for another frame
    ForgetRest();
    m_staysRough = false;
    m_pending = TPending::Nothing;
    const QPointer<TZEPPanel> alive(this);
    DrawFrame(true, [this] { m_context.Binding().SwapBuffers(); });
    if (alive) AwaitRest();
}

/// \param over  with what lies over the scene
/// \param use   takes what stands in the back buffer; is not called where nothing does
void TZEPPanel::DrawFrame(bool over, const std::function<void()>& use) {
    const QPointer<TZEPPanel> alive(this);
    const auto done = qScopeGuard([&alive] {
        if (alive) alive->DoneCurrent();
    });
    {
        const TFrame frame(*this);
        if (!frame) return;
        std::optional<QString> error = TryFrame(frame, [&] {
            Q_EMIT BeforDraw(this);
            if (!frame) return;
            {
                const TZEPNamesScope names;
                DrawContent(frame);
            }
            if (frame) Q_EMIT BeforFlush(this);
        });
        if (!frame) return;
        if (over) {
            m_kept = QImage();
            if (!error) KeepFrame();
            const std::optional<QString> ofOver = TryOver(frame);
            if (!frame) return;
            if (!error) error = ofOver;
        }
        NoteFrame(error);
        glFlush();
        use();
    }
    if (!m_drawsRest) Q_EMIT AfterDraw(this);
}

/// Nothing may be thrown through the event loop, which calls for frames.
/// \return  what went wrong
template <class Draw>
std::optional<QString> TZEPPanel::TryFrame(const TFrame& frame, const Draw& draw) {
    const TZEPFrameState before;
    const std::optional<QString> error = ThrownBy(draw);
    if (!error || !frame) return {};
    before.Restore();
    m_appliedOptions.reset();
    return error;
}

bool TZEPPanel::TryFind(const std::function<void()>& find) {
    const QPointer<TZEPPanel> alive(this);
    if (!MakeCurrent()) return false;
    const TZEPFrameState before;
    const std::optional<QString> error = ThrownBy(find);
    if (!alive) return false;
    if (error && MakeCurrent()) {
        before.Restore();
        m_appliedOptions.reset();
    }
    DoneCurrent();
    if (error) TellFailure(*error);
    return !error;
}

// Later, since a handler may show a message or close the window.
void TZEPPanel::NoteFrame(const std::optional<QString>& error) {
    const bool failedBefore = std::exchange(m_failed, error.has_value());
    if (m_failed && !failedBefore) TellFailure(*error);
}

void TZEPPanel::TellFailure(const QString& error) {
    QMetaObject::invokeMethod(
        this, [this, error] { Q_EMIT FrameFailed(this, error); }, Qt::QueuedConnection);
}

// --- what lies over the scene ------------------------------------------------------------------

void TZEPPanel::Invalidate() {
    ForgetRest();
    m_pending = TPending::Frame;
    update();
}

void TZEPPanel::InvalidateOver() {
    m_keeps = true;
    if (m_pending == TPending::Frame) return;
    if (m_kept.isNull()) return Invalidate();
    m_pending = TPending::Over;
    update();
}

/// What moves is drawn anew anyway, and is not to wait for its pixels.
void TZEPPanel::KeepFrame() {
    if (!m_keeps || MouseDowned() || (m_scene && m_scene->Animation())) return;
    m_kept = ReadPixels({{}, Size()});
}

bool TZEPPanel::HasKept() const {
    return m_kept.size() == Size();
}

void TZEPPanel::PaintOver() {
    if (m_drawing || m_goes) return;
    m_pending = TPending::Nothing;
    const QPointer<TZEPPanel> alive(this);
    const auto done = qScopeGuard([&alive] {
        if (alive) alive->DoneCurrent();
    });
    const TFrame frame(*this);
    if (!frame) return;
    DrawPixels(m_kept, {0, 0});
    const std::optional<QString> error = TryOver(frame);
    if (!frame) return;
    if (error) NoteFrame(error);
    glFlush();
    m_context.Binding().SwapBuffers();
}

std::optional<QString> TZEPPanel::TryOver(const TFrame& frame) {
    static const QMetaMethod drawOver = QMetaMethod::fromSignal(&TZEPPanel::DrawOver);
    if (!m_camera || (!m_pivot && !isSignalConnected(drawOver))) return {};
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    TZEPMatricesScope::Push();
    m_camera->Apply(Width(), Height(), -1);
    for (const GLenum off : std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE,
                                                          GL_FOG, GL_TEXTURE_2D, GL_STENCIL_TEST})
        glDisable(off);
    const std::optional<QString> error = TryFrame(frame, [this] {
        if (m_pivot) DrawPivot();
        Q_EMIT DrawOver(this);
    });
    if (!frame) return error; // and another context may be current
    TZEPMatricesScope::Pop();
    glPopAttrib();
    return error;
}

void TZEPPanel::DrawPivot() const {
    const std::optional<TGLArrayd3> at = GetScreenCoords(*m_pivot);
    if (!at || (*at)[2] > 1) return;
    const QImage mark = PivotMark(devicePixelRatioF());
    DrawBlended(mark, {qRound((*at)[0]) - mark.width() / 2,
                       Height() - qRound((*at)[1]) - mark.height() / 2});
}

// --- the scene ---------------------------------------------------------------------------------

void TZEPPanel::DrawContent(const TFrame& frame) {
    if (!Enabled() || !m_camera || !m_scene) {
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        return;
    }
    if (m_drawsRest) return Render(Width(), Height(), false);
    ++m_frameCount;
    ++TotalFrames;
    QElapsedTimer clock;
    clock.start();
    m_drewDraft = DrawsDraft();
    m_fullNext = false;
    Render(Width(), Height(), m_drewDraft);
    if (!frame) return;
    m_lastRenderMilliseconds = static_cast<double>(clock.nsecsElapsed()) * 1e-6;
}

bool TZEPPanel::DrawsDraft() const {
    return m_forceDraft || (!m_fullNext && MouseDowned() && m_scene && m_scene->QuickMouse());
}

void TZEPPanel::Render(int width, int height, bool draft) {
    if (!m_camera) return;
    if (m_appliedOptions != m_options) ApplyOptions();
    m_fog.Apply();
    if (!m_scene) return;
    const std::optional<TZEPShown> shown = m_shown; // what is drawn may free the panel
    const QPointer<TZEPScene> scene(m_scene);
    const TZEPShown* outer = std::exchange(scene->Frame().Shown, shown ? &*shown : nullptr);
    const double outerWidths = std::exchange(scene->Frame().Widths, m_widths);
    const auto back = qScopeGuard([&] {
        if (!scene) return;
        scene->Frame().Shown = outer;
        scene->Frame().Widths = outerWidths;
    });
    m_scene->Render(m_camera, width, height, draft);
}

void TZEPPanel::ApplyOptions() {
    glShadeModel(m_options.testFlag(goFlatShadeModel) ? GL_FLAT : GL_SMOOTH);
    Switch(GL_LIGHTING, m_options.testFlag(goLighting));
    glLightModelf(GL_LIGHT_MODEL_TWO_SIDE, m_options.testFlag(goTwoSidedLightModel) ? 1.0F : 0.0F);
    Switch(GL_DEPTH_TEST, m_options.testFlag(goDepthTest));
    Switch(GL_CULL_FACE, m_options.testFlag(goCullFace));
    m_appliedOptions = m_options;
}

QImage TZEPPanel::GrabFrame() {
    if (m_drawing || m_goes) return {};
    OpenWindow();
    QImage picture;
    // OpenGL's first row is the lowest one.
    DrawFrame(false, [&] {
        picture = ReadPixels({{}, Size()}).mirrored().convertToFormat(QImage::Format_RGB32);
    });
    return picture;
}

/// The lowest row first.
QImage TZEPPanel::ReadPixels(const QRect& area) const {
    QImage pixels(area.size(), QImage::Format_ARGB32);
    const bool doubleBuffer = m_context.PixelFormat().Has(pfDoubleBuffer);
    glPushAttrib(GL_PIXEL_MODE_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glReadBuffer(doubleBuffer ? GL_BACK : GL_FRONT);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(area.x(), area.y(), area.width(), area.height(), GL_BGRA,
                 GL_UNSIGNED_INT_8_8_8_8_REV, pixels.bits());
    glPopClientAttrib();
    glPopAttrib();
    return pixels;
}

} // namespace ZEP
