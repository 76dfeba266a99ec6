#include "viewer/drawing/Backdrop.h"

#include "viewer/drawing/Look.h"

#include <QtGlobal>

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ZEP {

namespace {

constexpr double CellsAcross = 16; // of the content, about
constexpr double GridReach = 1.1;  // half the grid's side, in diagonals of the content
constexpr float GridAlpha = 0.28F;
constexpr double ArmLength = 0.1; // of the origin's axes, in diagonals of the content
constexpr double MarkMargin = 52; // pixels from the corner of the view to the mark's centre
constexpr double MarkLength = 30;
constexpr double LetterDistance = 40;
constexpr double LetterSize = 4;

struct TAxis {
    TGLArrayd3 Direction;
    TColor Color;
    std::array<std::array<double, 4>, 3> Letter; ///< strokes x, y, x, y in -1..1
    int Strokes;
};

constexpr std::array Axes{
    TAxis{{1, 0, 0}, Look::AxisX, {{{-1, -1, 1, 1}, {-1, 1, 1, -1}, {}}}, 2},
    TAxis{{0, 1, 0}, Look::AxisY, {{{0, 0, 0, -1}, {0, 0, -1, 1}, {0, 0, 1, 1}}}, 3},
    TAxis{{0, 0, 1}, Look::AxisZ, {{{-1, 1, 1, 1}, {1, 1, -1, -1}, {-1, -1, 1, -1}}}, 3}};

/// State of flat, blended drawing that leaves no trace in the depth buffer.
class TFlatScope {
public:
    TFlatScope() {
        glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT |
                     GL_DEPTH_BUFFER_BIT | GL_LIGHTING_BIT);
        glShadeModel(GL_SMOOTH);
        glDisable(GL_LIGHTING);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_CULL_FACE);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_LINE_SMOOTH);
        glDepthMask(GL_FALSE);
    }
    ~TFlatScope() { glPopAttrib(); }
    Q_DISABLE_COPY_MOVE(TFlatScope)
};

/// Coordinates of the view: from (0, 0) at the lower left to its size.
class TViewScope {
public:
    TViewScope(double width, double height) {
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(0, width, 0, height, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
    }
    ~TViewScope() {
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
    }
    Q_DISABLE_COPY_MOVE(TViewScope)
};

void SetColor(TColor color, float alpha = 1) {
    glColor4fv(ToGLColor(color, alpha).data());
}

void DrawBackground(TColor low, TColor high) {
    const TViewScope view(1, 1);
    glBegin(GL_QUADS);
    SetColor(low);
    glVertex2d(0, 0);
    glVertex2d(1, 0);
    SetColor(high);
    glVertex2d(1, 1);
    glVertex2d(0, 1);
    glEnd();
}

/// That stands out from the background.
TColor GridColor(TColor background) {
    return IsBright(background) ? Look::GridOnBright : Look::Grid;
}

void DrawOrigin(double length, double pixelRatio) {
    glLineWidth(static_cast<float>(2 * pixelRatio));
    glBegin(GL_LINES);
    for (const TAxis& axis : Axes) {
        SetColor(axis.Color);
        glVertex3d(0, 0, 0);
        glVertex3d(axis.Direction[0] * length, axis.Direction[1] * length,
                   axis.Direction[2] * length);
    }
    glEnd();
}

/// Arm and letter of one axis. \param x, y  its direction as it is seen
void SendMark(const TAxis& axis, double x, double y) {
    SetColor(axis.Color);
    glVertex2d(MarkMargin, MarkMargin);
    glVertex2d(MarkMargin + x * MarkLength, MarkMargin + y * MarkLength);
    const double left = MarkMargin + x * LetterDistance;
    const double low = MarkMargin + y * LetterDistance;
    for (int i = 0; i < axis.Strokes; ++i) {
        const auto& stroke = axis.Letter[static_cast<std::size_t>(i)];
        glVertex2d(left + stroke[0] * LetterSize, low + stroke[1] * LetterSize);
        glVertex2d(left + stroke[2] * LetterSize, low + stroke[3] * LetterSize);
    }
}

void DrawMark(double pixelRatio) {
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    std::array<double, 16> look{}; // by columns: where each axis points in the view
    glGetDoublev(GL_MODELVIEW_MATRIX, look.data());
    const TViewScope view(viewport[2] / pixelRatio, viewport[3] / pixelRatio);
    glLineWidth(static_cast<float>(1.5 * pixelRatio));
    glBegin(GL_LINES);
    for (std::size_t i = 0; i < Axes.size(); ++i) SendMark(Axes[i], look[4 * i], look[4 * i + 1]);
    glEnd();
}

} // namespace

double TBackdrop::GridStep() const {
    const double wanted = m_content ? DiagonalOf(*m_content) / CellsAcross : 0;
    if (!(wanted > 0) || !std::isfinite(wanted)) return 0;
    const double power = std::pow(10, std::floor(std::log10(wanted)));
    for (const double step : {1, 2, 5})
        if (step * power >= wanted) return step * power;
    return 10 * power;
}

TColor TBackdrop::MiddleColor() const {
    if (m_color) return *m_color;
    const TGLColor low = ToGLColor(Look::Ground, 1);
    const TGLColor high = ToGLColor(Look::Sky, 1);
    const auto middle = [&](std::size_t i) { return (low[i] + high[i]) / 2; };
    return FromQColor(QColor::fromRgbF(middle(0), middle(1), middle(2)));
}

void TBackdrop::Draw(double pixelRatio) const {
    const TFlatScope flat;
    DrawBackground(m_color.value_or(Look::Ground), m_color.value_or(Look::Sky));
    if (!m_guides) return;
    if (m_content && GridStep() > 0) {
        DrawGrid(*m_content, pixelRatio);
        DrawOrigin(DiagonalOf(*m_content) * ArmLength, pixelRatio);
    }
    DrawMark(pixelRatio);
}

void TBackdrop::DrawGrid(const TBox& box, double pixelRatio) const {
    const double step = GridStep();
    const double reach = DiagonalOf(box) * GridReach;
    const double centerX = (box.Min[0] + box.Max[0]) / 2;
    const double centerY = (box.Min[1] + box.Max[1]) / 2;
    const auto firstX = static_cast<qint64>(std::ceil((centerX - reach) / step));
    const auto firstY = static_cast<qint64>(std::ceil((centerY - reach) / step));
    const int count = static_cast<int>(2 * reach / step);
    const TColor color = GridColor(MiddleColor());
    // Every fifth line is brighter, and all fade towards the rim.
    const auto send = [&](qint64 x, qint64 y, bool bright) {
        const double px = static_cast<double>(x) * step;
        const double py = static_cast<double>(y) * step;
        const double rim = std::hypot(px - centerX, py - centerY) / reach;
        const auto fade = static_cast<float>(std::max(0.0, 1 - rim * rim));
        SetColor(color, GridAlpha * fade * (bright ? 1.0F : 0.45F));
        glVertex3d(px, py, box.Min[2]);
    };
    glLineWidth(static_cast<float>(pixelRatio));
    for (int line = 0; line <= count; ++line) {
        glBegin(GL_LINE_STRIP);
        for (int i = 0; i <= count; ++i) send(firstX + line, firstY + i, (firstX + line) % 5 == 0);
        glEnd();
        glBegin(GL_LINE_STRIP);
        for (int i = 0; i <= count; ++i) send(firstX + i, firstY + line, (firstY + line) % 5 == 0);
        glEnd();
    }
}

} // namespace ZEP
