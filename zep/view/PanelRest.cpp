#include <zep/framework/Property.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/FrameMean.h>
#include <zep/view/Panel.h>

#include <QPointer>
#include <QTimerEvent>

namespace ZEP {

namespace {

constexpr int RestTime = 50; // ms; beyond the 40 between two ticks of an animation

} // namespace

void TZEPPanel::SetRestSamples(int samples) {
    if (Change(m_restSamples, samples)) Invalidate();
}

void TZEPPanel::ForgetRest() {
    m_restTimer.stop();
    m_restMean.reset();
}

/// A frame is shown.
void TZEPPanel::AwaitRest() {
    const bool smooth = !m_staysRough && !m_failed && !m_drewDraft && Enabled() && m_camera &&
                        m_scene && !m_scene->Animation();
    if (smooth && !SmoothSamples(m_restSamples).empty() &&
        m_context.PixelFormat().Has(pfDoubleBuffer))
        m_restTimer.start(RestTime, this);
}

void TZEPPanel::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_restTimer.timerId()) return QWidget::timerEvent(event);
    if (!isVisible() || m_goes) return ForgetRest();
    if (m_drawing || MouseDowned()) return m_restTimer.start(RestTime, this);
    m_restTimer.start(0, this);
    DrawRestFrame();
}

void TZEPPanel::DrawRestFrame() {
    if (!m_restMean) m_restMean = std::make_unique<TZEPFrameMean>();
    const std::span<const TZEPJitter> samples = SmoothSamples(m_restSamples);
    const TZEPJitter shift = samples[static_cast<std::size_t>(m_restMean->Count())];
    const QPointer<TZEPPanel> alive(this);
    const QPointer<TZEPCamera> camera(m_camera);
    camera->SetDrawnPart(
        QRectF(0, 0, Width(), Height())
            .translated(static_cast<double>(shift.X), static_cast<double>(shift.Y)));
    m_drawsRest = true;
    DrawFrame(false, [this] {
        if (m_restMean && !m_failed) m_restMean->Add(ReadPixels({{}, Size()}));
    });
    if (camera) camera->SetDrawnPart({});
    if (!alive) return;
    m_drawsRest = false;
    if (!m_restMean) return;
    if (m_failed || m_restMean->Count() == 0) return ForgetRest();
    if (m_restMean->Count() == static_cast<int>(samples.size())) ShowRested();
}

void TZEPPanel::ShowRested() {
    m_kept = m_restMean->Mean();
    ForgetRest();
    ShowAgain();
}

/// The window system lost what was shown, or there is something better.
void TZEPPanel::ShowAgain() {
    if (m_pending == TPending::Frame || m_drawing || m_goes || !HasKept()) return update();
    PaintOver();
}

} // namespace ZEP
