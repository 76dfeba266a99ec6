#include <zep/view/SectionHandles.h>

#include <zep/framework/Color.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Backdrop.h>
#include <zep/view/Camera.h>
#include <zep/view/OverPixels.h>
#include <zep/view/Panel.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace ZEP {

namespace {

// Pixels.
constexpr double HandleSide = 36;
constexpr double BallRadius = 7;
constexpr double ArrowReach = 16;
constexpr double ArrowHead = 5;
constexpr double PressReach = 12;    // of a press from the middle
constexpr double LeastTurned = 0.02; // of the normal from the line of sight, squared sine
constexpr QColor RimColor{0x10, 0x10, 0x18};

TColor ColorOf(std::size_t section) {
    return TZEPBackdrop::TColors().Axis(section);
}

/// How far the content reaches along a direction of length 1.
std::pair<double, double> RangeAlong(const TZEPBounds& content, const TGLArrayd3& normal) {
    const double middle = Dotd(normal, Middle(content.Min, content.Max));
    double reach = 0;
    for (std::size_t k = 0; k < 3; ++k)
        reach += std::abs(normal[k]) * (content.Max[k] - content.Min[k]) / 2;
    return {middle - reach, middle + reach};
}

/// Where the edges of the box meet the plane, in order about it.
std::vector<TGLArrayd3> RimOf(const TZEPBounds& box, const TGLArrayd3& normal,
                              const TGLArrayd3& on) {
    std::vector<TGLArrayd3> rim;
    for (std::size_t along = 0; along < 3; ++along)
        for (unsigned corner = 0; corner < 4; ++corner) {
            TGLArrayd3 from = box.Min;
            const std::size_t a = (along + 1) % 3;
            const std::size_t b = (along + 2) % 3;
            if (corner & 1U) from[a] = box.Max[a];
            if (corner & 2U) from[b] = box.Max[b];
            const double at = Dotd(normal, on - from) / normal[along];
            if (!(at >= 0 && at <= box.Max[along] - box.Min[along])) continue;
            from[along] += at;
            rim.push_back(from);
        }
    const TGLArrayd3 u = Unit(Cross(normal, std::abs(normal[0]) < 0.9 ? unitx : unity));
    const TGLArrayd3 v = Cross(normal, u);
    TGLArrayd3 middle = zero3d;
    for (const TGLArrayd3& point : rim) middle += point / static_cast<double>(rim.size());
    std::ranges::sort(rim, {}, [&](const TGLArrayd3& point) {
        return std::atan2(Dotd(point - middle, v), Dotd(point - middle, u));
    });
    return rim;
}

/// A ball with an arrow to either side, along x.
void PaintHandle(QPainter& painter, const QColor& color, bool isLit) {
    const QPointF ends[] = {{-ArrowReach, 0}, {ArrowReach, 0}};
    for (const auto& [lineColor, width] : {std::pair{RimColor, 4}, {color, 2}}) {
        painter.setPen(QPen(lineColor, width, Qt::SolidLine, Qt::RoundCap));
        for (const QPointF& end : ends) {
            const double back = end.x() > 0 ? -ArrowHead : ArrowHead;
            painter.drawLine(QPointF(), end);
            painter.drawLine(end, end + QPointF(back, ArrowHead));
            painter.drawLine(end, end + QPointF(back, -ArrowHead));
        }
    }
    painter.setPen(QPen(isLit ? QColor(Qt::white) : RimColor, 2));
    painter.setBrush(color);
    painter.drawEllipse(QPointF(), BallRadius, BallRadius);
}

} // namespace

TZEPSectionHandles::TZEPSectionHandles(TZEPPanel* panel) : QObject(panel), m_panel(panel) {
    panel->installEventFilter(this);
    connect(panel, &TZEPPanel::DrawOver, this, &TZEPSectionHandles::Draw);
    panel->InvalidateOver();
}

void TZEPSectionHandles::SetContent(const std::optional<TZEPBounds>& content) {
    m_content = content;
    m_panel->InvalidateOver();
}

