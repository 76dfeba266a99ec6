#include <zep/gl/Names.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/FrameState.h>
#include <zep/view/Panel.h>

#include <QElapsedTimer>
#include <QScopeGuard>

#include <exception>
#include <utility>

namespace ZEP {

namespace {

int TotalFrames = 0;

void Switch(GLenum capability, bool on) {
    (on ? glEnable : glDisable)(capability);
}

/// OpenGL names that are freed while this lives are deleted at once; else at the next frame, since
/// nobody knows which context a host has current in between.
class DrawingBracket {
public:
    DrawingBracket() {
        SetContextIsCurrent(true);
        DeleteReleasedNames();
    }
    ~DrawingBracket() { SetContextIsCurrent(false); }
    DrawingBracket(const DrawingBracket&) = delete;
    DrawingBracket& operator=(const DrawingBracket&) = delete;
};

} // namespace

int TZEPPanel::TotalFrameCount() {
    return TotalFrames;
}

void TZEPPanel::paintEvent(QPaintEvent*) {
    Paint();
}

void TZEPPanel::Paint() {
    if (!DrawFrame()) return;
    m_context.Binding().SwapBuffers();
    Q_EMIT AfterDraw(this);
}

bool TZEPPanel::DrawFrame() {
    if (m_drawing) return false; // a handler of a frame event asks for another frame
    m_context.MakeCurrent();
    if (!m_context.IsCurrent()) return false;
    m_drawing = true;
    const auto done = qScopeGuard([this] { m_drawing = false; });
    const DrawingBracket bracket;
    NoteFrame(TryFrame());
    glFlush();
    return true;
}

/// Nothing may be thrown through the event loop, which calls for frames.
/// \return  what went wrong; null where nothing did
QString TZEPPanel::TryFrame() {
    const TZEPFrameState before;
    QString error;
    try {
        Q_EMIT BeforDraw(this);
        DrawContent();
        Q_EMIT BeforFlush(this);
        return {};
    } catch (const std::exception& thrown) {
        error = QString::fromUtf8(thrown.what());
    } catch (...) {
        error = QStringLiteral("Something was thrown that is no exception.");
    }
    before.Restore();
    m_appliedOptions.reset();
    return error.isNull() ? QStringLiteral("") : error;
}

// Later, since a handler may show a message or close the window.
void TZEPPanel::NoteFrame(const QString& error) {
    const bool failedBefore = std::exchange(m_failed, !error.isNull());
    if (!m_failed || failedBefore) return;
    QMetaObject::invokeMethod(
        this, [this, error] { Q_EMIT FrameFailed(this, error); }, Qt::QueuedConnection);
}

void TZEPPanel::DrawContent() {
    if (!Enabled() || !m_camera || !m_scene) {
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        return;
    }
    ++m_frameCount;
    ++TotalFrames;
    QElapsedTimer clock;
    clock.start();
    m_drewDraft = DrawsDraft();
    m_fullNext = false;
    Render(Width(), Height(), m_drewDraft);
    m_lastRenderMilliseconds = static_cast<double>(clock.nsecsElapsed()) * 1e-6;
}

bool TZEPPanel::DrawsDraft() const {
    return m_forceDraft || (!m_fullNext && MouseDowned() && m_scene && m_scene->QuickMouse());
}

void TZEPPanel::Render(int width, int height, bool draft) {
    if (!m_camera) return;
    if (m_appliedOptions != m_options) ApplyOptions();
    m_fog.Apply();
    if (m_scene) m_scene->Render(m_camera, width, height, draft);
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
    OpenWindow();
    if (!DrawFrame()) return {};
    QImage frame(Width(), Height(), QImage::Format_ARGB32);
    const bool doubleBuffer = m_context.PixelFormat().Has(pfDoubleBuffer);
    glPushAttrib(GL_PIXEL_MODE_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glReadBuffer(doubleBuffer ? GL_BACK : GL_FRONT);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, frame.width(), frame.height(), GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                 frame.bits());
    glPopClientAttrib();
    glPopAttrib();
    Q_EMIT AfterDraw(this);
    // OpenGL's first row is the lowest one.
    return frame.mirrored().convertToFormat(QImage::Format_RGB32);
}

} // namespace ZEP
