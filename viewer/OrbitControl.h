#pragma once

#include <QObject>
#include <QPointF>

class QMouseEvent;
class QWheelEvent;
class QWidget;

namespace ZEP {

class TZEPCamera;

/// Turns mouse input of a view into movements of its camera: the left button orbits about the
/// target, the right one shifts the view with the pointer, the wheel comes nearer or goes away.
/// Positions are device pixels.
class TOrbitControl : public QObject {
    Q_OBJECT
public:
    /// \param view    whose mouse is listened to; owns the control
    TOrbitControl(QWidget* view, TZEPCamera* camera);

    /// The pointer moved by so many device pixels, x to the right and y down, with a button held.
    void Orbit(double dx, double dy);
    void Pan(double dx, double dy);
    /// Wheel steps; positive ones come nearer.
    void Dolly(double steps);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QPointF DevicePosition(const QPointF& position) const;
    [[nodiscard]] double ViewHeight() const;
    bool Press(const QMouseEvent& event);
    bool Drag(const QMouseEvent& event);
    bool Turn(const QWheelEvent& event);

    QWidget* m_view;
    TZEPCamera* m_camera;
    QPointF m_last;
};

} // namespace ZEP