// --- where they are ----------------------------------------------------------------------------

/// The middle of the content, brought into the plane.
std::optional<TGLArrayd3> TZEPSectionHandles::Anchor(const TZEPSection& section) const {
    if (!m_content || !section.Plane()) return {};
    const TGLArrayd3 normal = Unit(section.Normal);
    const TGLArrayd3 middle = Middle(m_content->Min, m_content->Max);
    return middle + (section.Distance - Dotd(normal, middle)) * normal;
}

std::optional<QPoint> TZEPSectionHandles::PlaceOf(std::size_t section) const {
    const TZEPCamera* camera = m_panel->Camera();
    if (!camera || section >= SectionCount) return {};
    const auto anchor = Anchor(camera->Sections()[section]);
    const auto place = anchor ? m_panel->GetScreenCoords(*anchor) : std::nullopt;
    if (!place || (*place)[2] > 1 ||
        !QRectF(QPointF(), m_panel->Size()).contains((*place)[0], (*place)[1]))
        return {};
    return QPoint(qRound((*place)[0]), qRound((*place)[1]));
}

std::optional<std::size_t> TZEPSectionHandles::At(const QPoint& place) const {
    const double reach = PressReach * m_panel->devicePixelRatioF();
    for (std::size_t i = 0; i < SectionCount; ++i)
        if (const auto middle = PlaceOf(i))
            if (const QPoint away = *middle - place; std::hypot(away.x(), away.y()) <= reach)
                return i;
    return {};
}

/// Where on the line through the anchor along the normal the pointer is, as near as it gets.
double TZEPSectionHandles::Along(const TGLArrayd3& anchor, const TGLArrayd3& normal,
                                 const QPoint& place) const {
    const auto seen = m_panel->GetScreenCoords(anchor);
    if (!seen) return 0;
    const auto from = m_panel->GetWorldCoords(place.x(), place.y(), 0);
    const auto to = m_panel->GetWorldCoords(place.x(), place.y(), (*seen)[2]);
    const auto above = m_panel->GetWorldCoords((*seen)[0], (*seen)[1] - 1, (*seen)[2]);
    if (!from || !to || !above) return 0;
    const TGLArrayd3 sight = Unit(*to - *from);
    const double turned = 1 - Dotd(normal, sight) * Dotd(normal, sight);
    // Of a plane that is looked at straight, up on the screen is away from what is cut.
    if (turned < LeastTurned) return ((*seen)[1] - place.y()) * Distance(anchor, *above);
    const TGLArrayd3 away = *from - anchor;
    return (Dotd(away, normal) - Dotd(away, sight) * Dotd(normal, sight)) / turned;
}

// --- the mouse ---------------------------------------------------------------------------------

bool TZEPSectionHandles::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        return Follow(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
        return Release(*static_cast<QMouseEvent*>(event));
    case QEvent::KeyPress:
        return static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && TakeBack();
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
        m_drag.reset();
        Hover({});
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

QPoint TZEPSectionHandles::PlaceOf(const QMouseEvent& event) const {
    return (event.position() * m_panel->devicePixelRatioF()).toPoint();
}

bool TZEPSectionHandles::Press(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || event.buttons() != Qt::LeftButton) return false;
    const auto section = At(PlaceOf(event));
    if (!section) return false;
    const TZEPSections sections = m_panel->Camera()->Sections();
    const TGLArrayd3 anchor = *Anchor(sections[*section]);
    const TGLArrayd3 normal = Unit(sections[*section].Normal);
    m_drag = {*section, sections, Along(anchor, normal, PlaceOf(event)), anchor};
    return true;
}

bool TZEPSectionHandles::Follow(const QMouseEvent& event) {
    if (m_drag && !(event.buttons() & Qt::LeftButton)) m_drag.reset(); // the release went elsewhere
    if (!m_drag) {
        if (!m_panel->MouseDowned()) Hover(At(PlaceOf(event)));
        return false;
    }
    DragTo(PlaceOf(event)); // who hears of it may free the panel, and this
    return true;
}

