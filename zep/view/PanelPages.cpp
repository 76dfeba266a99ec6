#include <zep/view/PanelPages.h>

#include <zep/framework/UserError.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/Fitting.h>
#include <zep/view/Panel.h>

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPointer>
#include <QPrinter>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ZEP {

namespace {

constexpr double Inch = 25.4;      // mm
constexpr double TitleHeight = 6;  // mm
constexpr double TitleLetters = 8; // points
constexpr double LeastRoom = 5;    // mm, of a side of the picture
constexpr double Rim = 1;          // mm around what is shown in a true scale

bool IsPositive(double value) {
    return value > 0 && std::isfinite(value);
}

/// A camera looks elsewhere while this lives, and no panel is repainted for it.
class TCameraLoan {
public:
    explicit TCameraLoan(TZEPCamera& camera)
        : m_camera(&camera), m_position(camera.Position()->Data()),
          m_target(camera.Target()->Data()), m_positionObject(camera.PositionObject()),
          m_targetObject(camera.TargetObject()), m_field(camera.FOVY()),
          m_near(camera.NearClipPlane()), m_far(camera.FarClipPlane()),
          m_parallel(camera.Orthographic()), m_manual(camera.Scene()->ManualUpdate()) {
        camera.Scene()->SetManualUpdate(true);
        camera.Store();
    }
    ~TCameraLoan() {
        if (!m_camera) return;
        m_camera->Position()->SetData(m_position);
        m_camera->Target()->SetData(m_target);
        m_camera->SetPositionObject(m_positionObject);
        m_camera->SetTargetObject(m_targetObject);
        m_camera->SetFOVY(m_field);
        m_camera->SetNearClipPlane(m_near);
        m_camera->SetFarClipPlane(m_far);
        m_camera->SetOrthographic(m_parallel);
        m_camera->Restore();
        if (TZEPScene* scene = m_camera->Scene()) scene->SetManualUpdate(m_manual);
    }
    TCameraLoan(const TCameraLoan&) = delete;
    TCameraLoan& operator=(const TCameraLoan&) = delete;

private:
    QPointer<TZEPCamera> m_camera;
    TGLArrayd3 m_position, m_target;
    QPointer<TZEPObject> m_positionObject, m_targetObject;
    double m_field, m_near, m_far;
    bool m_parallel, m_manual;
};

/// Of the sheet that its view shows, else of all of the scene.
std::vector<TGLArrayd3> ShownPoints(const TZEPCamera& camera) {
    return VisiblePoints(camera.Sheet() ? *camera.Sheet() : *camera.Scene());
}

/// Half of what a view shows across and upwards that reaches as far as the points.
struct TReach {
    double Across = 0, Upwards = 0;

    TReach(const TZEPCamera& camera, const std::vector<TGLArrayd3>& points) {
        const TGLMatrixd4 view = camera.GetViewMatrix();
        for (TGLArrayd3 point : points) {
            Xformd(view, point);
            Across = std::max(Across, std::abs(point[0]));
            Upwards = std::max(Upwards, std::abs(point[1]));
        }
    }
};

/// All of the scene in the middle of a parallel view.
/// \return  none where there is nothing
std::optional<TReach> LookAtAll(TZEPCamera& camera) {
    const std::vector<TGLArrayd3> points = ShownPoints(camera);
    SwitchProjection(camera, true, 1);
    if (!FitCamera(camera, points, 1, {.Margin = 1})) return {};
    return TReach(camera, points);
}

/// Half of the view's width becomes `across`: the camera looks as it does, from far enough away.
void Widen(TZEPCamera& camera, double across, double aspect) {
    std::vector<TGLArrayd3> points = ShownPoints(camera);
    TGLMatrixd4 toWorld = camera.GetViewMatrix();
    InverseMatrixd(toWorld);
    const double depth = -Distance(camera.GetPosition(), camera.GetTarget());
    for (const double side : {-1.0, 1.0}) {
        TGLArrayd3 corner{side * across, side * across / aspect, depth};
        Xformd(toWorld, corner);
        points.push_back(corner);
    }
    FitCamera(camera, points, aspect, {.Margin = 1});
    const double distance = Distance(camera.GetPosition(), camera.GetTarget());
    camera.SetFOVY(2 * std::atan(across / distance) / std::numbers::pi * 180);
}

/// As draughtsmen write it: "1:2", "2.5:1".
QString Ratio(double scale) {
    const auto number = [](double value) { return QString::number(value, 'g', 4); };
    return scale < 1 ? QStringLiteral("1:") + number(1 / scale)
                     : number(scale) + QStringLiteral(":1");
}

[[noreturn]] void Refuse(const QString& what) {
    throw TUserError(QStringLiteral("Print: ") + what, what);
}

} // namespace

TZEPPages::TZEPPages(TZEPPanel& panel, const QPageLayout& page, const TZEPPageOptions& options)
    : m_panel(panel), m_options(options) {
    m_options.Resolution = std::clamp(options.Resolution, 10, 1200);
    if (!IsPositive(options.Scale.value_or(1)) || !IsPositive(options.Unit) ||
        !IsPositive(options.LineWidth))
        Refuse(QStringLiteral("scale, unit and line width are numbers above 0"));
    const QRectF room = page.paintRect(QPageLayout::Millimeter);
    const double width = room.width();
    m_foot = room.height() - (options.Title.isEmpty() ? 0 : TitleHeight);
    if (!(width >= LeastRoom) || !(m_foot >= LeastRoom))
        Refuse(QStringLiteral("a page of %1 by %2 mm has no room for a picture within its margins")
                   .arg(page.fullRect(QPageLayout::Millimeter).width())
                   .arg(page.fullRect(QPageLayout::Millimeter).height()));
    if (options.Scale)
        TileView(width, m_foot);
    else
        FitView(width, m_foot);
}

