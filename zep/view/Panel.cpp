#include <zep/view/Panel.h>

#include <zep/framework/Property.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/FrameMean.h>
#include <zep/view/RubberBand.h>

#include <QLayout>
#include <QPlatformSurfaceEvent>
#include <QWindow>

#include <utility>

namespace ZEP {

TZEPPanel::TZEPPanel(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_NativeWindow);
    setAttribute(Qt::WA_PaintOnScreen);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true); // its events tell of moves without a button, too
    m_context.Binding().SetExposeHandler([this] { ShowAgain(); });
    FollowParent();
}

TZEPPanel::~TZEPPanel() {
    m_control.Cancel(*this);
    if (m_scene) m_scene->UnregisterGLPanel(this);
}

// --- properties --------------------------------------------------------------------------------

void TZEPPanel::SetAlign(TAlign align) {
    if (Change(m_align, align)) Realign();
}

void TZEPPanel::SetEnabled(bool enabled) {
    if (enabled != Enabled()) setEnabled(enabled); // the change repaints
}

void TZEPPanel::SetTabStop(bool stop) {
    setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
}

void TZEPPanel::SetOptions(TZEPOptions options) {
    if (Change(m_options, options)) Invalidate();
}

void TZEPPanel::SetShown(const std::optional<TZEPShown>& shown) {
    const auto look = [](std::optional<TZEPShown> rules) {
        if (rules) rules->Share = 1;
        return rules;
    };
    if (look(std::exchange(m_shown, shown)) != look(shown)) Invalidate();
}

void TZEPPanel::SetForceDraft(bool force) {
    if (Change(m_forceDraft, force)) Invalidate();
}

int TZEPPanel::Width() const {
    return qRound(width() * devicePixelRatioF());
}

int TZEPPanel::Height() const {
    return qRound(height() * devicePixelRatioF());
}

// --- camera and scene --------------------------------------------------------------------------

void TZEPPanel::SetCamera(TZEPCamera* camera) {
    if (camera == m_camera) return;
    if (m_camera) m_camera->disconnect(this);
    m_camera = camera;
    if (camera) {
        connect(camera, &TZEPCamera::SceneChanged, this, &TZEPPanel::FollowScene);
        connect(camera, &TZEPCamera::Freed, this, &TZEPPanel::CameraDestroyed);
    }
    FollowScene();
}

void TZEPPanel::FollowScene() {
    TZEPScene* scene = m_camera ? m_camera->Scene() : nullptr;
    if (scene != m_scene) {
        if (m_scene) m_scene->UnregisterGLPanel(this);
        m_scene = scene;
        if (scene) scene->RegisterGLPanel(this);
    }
    Invalidate();
}

void TZEPPanel::CameraDestroyed() {
    m_camera = nullptr;
    m_control.Cancel(*this);
    FollowScene();
}

void TZEPPanel::SceneDestroyed() {
    m_control.Cancel(*this);
    m_scene = nullptr;
    Invalidate();
}

// --- window handle -----------------------------------------------------------------------------

bool TZEPPanel::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::WinIdChange:
        CloseHandle();
        if (internalWinId()) OpenHandle();
        break;
    case QEvent::ScreenChangeInternal: // perhaps with another pixel ratio
        UpdateViewport();
        break;
    case QEvent::ParentChange:
        FollowParent();
        break;
    case QEvent::Hide:
    case QEvent::FocusOut:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
        m_control.Cancel(*this); // the release goes elsewhere
        break;
    default:
        break;
    }
    return handled;
}

bool TZEPPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_watchedParent && event->type() == QEvent::Resize) Realign();
    if (watched == windowHandle() && event->type() == QEvent::PlatformSurface &&
        static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() ==
            QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
        CloseHandle();
    return QWidget::eventFilter(watched, event);
}

/// A panel that was never shown has no window yet. Who asks for a picture is told by its answer
/// that OpenGL cannot draw: perhaps nobody is there to close a box.
void TZEPPanel::OpenWindow() {
    m_context.SetQuiet(true);
    winId();
    m_context.SetQuiet(false);
}

void TZEPPanel::OpenHandle() {
    if (QWindow* window = windowHandle()) window->installEventFilter(this);
    m_context.CreateContext(internalWinId());
    setAttribute(Qt::WA_PaintOnScreen, m_context.HasContext());
    UpdateViewport();
    Invalidate();
}

// A window is made for its format. In a frame it waits for that to end.
void TZEPPanel::SetSampleWish(const TSampleWish& wish) {
    if (wish == m_context.SampleWish()) return;
    if (m_drawing) {
        QMetaObject::invokeMethod(
            this, [this, wish] { SetSampleWish(wish); }, Qt::QueuedConnection);
        return;
    }
    m_context.SetSampleWish(wish);
    if (!m_context.HasContext()) return;
    m_control.Cancel(*this);
    CloseHandle();
    OpenHandle();
}

void TZEPPanel::CloseHandle() {
    m_context.DestroyContext();
    m_appliedOptions.reset();
    TFrame::Resume();
}

void TZEPPanel::UpdateViewport() {
    m_context.Binding().Resize(Width(), Height());
    m_context.MakeCurrent();
    if (m_context.IsCurrent()) glViewport(0, 0, Width(), Height());
    DoneCurrent();
    Invalidate();
}

void TZEPPanel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        if (!isEnabled()) m_control.Cancel(*this);
        Invalidate();
    }
    QWidget::changeEvent(event);
}

void TZEPPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    UpdateViewport();
}

// --- place in the parent -----------------------------------------------------------------------

void TZEPPanel::FollowParent() {
    if (m_watchedParent) m_watchedParent->removeEventFilter(this);
    m_watchedParent = parentWidget();
    if (m_watchedParent) m_watchedParent->installEventFilter(this);
    Realign();
}

void TZEPPanel::Realign() {
    if (!m_watchedParent || m_watchedParent->layout()) return;
    const QRect area = m_watchedParent->contentsRect();
    QRect place = geometry();
    switch (m_align) {
    case alNone:
        return;
    case alTop:
        place = QRect(area.topLeft(), QSize(area.width(), height()));
        break;
    case alBottom:
        place = QRect(area.left(), area.bottom() + 1 - height(), area.width(), height());
        break;
    case alLeft:
        place = QRect(area.topLeft(), QSize(width(), area.height()));
        break;
    case alRight:
        place = QRect(area.right() + 1 - width(), area.top(), width(), area.height());
        break;
    case alClient:
        place = area;
        break;
    }
    setGeometry(place);
}

} // namespace ZEP
