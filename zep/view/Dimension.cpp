#include <zep/view/Dimension.h>

#include <zep/framework/Contrast.h>
#include <zep/framework/Property.h>
#include <zep/gl/Scopes.h>
#include <zep/gl/Told.h>
#include <zep/objects/TextShape.h>
#include <zep/objects/VertexBounds.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SectionScopes.h>
#include <zep/scene/Vectors.h>
#include <zep/view/PixelRatio.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>

namespace ZEP {

namespace {

const TRegisterObject<TZEPDimension> RegisteredDimension;

constexpr double LineWidth = 1.5; // pixels
constexpr double PointWidth = 5;
constexpr double TextMargin = 0.5; // heights of a letter
constexpr double ArcReach = 0.4;   // of the shorter arm
constexpr double TextReach = 1.5;  // of that arc
constexpr int ArcSteps = 32;
constexpr double DegreesPerRadian = 180 / std::numbers::pi;

double AngleBetween(const TGLArrayd3& a, const TGLArrayd3& b) {
    return std::atan2(Length(Cross(a, b)), Dotd(a, b));
}

double LengthOf(const std::vector<TGLArrayd3>& chain) {
    double sum = 0;
    for (std::size_t i = 1; i < chain.size(); ++i) sum += Distance(chain[i - 1], chain[i]);
    return sum;
}

/// From one arm to the other, about the corner.
std::vector<TGLArrayd3> ArcOf(const TGLArrayd3& from, const TGLArrayd3& corner,
                              const TGLArrayd3& to) {
    const TGLArrayd3 u = Unit(from - corner);
    const TGLArrayd3 normal = Unit(Cross(u, to - corner));
    const TGLArrayd3 v = Cross(normal, u);
    const double radius = ArcReach * std::min(Distance(from, corner), Distance(to, corner));
    const double angle = AngleBetween(from - corner, to - corner);
    std::vector<TGLArrayd3> arc;
    for (int i = 0; i <= ArcSteps; ++i) {
        const double turned = angle * i / ArcSteps;
        arc.push_back(corner + radius * (std::cos(turned) * u + std::sin(turned) * v));
    }
    return arc;
}

void Send(GLenum primitive, const std::vector<TGLArrayd3>& points, const TGLArrayd3& origin) {
    const TPrimitiveScope scope(primitive);
    for (const TGLArrayd3& point : points) glVertex3dv((point - origin).data());
}

/// Coordinates that reach from -1 to 1 across the viewport.
class TPlainScope {
public:
    TPlainScope() {
        for (const GLenum matrix : std::initializer_list<GLenum>{GL_PROJECTION, GL_MODELVIEW}) {
            glMatrixMode(matrix);
            glLoadIdentity();
        }
    }

private:
    TZEPMatricesScope m_matrices;
};

} // namespace

TZEPDimension::TZEPDimension(TComponent* owner) : TZEPColoredObject(owner) {
    m_vertexes.RegisterObject(this);
}

TZEPDimension::~TZEPDimension() = default;

// --- properties --------------------------------------------------------------------------------

void TZEPDimension::SetKind(TZEPDimensionKind kind) {
    if (Change(m_kind, kind)) Invalidate(this);
}

void TZEPDimension::SetDigits(int digits) {
    if (Change(m_digits, std::clamp(digits, 0, 15))) Invalidate(this);
}

void TZEPDimension::SetSuffix(const QString& suffix) {
    if (Change(m_suffix, suffix)) Invalidate(this);
}

void TZEPDimension::SetTextHeight(double pixels) {
    if (!std::isfinite(pixels)) return;
    if (Change(m_textHeight, std::clamp(pixels, 1.0, 1000.0))) Invalidate(this);
}

void TZEPDimension::SetPoints(const std::vector<TGLArrayd3>& points) {
    m_vertexes.Clear();
    for (const TGLArrayd3& point : points) m_vertexes.Add()->SetPoint(point);
    Invalidate(this);
}

void TZEPDimension::Assign(const TComponent* source) {
    TZEPColoredObject::Assign(source);
    if (const auto* other = dynamic_cast<const TZEPDimension*>(source)) {
        m_kind = other->m_kind;
        m_digits = other->m_digits;
        m_suffix = other->m_suffix;
        m_textHeight = other->m_textHeight;
        SetPoints(other->Points());
    }
}

void TZEPDimension::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    GetVertexBounds(m_vertexes, min, max);
}