int TZEPPages::Pixels(double millimetres) const {
    return std::max(1, static_cast<int>(millimetres / Inch * m_options.Resolution));
}

double TZEPPages::Millimetres(int pixels) const {
    return pixels * Inch / m_options.Resolution;
}

void TZEPPages::FitView(double width, double height) {
    const QSize view(std::max(m_panel.Width(), 1), std::max(m_panel.Height(), 1));
    m_page = view.scaled(Pixels(width), Pixels(height), Qt::KeepAspectRatio).expandedTo({1, 1});
    m_view = m_page;
    m_left = (width - Millimetres(m_page.width())) / 2;
    m_top = (height - Millimetres(m_page.height())) / 2;
    const TZEPCamera* camera = m_panel.Camera();
    if (!camera || !camera->Orthographic()) return;
    const double across = 2 * std::tan(camera->FieldOfView() / 360 * std::numbers::pi) *
                          Distance(camera->GetPosition(), camera->GetTarget());
    if (across > 0) m_scale = Millimetres(m_page.width()) / (across * m_options.Unit);
}

void TZEPPages::TileView(double width, double height) {
    m_page = {Pixels(width), Pixels(height)};
    m_view = m_page;
    m_scale = *m_options.Scale;
    TZEPCamera* camera = m_panel.Camera();
    if (!camera || !camera->Scene()) return;
    const TCameraLoan loan(*camera);
    const std::optional<TReach> reach = LookAtAll(*camera);
    if (!reach) return;
    const auto pages = [&](double half, int pixels) {
        return std::ceil(2 * (half * m_options.Unit * m_scale + Rim) / Millimetres(pixels));
    };
    const double columns = pages(reach->Across, m_page.width());
    const double rows = pages(reach->Upwards, m_page.height());
    if (!(columns * rows <= Most))
        Refuse(QStringLiteral("%1 would take %2 pages; %3 are the most")
                   .arg(Ratio(m_scale))
                   .arg(columns * rows, 0, 'g', 6)
                   .arg(Most));
    m_columns = static_cast<int>(columns);
    m_rows = static_cast<int>(rows);
    m_view = {m_columns * m_page.width(), m_rows * m_page.height()};
}

QString TZEPPages::ScaleText() const {
    return m_scale > 0 ? Ratio(m_scale) : QString();
}

void TZEPPages::Paint(QPainter& painter, int index) const {
    TZEPPictureOptions options{
        .Samples = m_options.Samples,
        .Widths = m_options.LineWidth / Millimetres(1),
        .Part = {QPoint(index % m_columns * m_page.width(), index / m_columns * m_page.height()),
                 m_page}};
    std::optional<TCameraLoan> loan;
    TZEPCamera* camera = m_panel.Camera();
    if (m_options.Scale && camera && camera->Scene()) {
        loan.emplace(*camera);
        if (LookAtAll(*camera))
            Widen(*camera, Millimetres(m_view.width()) / (2 * m_scale * m_options.Unit),
                  static_cast<double>(m_view.width()) / m_view.height());
    }
    const QImage picture = m_panel.RenderPicture(m_view, options);
    loan.reset();
    const double dots = painter.device()->logicalDpiX() / Inch;
    painter.setRenderHints(QPainter::LosslessImageRendering | QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(m_left * dots, m_top * dots, Millimetres(m_page.width()) * dots,
                             Millimetres(m_page.height()) * dots),
                      picture);
    if (!m_options.Title.isEmpty()) PaintTitle(painter, index, dots);
}

void TZEPPages::PaintTitle(QPainter& painter, int index, double dots) const {
    QString text = m_options.Title;
    if (m_scale > 0) text += QStringLiteral("    ") + ScaleText();
    if (Count() > 1)
        text += QStringLiteral("    page %1 of %2 (row %3, column %4)")
                    .arg(index + 1)
                    .arg(Count())
                    .arg(index / m_columns + 1)
                    .arg(index % m_columns + 1);
    QFont letters = painter.font();
    letters.setPixelSize(std::max(1, qRound(TitleLetters / 72 * Inch * dots)));
    painter.setFont(letters);
    painter.setPen(Qt::black);
    const double left = m_options.Scale ? 0 : m_left;
    painter.drawText(QRectF(left * dots, m_foot * dots, 1e4 * dots, TitleHeight * dots),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

void TZEPPages::Print(QPagedPaintDevice& device) const {
    QPainter painter;
    if (!painter.begin(&device)) Refuse(QStringLiteral("the device cannot be painted on"));
    for (int page = 0; page < Count(); ++page) {
        if (page > 0 && !device.newPage()) Refuse(QStringLiteral("no further page"));
        Paint(painter, page);
    }
    if (!painter.end()) Refuse(QStringLiteral("the pages cannot be written"));
}

} // namespace ZEP
