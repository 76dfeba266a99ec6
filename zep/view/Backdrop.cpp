#include <zep/view/Backdrop.h>

#include <zep/framework/Contrast.h>
#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/gl/Told.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/PixelRatio.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ZEP {

namespace {

constexpr double CellsAcross = 16; // of the content, about
constexpr double GridReach = 1.1;  // half the grid's side, in diagonals of the content
constexpr float GridAlpha = 0.28F;
constexpr double Farthest = 1e12; // from the origin, in cells
constexpr TColor GridOnDark{0xD8C8B8};
constexpr TColor GridOnBright{0x483828};
constexpr double ArmLength = 0.1; // of the origin's axes, in diagonals of the content
constexpr double MarkMargin = 52; // pixels from the corner of the view to the mark's centre
constexpr double MarkLength = 30;
constexpr double LetterDistance = 40;
constexpr double LetterSize = 4;

struct TAxis {
    TGLArrayd3 Direction;
    std::array<std::array<double, 4>, 3> Letter; ///< strokes x, y, x, y in -1..1
    std::size_t Strokes;
};

constexpr std::array Axes{TAxis{unitx, {{{-1, -1, 1, 1}, {-1, 1, 1, -1}, {}}}, 2},
                          TAxis{unity, {{{0, 0, 0, -1}, {0, 0, -1, 1}, {0, 0, 1, 1}}}, 3},
                          TAxis{unitz, {{{-1, 1, 1, 1}, {1, 1, -1, -1}, {-1, -1, 1, -1}}}, 3}};

/// State of flat, blended drawing that leaves no trace in the depth buffer.
class TFlatScope {
public:
    TFlatScope() {
        glShadeModel(GL_SMOOTH);
        glDisable(GL_LIGHTING);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_CULL_FACE);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_LINE_SMOOTH);
        glDepthMask(GL_FALSE);
        glDepthRange(1, 1); // what is fed back tells the depth
        TellDotted(false);
        TellBlended(true);
    }
    ~TFlatScope() { TellBlended(false); }
    TFlatScope(const TFlatScope&) = delete;
    TFlatScope& operator=(const TFlatScope&) = delete;

private:
    TZEPAttribScope m_attributes{GL_ENABLE_BIT | GL_LINE_BIT | GL_CURRENT_BIT |
                                 GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_LIGHTING_BIT |
                                 GL_VIEWPORT_BIT};
};

/// Coordinates of the whole view: from (0, 0) at the lower left to its size.
class TViewScope {
public:
    TViewScope(const TZEPCamera& camera, double width, double height) {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        camera.ApplyPart();
        glOrtho(0, width, 0, height, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
    }

private:
    TZEPMatricesScope m_matrices;
};

/// Places count from one near them: those of OpenGL are floats, which are coarse far from the
/// origin.
class TNearScope {
public:
    TNearScope(const TZEPCamera& camera, const TGLArrayd3& place) {
        TGLMatrixd4 view = camera.GetViewMatrix();
        const TGLMatrixd4::value_type& shift = view[3];
        if (!IsLoaded(view, Length({shift[0], shift[1], shift[2]})))
            view = LoadedMatrix(GL_MODELVIEW_MATRIX);
        Translatedv(place, view);
        glLoadMatrixd(view[0].data());
    }

private:
    TZEPMatrixScope m_matrix;
};

void SetColor(TColor color, float alpha = 1) {
    glColor4fv(ToGLColor(color, alpha).data());
}

void DrawBackground(const TZEPCamera& camera, TColor low, TColor high) {
    const TViewScope view(camera, 1, 1);
    glBegin(GL_QUADS);
    SetColor(low);
    glVertex2d(0, 0);
    glVertex2d(1, 0);
    SetColor(high);
    glVertex2d(1, 1);
    glVertex2d(0, 1);
    glEnd();
}

/// Arm and letter of one axis. \param x, y  its direction as it is seen
void SendDirection(const TAxis& axis, double x, double y) {
    glVertex2d(MarkMargin, MarkMargin);
    glVertex2d(MarkMargin + x * MarkLength, MarkMargin + y * MarkLength);
    const double left = MarkMargin + x * LetterDistance;
    const double low = MarkMargin + y * LetterDistance;
    for (std::size_t i = 0; i < axis.Strokes; ++i) {
        const auto& [x1, y1, x2, y2] = axis.Letter[i];
        glVertex2d(left + x1 * LetterSize, low + y1 * LetterSize);
        glVertex2d(left + x2 * LetterSize, low + y2 * LetterSize);
    }
}

} // namespace

TZEPBackdrop::TColors TZEPBackdrop::TColors::Plain(TColor background) {
    TColors colors;
    colors.Top = colors.Bottom = background;
    return colors;
}

TZEPBackdrop::TZEPBackdrop(TZEPCamera* camera, QObject* parent) : QObject(parent) {
    SetCamera(camera);
}

// --- what it is attached to --------------------------------------------------------------------

TZEPCamera* TZEPBackdrop::Camera() const {
    return m_camera;
}

void TZEPBackdrop::SetCamera(TZEPCamera* camera) {
    if (m_camera == camera) return;
    Repaint();
    if (m_camera) m_camera->disconnect(this);
    m_camera = camera;
    if (camera) connect(camera, &TZEPCamera::SceneChanged, this, &TZEPBackdrop::FollowScene);
    FollowScene();
}

void TZEPBackdrop::FollowScene() {
    disconnect(m_drawing);
    TZEPScene* scene = m_camera ? m_camera->Scene() : nullptr;
    if (!scene) return;
    m_drawing = connect(scene, &TZEPScene::AfterCamera, this, [this](const TZEPScene* drawn) {
        if (m_camera && drawn->CurrentCamera() == m_camera) Draw();
    });
    Repaint();
}