// --- what it tells -----------------------------------------------------------------------------

std::vector<TGLArrayd3> TZEPDimension::Points() const {
    std::vector<TGLArrayd3> points;
    for (int i = 0; i < m_vertexes.Count(); ++i) points.push_back(m_vertexes[i].Data());
    return points;
}

std::optional<double> TZEPDimension::Value() const {
    const std::vector<TGLArrayd3> points = Points();
    const std::size_t needed = m_kind == dmAngle ? 3 : 2;
    if (points.size() < needed || !std::ranges::all_of(points, &IsFinite)) return {};
    switch (m_kind) {
    case dmAngle:
        return AngleBetween(points[0] - points[1], points[2] - points[1]) * DegreesPerRadian;
    case dmChain:
        return LengthOf(points);
    case dmDistance:
    case dmRadius:
        break;
    }
    return Distance(points[0], points[1]);
}

// The sum of the triangles about one corner, by their normals: M. Newell's.
std::optional<double> TZEPDimension::Area() const {
    const std::vector<TGLArrayd3> points = Points();
    if (m_kind != dmChain || points.size() < 4 || points.front() != points.back() || !Value())
        return {};
    TGLArrayd3 sum = zero3d;
    for (std::size_t i = 2; i < points.size(); ++i)
        sum += Cross(points[i - 1] - points[0], points[i] - points[0]);
    return Length(sum) / 2;
}

QString TZEPDimension::Number(double value, const QString& unit) const {
    const QString number = QString::number(value, 'f', m_digits);
    return unit.isEmpty() ? number : number + QLatin1Char(' ') + unit;
}

QString TZEPDimension::Text() const {
    const std::optional<double> value = Value();
    if (!value) return {};
    switch (m_kind) {
    case dmAngle:
        return Number(*value, {}) + QChar(0xB0);
    case dmRadius:
        return QStringLiteral("R ") + Number(*value, m_suffix);
    case dmDistance:
    case dmChain:
        break;
    }
    return Number(*value, m_suffix);
}

QString TZEPDimension::Report() const {
    if (!Value()) return {};
    const auto part = [this](double value) { return Number(value, {}); };
    const auto coordinates = [&](const TGLArrayd3& of) {
        return QStringLiteral("x %1, y %2, z %3").arg(part(of[0]), part(of[1]), part(of[2]));
    };
    const std::vector<TGLArrayd3> points = Points();
    switch (m_kind) {
    case dmAngle:
        return QStringLiteral("Angle %1 at %2").arg(Text(), coordinates(points[1]));
    case dmRadius:
        return QStringLiteral("Radius %1, diameter %2, centre %3")
            .arg(Number(*Value(), m_suffix), Number(2 * *Value(), m_suffix),
                 coordinates(points[0]));
    case dmChain: {
        const QString area =
            Area() ? QStringLiteral(", area ") +
                         Number(*Area(), m_suffix.isEmpty() ? QString() : m_suffix + QChar(0xB2))
                   : QString();
        return QStringLiteral("Length %1%2").arg(Text(), area);
    }
    case dmDistance:
        break;
    }
    return QStringLiteral("Distance %1 (%2)").arg(Text(), coordinates(points[1] - points[0]));
}

// --- drawing -----------------------------------------------------------------------------------

TGLArrayd3 TZEPDimension::TextPlace(const std::vector<TGLArrayd3>& points) const {
    if (m_kind == dmAngle) {
        const TGLArrayd3 middle = ArcOf(points[0], points[1], points[2])[ArcSteps / 2];
        return points[1] + TextReach * (middle - points[1]);
    }
    const std::size_t from = (points.size() - 2) / 2;
    return Middle(points[from], points[from + 1]);
}

void TZEPDimension::SendLines(const std::vector<TGLArrayd3>& points,
                              const TGLArrayd3& origin) const {
    Send(GL_LINE_STRIP, points, origin);
    if (m_kind == dmAngle) Send(GL_LINE_STRIP, ArcOf(points[0], points[1], points[2]), origin);
}

