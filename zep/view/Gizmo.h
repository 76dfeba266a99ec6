#pragma once

#include <zep/Export.h>
#include <zep/view/Directions.h>

#include <QImage>
#include <QObject>
#include <QPoint>
#include <QPointF>

#include <array>
#include <optional>

class QMouseEvent;
class QPainter;

namespace ZEP {

class TZEPPanel;

/// The directions of the axes in the lower left corner of a panel, over those of a `TZEPBackdrop`,
/// with a ball at either end of each. A click on a ball looks from there, at the same target from
/// as far as before:
///
///     new TZEPGizmo(panel);
///
/// Balls take the left button from the panel; all else stays the panel's.
class ZEP_EXPORT TZEPGizmo : public QObject {
    Q_OBJECT
public:
    /// \param panel  owns this
    explicit TZEPGizmo(TZEPPanel* panel);

    [[nodiscard]] bool Visible() const { return m_visible; }
    void SetVisible(bool visible);
    /// From where a click there would look; none beside the balls.
    /// \param place  device pixels from the upper left corner of the panel
    [[nodiscard]] std::optional<TDirection> At(const QPoint& place) const;
    /// The middle of the ball of a direction, in device pixels; none for `Iso`, and without a
    /// camera.
    [[nodiscard]] std::optional<QPoint> PlaceOf(TDirection direction) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The camera looks from there now.
    void Turned(ZEP::TDirection direction);

private:
    struct TBall {
        std::size_t Axis;
        bool Positive;
        TDirection Direction;
        QPointF Place; ///< pixels from the middle of the gizmo, y upwards
        double Depth;  ///< the larger, the nearer
    };
    using TBalls = std::array<TBall, 6>;

    [[nodiscard]] std::optional<TBalls> Balls() const;
    [[nodiscard]] QImage Picture(const TBalls& balls) const;
    void Paint(QPainter& painter, const TBall& ball) const;
    [[nodiscard]] std::optional<TDirection> Under(const QMouseEvent& event) const;
    [[nodiscard]] bool Press(const QMouseEvent& event);
    [[nodiscard]] bool Follow(const QMouseEvent& event);
    [[nodiscard]] bool Release(const QMouseEvent& event);
    void Hover(const std::optional<TDirection>& direction);
    void Turn(TDirection direction);
    void Draw() const;

    TZEPPanel* m_panel;
    bool m_visible = true;
    std::optional<TDirection> m_hovered;
    std::optional<TDirection> m_pressed;
};

} // namespace ZEP