void TZEPBackdrop::Repaint() const {
    if (m_camera && m_camera->Scene()) m_camera->Scene()->Invalidate(m_camera);
}

void TZEPBackdrop::SetContent(const std::optional<TZEPBounds>& content) {
    m_content = content;
    Repaint();
}

void TZEPBackdrop::SetGuides(bool shown) {
    if (Change(m_guides, shown)) Repaint();
}

void TZEPBackdrop::SetBackground(bool shown) {
    if (Change(m_background, shown)) Repaint();
}

void TZEPBackdrop::SetColors(const TColors& colors) {
    if (Change(m_colors, colors)) Repaint();
}

void TZEPBackdrop::SetPixelRatio(std::optional<double> ratio) {
    if (Change(m_pixelRatio, ratio)) Repaint();
}

/// In the frame that is drawn.
double TZEPBackdrop::PixelRatio() const {
    const double widths = m_camera->Scene()->Frame().Widths;
    return widths * m_pixelRatio.value_or(ApplicationPixelRatio());
}

// --- measures ----------------------------------------------------------------------------------

double TZEPBackdrop::GridStep() const {
    const double wanted = m_content ? DiagonalOf(*m_content) / CellsAcross : 0;
    if (!(wanted > 0) || !std::isfinite(wanted)) return 0;
    if (!(std::max(Length(m_content->Min), Length(m_content->Max)) < Farthest * wanted)) return 0;
    const double power = std::pow(10, std::floor(std::log10(wanted)));
    for (const double step : {1, 2, 5})
        if (step * power >= wanted) return step * power;
    return 10 * power;
}

TColor TZEPBackdrop::MiddleColor() const {
    if (m_colors.Top == m_colors.Bottom) return m_colors.Top;
    const TGLColor low = ToGLColor(m_colors.Bottom, 1);
    const TGLColor high = ToGLColor(m_colors.Top, 1);
    const auto middle = [&](std::size_t i) { return (low[i] + high[i]) / 2; };
    return FromQColor(QColor::fromRgbF(middle(0), middle(1), middle(2)));
}

TColor TZEPBackdrop::GridColor() const {
    if (m_colors.Grid) return *m_colors.Grid;
    return IsBright(MiddleColor()) ? GridOnBright : GridOnDark;
}

// --- drawing -----------------------------------------------------------------------------------

void TZEPBackdrop::Draw() const {
    const TFlatScope flat;
    if (m_background) DrawBackground(*m_camera, m_colors.Bottom, m_colors.Top);
    if (!m_guides) return;
    if (m_content && GridStep() > 0) {
        DrawGrid(*m_content);
        DrawOrigin(DiagonalOf(*m_content) * ArmLength);
    }
    DrawDirections();
}

void TZEPBackdrop::DrawGrid(const TZEPBounds& box) const {
    const double step = GridStep();
    const double reach = DiagonalOf(box) * GridReach;
    const TGLArrayd3 centre = Middle(box.Min, box.Max);
    const auto firstX = static_cast<qint64>(std::ceil((centre[0] - reach) / step));
    const auto firstY = static_cast<qint64>(std::ceil((centre[1] - reach) / step));
    const int count = static_cast<int>(2 * reach / step);
    const TGLArrayd3 first{static_cast<double>(firstX) * step, static_cast<double>(firstY) * step,
                           box.Min[2]};
    const TNearScope nearby(*m_camera, first);
    const TColor color = GridColor();
    // Every fifth line is brighter, and all fade towards the rim.
    const auto send = [&](int x, int y, bool bright) {
        const double px = x * step;
        const double py = y * step;
        const double rim = std::hypot(first[0] + px - centre[0], first[1] + py - centre[1]) / reach;
        const auto fade = static_cast<float>(std::max(0.0, 1 - rim * rim));
        SetColor(color, GridAlpha * fade * (bright ? 1.0F : 0.45F));
        glVertex2d(px, py);
    };
    SetLineWidth(static_cast<float>(PixelRatio()));
    for (int line = 0; line <= count; ++line) {
        glBegin(GL_LINE_STRIP);
        for (int i = 0; i <= count; ++i) send(line, i, (firstX + line) % 5 == 0);
        glEnd();
        glBegin(GL_LINE_STRIP);
        for (int i = 0; i <= count; ++i) send(i, line, (firstY + line) % 5 == 0);
        glEnd();
    }
}

void TZEPBackdrop::DrawOrigin(double length) const {
    const TNearScope nearby(*m_camera, zero3d);
    SetLineWidth(static_cast<float>(2 * PixelRatio()));
    glBegin(GL_LINES);
    for (std::size_t i = 0; i < Axes.size(); ++i) {
        SetColor(m_colors.Axis(i));
        glVertex3dv(zero3d.data());
        glVertex3dv((length * Axes[i].Direction).data());
    }
    glEnd();
}

void TZEPBackdrop::DrawDirections() const {
    std::array<double, 16> look{}; // by columns: where each axis points in the view
    glGetDoublev(GL_MODELVIEW_MATRIX, look.data());
    const QSizeF size = QSizeF(m_camera->DrawnSize()) / PixelRatio();
    const TViewScope view(*m_camera, size.width(), size.height());
    SetLineWidth(static_cast<float>(1.5 * PixelRatio()));
    glBegin(GL_LINES);
    for (std::size_t i = 0; i < Axes.size(); ++i) {
        SetColor(m_colors.Axis(i));
        SendDirection(Axes[i], look[4 * i], look[4 * i + 1]);
    }
    glEnd();
}

} // namespace ZEP