bool TZEPSectionHandles::Release(const QMouseEvent& event) {
    return event.button() == Qt::LeftButton && std::exchange(m_drag, {}).has_value();
}

bool TZEPSectionHandles::TakeBack() {
    if (!m_drag) return false;
    const TDrag drag = *std::exchange(m_drag, {});
    if (m_panel->Camera()) m_panel->Camera()->SetSections(drag.Before);
    Q_EMIT Moved(drag.Section);
    return true;
}

void TZEPSectionHandles::DragTo(const QPoint& place) {
    if (!m_panel->Camera() || !m_content) return;
    const std::size_t dragged = m_drag->Section;
    TZEPSections sections = m_panel->Camera()->Sections();
    TZEPSection& section = sections[dragged];
    const TZEPSection& before = m_drag->Before[dragged];
    const TGLArrayd3 normal = Unit(before.Normal);
    const auto [least, most] = RangeAlong(*m_content, normal);
    const double moved = Along(m_drag->Anchor, normal, place) - m_drag->Grip;
    section.Distance = std::clamp(before.Distance + moved, least, most);
    m_panel->Camera()->SetSections(sections);
    Q_EMIT Moved(dragged);
}

void TZEPSectionHandles::Hover(const std::optional<std::size_t>& section) {
    if (std::exchange(m_hovered, section) != section) m_panel->InvalidateOver();
}

// --- drawing -----------------------------------------------------------------------------------

QImage TZEPSectionHandles::Picture(std::size_t section, const TGLArrayd3& anchor) const {
    const TGLMatrixd4 view = m_panel->Camera()->GetViewMatrix();
    TGLArrayd3 from = anchor;
    TGLArrayd3 to = anchor + Unit(m_panel->Camera()->Sections()[section].Normal);
    Xformd(view, from);
    Xformd(view, to);
    const TGLArrayd3 seen = to - from;
    const bool isSeen = std::hypot(seen[0], seen[1]) > 0.1;
    const double turned = isSeen ? -qRadiansToDegrees(std::atan2(seen[1], seen[0])) : -90;
    const bool isLit = m_hovered == section || (m_drag && m_drag->Section == section);
    const QPointF middle(HandleSide / 2, HandleSide / 2);
    return PaintedMark({HandleSide, HandleSide}, middle, m_panel->devicePixelRatioF(),
                       [&](QPainter& painter) {
                           painter.rotate(turned);
                           PaintHandle(painter, ToQColor(ColorOf(section)), isLit);
                       });
}

void TZEPSectionHandles::DrawRim(std::size_t section, const TGLArrayd3& anchor) const {
    TGLMatrixd4 view = m_panel->Camera()->GetViewMatrix();
    const TZEPMatrixScope matrix;
    Translatedv(anchor, view); // far from the origin floats are coarse
    glLoadMatrixd(view[0].data());
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(static_cast<float>(1.5 * m_panel->devicePixelRatioF()));
    glColor4fv(ToGLColor(ColorOf(section), 0.9F).data());
    const TGLArrayd3 normal = Unit(m_panel->Camera()->Sections()[section].Normal);
    const TPrimitiveScope rim(GL_LINE_LOOP);
    for (const TGLArrayd3& point : RimOf(*m_content, normal, anchor))
        glVertex3dv((point - anchor).data());
}

void TZEPSectionHandles::Draw() const {
    if (!m_panel->Camera()) return;
    for (std::size_t i = 0; i < SectionCount; ++i) {
        const auto anchor = Anchor(m_panel->Camera()->Sections()[i]);
        if (!anchor) continue;
        DrawRim(i, *anchor);
        const auto place = PlaceOf(i);
        if (!place) continue;
        const QImage handle = Picture(i, *anchor);
        DrawBlended(handle, {place->x() - handle.width() / 2,
                             m_panel->Height() - place->y() - handle.height() / 2});
    }
}

} // namespace ZEP
