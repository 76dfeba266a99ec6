#include "viewer/window/DetailControl.h"

#include "viewer/files/Document.h"
#include <zep/view/Panel.h>

#include <QTimerEvent>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int RestTime = 250;       // ms without a movement
constexpr double FrameTime = 50;    // ms
constexpr double FirstShare = 0.05; // until frames have been measured
constexpr double LeastShare = 0.005;
constexpr double Step = 1.4;

} // namespace

TDetailControl::TDetailControl(TZEPPanel* panel, TDocument& document)
    : QObject(panel), m_panel(panel), m_document(&document), m_movingShare(FirstShare) {
    connect(panel, &TZEPPanel::BeforDraw, this, &TDetailControl::BeforeFrame);
    connect(panel, &TZEPPanel::AfterDraw, this, &TDetailControl::AfterFrame);
}

TDetailControl::TView TDetailControl::CurrentView() const {
    const TZEPCamera& camera = *m_document->Camera();
    return {camera.GetPosition(), camera.GetTarget(), camera.FieldOfView()};
}

void TDetailControl::BeforeFrame() {
    const TView view = CurrentView();
    m_moving = m_document->IsLarge() && m_lastView != view;
    m_lastView = view;
    m_document->SetShare(m_moving ? m_movingShare : 1);
    m_clock.start();
}

void TDetailControl::AfterFrame() {
    if (!m_moving) return;
    const auto elapsed = static_cast<double>(m_clock.nsecsElapsed()) * 1e-6;
    if (m_movingShare < 1) {
        m_panel->StayRough();
        m_rest.start(RestTime, this);
    }
    if (elapsed > FrameTime) m_movingShare = std::max(m_movingShare / Step, LeastShare);
    if (elapsed < FrameTime / 2) m_movingShare = std::min(m_movingShare * Step, 1.0);
}

void TDetailControl::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_rest.timerId()) return QObject::timerEvent(event);
    m_rest.stop();
    m_panel->Invalidate();
}

} // namespace ZEP
