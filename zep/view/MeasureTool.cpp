#include <zep/view/MeasureTool.h>

#include <zep/framework/Color.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/OverPixels.h>
#include <zep/view/Panel.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QTimerEvent>

#include <cmath>
#include <utility>

namespace ZEP {

namespace {

constexpr double SnapReach = 10; // pixels
constexpr double MarkRadius = 6; // pixels
constexpr QSizeF MarkSize{130, 36};
constexpr QColor MarkColor{255, 220, 60};

/// The circle through three points: its centre; none where they lie on a line.
std::optional<TGLArrayd3> CentreOf(const TGLArrayd3& a, const TGLArrayd3& b, const TGLArrayd3& c) {
    const TGLArrayd3 u = b - a;
    const TGLArrayd3 v = c - a;
    const TGLArrayd3 normal = Cross(u, v);
    const double square = Dotd(normal, normal);
    if (!(square > 1e-18 * Dotd(u, u) * Dotd(v, v))) return {};
    return a + (Dotd(u, u) * Cross(v, normal) + Dotd(v, v) * Cross(normal, u)) / (2 * square);
}

QString PromptFor(TZEPDimensionKind kind, std::size_t points) {
    switch (kind) {
    case dmAngle:
        return points == 0   ? QStringLiteral("Angle: click a point on the first arm")
               : points == 1 ? QStringLiteral("Angle: click the corner")
                             : QStringLiteral("Angle: click a point on the second arm");
    case dmRadius:
        return points == 0 ? QStringLiteral("Radius: click a circle or an arc, or three points")
                           : QStringLiteral("Radius: click the next of three points");
    case dmChain:
        return points == 0 ? QStringLiteral("Chain: click the first point")
                           : QStringLiteral("Chain: click the next point; Return ends, the first "
                                            "point closes it");
    case dmDistance:
        break;
    }
    return points == 0 ? QStringLiteral("Distance: click the first point")
                       : QStringLiteral("Distance: click the second point");
}

/// About the origin.
void PaintMark(QPainter& painter, TZEPSnapKind kind) {
    const double r = MarkRadius;
    switch (kind) {
    case TZEPSnapKind::End:
        return painter.drawRect(QRectF(-r, -r, 2 * r, 2 * r));
    case TZEPSnapKind::Vertex:
        return painter.drawPolygon(QPolygonF({{0, -r - 1}, {r + 1, 0}, {0, r + 1}, {-r - 1, 0}}));
    case TZEPSnapKind::MiddlePoint:
        return painter.drawPolygon(QPolygonF({{0, -r}, {r, r * 0.8}, {-r, r * 0.8}}));
    case TZEPSnapKind::Centre:
        return painter.drawEllipse(QPointF(), r, r);
    case TZEPSnapKind::Intersection:
        painter.drawLine(QPointF(-r, -r), QPointF(r, r));
        return painter.drawLine(QPointF(-r, r), QPointF(r, -r));
    case TZEPSnapKind::Nearest:
        return painter.drawPolygon(QPolygonF({{-r, -r}, {r, -r}, {-r, r}, {r, r}}));
    }
}

} // namespace

TZEPMeasureTool::TZEPMeasureTool(TZEPPanel* panel) : QObject(panel), m_panel(panel) {
    panel->installEventFilter(this);
    connect(panel, &TZEPPanel::DrawOver, this, &TZEPMeasureTool::Draw);
    // Another scene, or another view of it, is there now.
    connect(panel, &TZEPPanel::AfterDraw, this, [this] {
        if (m_kind && m_pointer) m_looking.start(0, this);
    });
}

TZEPMeasureTool::~TZEPMeasureTool() = default;

void TZEPMeasureTool::Start(TZEPDimensionKind kind) {
    Forget();
    m_kind = kind;
    m_panel->setCursor(Qt::CrossCursor);
    Prompt();
}

void TZEPMeasureTool::Stop() {
    if (!m_kind) return;
    Forget();
    m_kind.reset();
    m_panel->unsetCursor();
    Q_EMIT Stopped();
}

void TZEPMeasureTool::Forget() {
    m_points.clear();
    m_of = nullptr;
    m_snap.reset();
    m_snapper.Forget();
    m_panel->InvalidateOver();
}

void TZEPMeasureTool::Prompt() {
    if (m_kind) Q_EMIT Told(PromptFor(*m_kind, m_points.size()));
}

// --- input -------------------------------------------------------------------------------------

bool TZEPMeasureTool::eventFilter(QObject* watched, QEvent* event) {
    if (!m_kind) return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonDblClick:
        if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) return false;
        EndChain();
        return true;
    case QEvent::MouseButtonRelease:
        return static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    case QEvent::MouseMove: {
        const auto& move = *static_cast<QMouseEvent*>(event);
        m_pointer = (move.position() * m_panel->devicePixelRatioF()).toPoint();
        m_looking.start(0, this); // once, after all moves that have come
        return false;
    }
    case QEvent::KeyPress:
        return Key(*static_cast<QKeyEvent*>(event));
    case QEvent::Leave:
    case QEvent::Hide:
        m_pointer.reset();
        m_snap.reset();
        m_panel->InvalidateOver();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool TZEPMeasureTool::Press(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return false;
    const QPointer<TZEPMeasureTool> alive(this); // what is drawn to find it may free the panel
    Look((event.position() * m_panel->devicePixelRatioF()).toPoint());
    if (!alive) return true;
    if (m_snap)
        Take(*m_snap);
    else
        Q_EMIT Told(QStringLiteral("There is nothing to measure here: point at an end, a line, an "
                                   "edge or a surface."));
    return true;
}

bool TZEPMeasureTool::Key(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Escape:
        if (m_points.empty()) {
            Stop();
        } else {
            Forget();
            Prompt();
        }
        return true;
    case Qt::Key_Backspace:
        if (m_points.empty()) return false;
        m_points.pop_back();
        m_panel->InvalidateOver();
        Prompt();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        EndChain();
        return true;
    default:
        return false;
    }
}