void TZEPDimension::DrawSpecific(GLenum, bool) {
    if (Value()) SendLines(Points(), zero3d);
}

void TZEPDimension::DrawTransparent(bool) {
    if (!Value()) return;
    const std::vector<TGLArrayd3> points = Points();
    DrawFrame().Run.End();
    const TZEPWholeScope whole(DrawFrame());
    const TZEPAttribScope attributes(GL_ENABLE_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_CURRENT_BIT |
                                     GL_POLYGON_BIT | GL_COLOR_BUFFER_BIT | GL_HINT_BIT);
    for (const GLenum off :
         std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_FOG,
                                       GL_TEXTURE_2D, GL_LINE_STIPPLE, GL_COLOR_MATERIAL})
        glDisable(off);
    for (const GLenum on : std::initializer_list<GLenum>{GL_BLEND, GL_LINE_SMOOTH, GL_POINT_SMOOTH})
        glEnable(on);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    const double ratio = ApplicationPixelRatio() * DrawFrame().Widths;
    SetLineWidth(static_cast<float>(LineWidth * ratio));
    SetPointSize(static_cast<float>(PointWidth * ratio));
    glColor4fv(ToGLColor(Selected() ? clWhite : Color(), 1).data());
    // Far from the origin floats are coarse: places count from the first point.
    TGLMatrixd4 place = LoadedMatrix(GL_MODELVIEW_MATRIX);
    const TZEPSceneCamera* camera = Scene() ? Scene()->CurrentCamera() : nullptr;
    if (const auto view = camera ? camera->ExactView() : std::nullopt) {
        TGLMatrixd4 exact;
        MultMatrixd(*view, GetAbsoluteMatrix(), exact);
        if (IsLoaded(exact, Length({exact[3][0], exact[3][1], exact[3][2]}))) place = exact;
    }
    Translatedv(points.front(), place);
    const TZEPMatrixScope matrix;
    glLoadMatrixd(place[0].data());
    SendLines(points, points.front());
    Send(GL_POINTS, points, points.front());
    DrawText(TextPlace(points) - points.front(), m_textHeight * ratio);
}

/// \param place   of the middle of the text, in the frame that is loaded
/// \param pixels  height of a capital letter
void TZEPDimension::DrawText(const TGLArrayd3& place, double pixels) {
    const TGLMatrixd4 toClip = LoadedToClip();
    std::array<double, 4> clip = toClip[3];
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 4; ++k) clip[k] += place[i] * toClip[i][k];
    if (!(clip[3] > 0) || !(std::abs(clip[2]) <= clip[3])) return;
    if (const QString text = Text(); !m_shape || m_shaped != text) {
        m_shape = std::make_unique<TTextShape>(MakeTextShape(text, TFont()));
        m_shaped = text;
    }
    if (m_shape->Triangles.empty()) return;
    std::array<float, 4> box{1e9F, 1e9F, -1e9F, -1e9F};
    for (const TTextPoint& point : m_shape->Triangles)
        for (std::size_t k = 0; k < 2; ++k) {
            box[k] = std::min(box[k], point[k]);
            box[k + 2] = std::max(box[k + 2], point[k]);
        }
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    const TPlainScope flat;
    glTranslated(clip[0] / clip[3], clip[1] / clip[3], 0);
    glScaled(2 * pixels / viewport[2], 2 * pixels / viewport[3], 1);
    glTranslatef(-(box[0] + box[2]) / 2, -(box[1] + box[3]) / 2, 0);
    const TGLColor color = ToGLColor(Selected() ? clWhite : Color(), 1);
    glColor4fv(
        ToGLColor(IsBright(Selected() ? clWhite : Color()) ? clBlack : clWhite, 0.7F).data());
    constexpr auto margin = static_cast<float>(TextMargin);
    glRectf(box[0] - margin, box[1] - margin, box[2] + margin, box[3] + margin);
    glColor4fv(color.data());
    const TPrimitiveScope triangles(GL_TRIANGLES);
    for (const TTextPoint& point : m_shape->Triangles) glVertex2fv(point.data());
}

} // namespace ZEP
