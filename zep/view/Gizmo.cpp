#include <zep/view/Gizmo.h>

#include <zep/framework/Color.h>
#include <zep/view/Backdrop.h>
#include <zep/view/Camera.h>
#include <zep/view/OverPixels.h>
#include <zep/view/Panel.h>

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

// Pixels; the directions of a backdrop have the same middle and the same ends.
constexpr double Margin = 52;
constexpr double Reach = 40;
constexpr double LetterRadius = 9;
constexpr double BareRadius = 6;
constexpr double Grown = 2; // of the ball under the pointer

constexpr std::pair<TDirection, TDirection> Ends[] = {{TDirection::Right, TDirection::Left},
                                                      {TDirection::Back, TDirection::Front},
                                                      {TDirection::Top, TDirection::Bottom}};

double RadiusOf(bool positive) {
    return positive ? LetterRadius : BareRadius;
}

} // namespace

TZEPGizmo::TZEPGizmo(TZEPPanel* panel) : QObject(panel), m_panel(panel) {
    panel->installEventFilter(this);
    connect(panel, &TZEPPanel::DrawOver, this, &TZEPGizmo::Draw);
    panel->InvalidateOver();
}

void TZEPGizmo::SetVisible(bool visible) {
    if (std::exchange(m_visible, visible) != visible) m_panel->InvalidateOver();
}

// --- where the balls are -----------------------------------------------------------------------

std::optional<TZEPGizmo::TBalls> TZEPGizmo::Balls() const {
    if (!m_panel->Camera()) return {};
    const TGLMatrixd4 view = m_panel->Camera()->GetViewMatrix();
    TBalls balls{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double length = std::hypot(view[axis][0], view[axis][1], view[axis][2]);
        for (const bool positive : {true, false}) {
            const double reach = (positive ? Reach : -Reach) / (length > 0 ? length : 1);
            balls[2 * axis + (positive ? 0 : 1)] = {axis,
                                                    positive,
                                                    positive ? Ends[axis].first : Ends[axis].second,
                                                    {reach * view[axis][0], reach * view[axis][1]},
                                                    reach * view[axis][2]};
        }
    }
    std::ranges::sort(balls, {}, &TBall::Depth);
    return balls;
}

std::optional<TDirection> TZEPGizmo::At(const QPoint& place) const {
    const std::optional<TBalls> balls = m_visible ? Balls() : std::nullopt;
    if (!balls) return {};
    const double ratio = m_panel->devicePixelRatioF();
    const QPointF from(place.x() / ratio - Margin,
                       (m_panel->Height() - place.y()) / ratio - Margin);
    for (std::size_t i = balls->size(); i-- > 0;) { // the nearest first
        const TBall& ball = (*balls)[i];
        const QPointF away = ball.Place - from;
        if (std::hypot(away.x(), away.y()) <= RadiusOf(ball.Positive) + Grown)
            return ball.Direction;
    }
    return {};
}

std::optional<QPoint> TZEPGizmo::PlaceOf(TDirection direction) const {
    const std::optional<TBalls> balls = Balls();
    if (!balls) return {};
    const auto found = std::ranges::find(*balls, direction, &TBall::Direction);
    if (found == balls->end()) return {};
    const double ratio = m_panel->devicePixelRatioF();
    return QPoint(qRound((Margin + found->Place.x()) * ratio),
                  m_panel->Height() - qRound((Margin + found->Place.y()) * ratio));
}

// --- the mouse ---------------------------------------------------------------------------------

bool TZEPGizmo::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        return Follow(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
        return Release(*static_cast<QMouseEvent*>(event));
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
        m_pressed.reset();
        Hover({});
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

std::optional<TDirection> TZEPGizmo::Under(const QMouseEvent& event) const {
    return At((event.position() * m_panel->devicePixelRatioF()).toPoint());
}

bool TZEPGizmo::Press(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || event.buttons() != Qt::LeftButton) return false;
    m_pressed = Under(event);
    return m_pressed.has_value();
}

bool TZEPGizmo::Follow(const QMouseEvent& event) {
    if (!m_panel->MouseDowned()) Hover(Under(event));
    return m_pressed.has_value();
}

bool TZEPGizmo::Release(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || !m_pressed) return false;
    const std::optional<TDirection> pressed = std::exchange(m_pressed, {});
    if (Under(event) == pressed) Turn(*pressed);
    return true;
}

void TZEPGizmo::Hover(const std::optional<TDirection>& direction) {
    if (std::exchange(m_hovered, direction) != direction) m_panel->InvalidateOver();
}

void TZEPGizmo::Turn(TDirection direction) {
    if (m_panel->Camera()) LookFrom(*m_panel->Camera(), direction);
    Q_EMIT Turned(direction);
}

// --- drawing -----------------------------------------------------------------------------------

QImage TZEPGizmo::Picture(const TBalls& balls) const {
    const QPointF middle(Margin, Margin);
    return PaintedMark({2 * Margin, 2 * Margin}, middle, m_panel->devicePixelRatioF(),
                       [&](QPainter& painter) {
                           QFont font = painter.font();
                           font.setPixelSize(12);
                           font.setBold(true);
                           painter.setFont(font);
                           for (const TBall& ball : balls) Paint(painter, ball);
                       });
}

void TZEPGizmo::Paint(QPainter& painter, const TBall& ball) const {
    const QColor color = ToQColor(TZEPBackdrop::TColors().Axis(ball.Axis));
    const bool isHovered = m_hovered == ball.Direction;
    const QPointF place(ball.Place.x(), -ball.Place.y());
    const double radius = RadiusOf(ball.Positive) + (isHovered ? Grown : 0);
    if (ball.Positive) {
        painter.setPen(QPen(color, 2));
        painter.drawLine(QPointF(), place);
    }
    painter.setPen(QPen(isHovered ? QColor(Qt::white) : color, isHovered ? 2 : 1.2));
    painter.setBrush(ball.Positive ? color : color.darker(280));
    painter.drawEllipse(place, radius, radius);
    if (!ball.Positive) return;
    painter.setPen(QColor(0x10, 0x10, 0x18));
    const QRectF box(place - QPointF(LetterRadius, LetterRadius),
                     QSizeF(2 * LetterRadius, 2 * LetterRadius));
    painter.drawText(box, Qt::AlignCenter,
                     QStringLiteral("XYZ").mid(static_cast<qsizetype>(ball.Axis), 1));
}

void TZEPGizmo::Draw() const {
    if (!m_visible) return;
    if (const std::optional<TBalls> balls = Balls()) DrawBlended(Picture(*balls), {0, 0});
}

} // namespace ZEP