void TZEPMeasureTool::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_looking.timerId()) return QObject::timerEvent(event);
    m_looking.stop();
    if (m_kind && m_pointer && !m_panel->MouseDowned()) Look(*m_pointer);
}

void TZEPMeasureTool::Look(const QPoint& place) {
    if (!m_panel->Camera()) return;
    const QPointer<TZEPMeasureTool> alive(this);
    m_snapper.SetReach(SnapReach * m_panel->devicePixelRatioF());
    std::optional<TZEPSnap> found;
    m_panel->TryFind(
        [&] { found = m_snapper.Find(*m_panel->Camera(), m_panel->Size(), place.x(), place.y()); });
    if (!alive) return;
    m_snap = found;
    m_panel->InvalidateOver();
}

// --- measuring ---------------------------------------------------------------------------------

void TZEPMeasureTool::Take(const TZEPSnap& snap) {
    if (m_points.empty()) m_of = snap.Object;
    if (m_kind == dmRadius) return TakeRadius(snap);
    const bool closes = m_kind == dmChain && m_points.size() > 2 && snap.Point == m_points.front();
    if (!m_points.empty() && snap.Point == m_points.back()) return; // twice the same
    m_points.push_back(snap.Point);
    const std::size_t needed = m_kind == dmAngle ? 3 : 2;
    if (closes || (m_kind != dmChain && m_points.size() == needed))
        return Finish(std::vector(m_points));
    m_panel->InvalidateOver();
    Prompt();
}

