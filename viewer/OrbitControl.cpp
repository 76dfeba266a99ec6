#include "viewer/OrbitControl.h"

#include "view/Camera.h"

#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZEP {

namespace {

constexpr double OrbitOfView = 180;   // degrees, for a drag across the height of the view
constexpr double NearestToPole = 0.1; // degrees: at the pole up is undefined
constexpr double DollyStep = 0.85;    // of the distance stays, for each step nearer
constexpr double UnitsOfStep = 120;   // of a wheel event
constexpr double DegreesPerRadian = 180 / std::numbers::pi;

TGLArrayd3 ToEye(const TZEPCamera& camera) {
    const TGLArrayd3 eye = camera.GetPosition();
    const TGLArrayd3 target = camera.GetTarget();
    return {eye[0] - target[0], eye[1] - target[1], eye[2] - target[2]};
}

} // namespace

TOrbitControl::TOrbitControl(QWidget* view, TZEPCamera* camera)
    : QObject(view), m_view(view), m_camera(camera) {
    view->installEventFilter(this);
}

void TOrbitControl::Orbit(double dx, double dy) {
    const double perPixel = OrbitOfView / ViewHeight();
    TGLArrayd3 spherical;
    OrthoToSphered(ToEye(*m_camera), spherical);
    const double polar = spherical[2] * DegreesPerRadian;
    const double wanted = std::clamp(polar - dy * perPixel, NearestToPole, 180 - NearestToPole);
    m_camera->Orbit(-dx * perPixel, wanted - polar);
}

void TOrbitControl::Pan(double dx, double dy) {
    const TGLArrayd3 toEye = ToEye(*m_camera);
    TGLArrayd3 right;
    CrossProdd(m_camera->Up()->Data(), toEye, right);
    Normalized(right);
    TGLArrayd3 up;
    CrossProdd(toEye, right, up);
    Normalized(up);
    const double extent = 2 * std::sqrt(Dotd(toEye, toEye)) *
                          std::tan(m_camera->FieldOfView() / 2 / DegreesPerRadian);
    const double perPixel = extent / ViewHeight();
    TGLArrayd3 shift;
    for (std::size_t i = 0; i < shift.size(); ++i)
        shift[i] = (up[i] * dy - right[i] * dx) * perPixel;
    m_camera->Move(shift[0], shift[1], shift[2], shift[0], shift[1], shift[2]);
}

void TOrbitControl::Dolly(double steps) {
    const TGLArrayd3 toEye = ToEye(*m_camera);
    const double distance = std::sqrt(Dotd(toEye, toEye));
    // Below a distance of 1 the camera steps by parts of 1, which would carry it through the
    // target.
    m_camera->Dolly((std::pow(DollyStep, steps) - 1) * std::min(distance, 1.0));
}

bool TOrbitControl::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        return Drag(*static_cast<QMouseEvent*>(event));
    case QEvent::Wheel:
        return Turn(*static_cast<QWheelEvent*>(event));
    default:
        return QObject::eventFilter(watched, event);
    }
}

QPointF TOrbitControl::DevicePosition(const QPointF& position) const {
    return position * m_view->devicePixelRatioF();
}

double TOrbitControl::ViewHeight() const {
    return std::max(1.0, m_view->height() * m_view->devicePixelRatioF());
}

bool TOrbitControl::Press(const QMouseEvent& event) {
    m_last = DevicePosition(event.position());
    return false;
}

bool TOrbitControl::Drag(const QMouseEvent& event) {
    const QPointF position = DevicePosition(event.position());
    const QPointF moved = position - m_last;
    m_last = position;
    if (event.buttons() & Qt::LeftButton) Orbit(moved.x(), moved.y());
    if (event.buttons() & Qt::RightButton) Pan(moved.x(), moved.y());
    return false;
}

bool TOrbitControl::Turn(const QWheelEvent& event) {
    Dolly(event.angleDelta().y() / UnitsOfStep);
    return false;
}

} // namespace ZEP