void TZEPMeasureTool::TakeRadius(const TZEPSnap& snap) {
    if (m_points.empty() && snap.Round && snap.Round->Radius > 0) {
        const bool isOnRim = snap.Kind != TZEPSnapKind::Centre;
        return Finish({snap.Round->Center, isOnRim ? snap.Point : snap.Round->Rim});
    }
    m_points.push_back(snap.Point);
    m_panel->InvalidateOver();
    if (m_points.size() < 3) return Prompt();
    const auto centre = CentreOf(m_points[0], m_points[1], m_points[2]);
    if (centre) return Finish({*centre, m_points[0]});
    m_points.clear();
    Q_EMIT Told(
        QStringLiteral("These three points lie on a line: click three points of a circle."));
}

void TZEPMeasureTool::EndChain() {
    if (m_kind == dmChain && m_points.size() > 1) Finish(std::vector(m_points));
}

void TZEPMeasureTool::Finish(const std::vector<TGLArrayd3>& points) {
    TZEPScene* scene = m_panel->Camera() ? m_panel->Camera()->Scene() : nullptr;
    if (!scene) return Forget();
    const QPointer<TZEPMeasureTool> alive(this);
    const QPointer<TZEPDimension> dimension(new TZEPDimension(scene));
    const QPointer<TZEPObject> of(m_of);
    dimension->SetKind(*m_kind);
    dimension->SetSuffix(m_suffix);
    dimension->SetColor(m_color);
    dimension->SetPoints(points);
    const QString report = dimension->Report();
    Forget();
    dimension->SetParentComponent(scene);
    if (alive && dimension) Q_EMIT Measured(dimension, of);
    if (alive) Q_EMIT Told(report);
}

// --- drawing -----------------------------------------------------------------------------------

/// What the pointer snaps to, with its name beside it.
QImage TZEPMeasureTool::Marker() const {
    const QPointF middle(MarkSize.height() / 2, MarkSize.height() / 2);
    return PaintedMark(MarkSize, middle, m_panel->devicePixelRatioF(), [this](QPainter& painter) {
        for (const auto& [color, width] :
             {std::pair{QColor(0, 0, 0, 200), 4.0}, {MarkColor, 2.0}}) {
            painter.setPen(QPen(color, width));
            PaintMark(painter, m_snap->Kind);
        }
        QFont font = painter.font();
        font.setPixelSize(12);
        painter.setFont(font);
        const QString name = NameOf(m_snap->Kind);
        const QRectF box(12, 4, painter.fontMetrics().horizontalAdvance(name) + 8, 14);
        painter.fillRect(box, QColor(0, 0, 0, 170));
        painter.setPen(MarkColor);
        painter.drawText(box, Qt::AlignCenter, name);
    });
}

/// Places count from the first point: far from the origin floats are coarse.
void TZEPMeasureTool::DrawPreview(std::vector<TGLArrayd3> points) {
    const TGLArrayd3 origin = points.front();
    TGLMatrixd4 view = m_panel->Camera()->GetViewMatrix();
    Translatedv(origin, view);
    for (TGLArrayd3& point : points) point -= origin;
    const bool isWhole = m_kind != dmAngle || points.size() == 3;
    m_preview.SetKind(m_kind == dmRadius || !isWhole ? dmChain : *m_kind);
    m_preview.SetSuffix(m_suffix);
    m_preview.SetColor(m_color);
    m_preview.SetPoints(points);
    const TZEPMatrixScope matrix;
    glLoadMatrixd(view[0].data());
    m_preview.DrawTransparent(false);
}

void TZEPMeasureTool::Draw() {
    if (!m_kind || !m_panel->Camera()) return;
    std::vector<TGLArrayd3> points = m_points;
    if (m_snap) points.push_back(m_snap->Point);
    if (!m_points.empty() && points.size() > 1) DrawPreview(std::move(points));
    const auto place = m_snap ? m_panel->GetScreenCoords(m_snap->Point) : std::nullopt;
    if (!place) return;
    const QImage mark = Marker();
    const int middle = mark.height() / 2;
    DrawBlended(mark, {qRound((*place)[0]) - middle,
                       m_panel->Height() - qRound((*place)[1]) - mark.height() + middle});
}

} // namespace ZEP
