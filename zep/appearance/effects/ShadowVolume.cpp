#include <zep/appearance/effects/ShadowVolume.h>

#include <zep/appearance/effects/Outline.h>
#include <zep/gl/Feedback.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Vectors.h>

#include <GL/glu.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

namespace ZEP {

namespace {

constexpr double WidestSine = 0.99;
constexpr double LeastNear = 0.001;
constexpr double Along = 1 - 1e-9; // from which cosine on two directions count as one

/// With z upwards; straight up and down, where that leaves it open, with y upwards.
TGLMatrixd4 ViewFrom(const TGLArrayd3& eye, const TGLArrayd3& center) {
    const TGLArrayd3 ahead = Unit(center - eye);
    return LookAtd(eye, center, std::abs(ahead[2]) < Along ? unitz : unity);
}

/// Half as much again as the caster takes, in degrees. Near 180 everything would fall upon one
/// point of the picture.
double FieldOf(double sine) {
    const double field = 3 * std::asin(sine) * 180 / std::numbers::pi;
    return std::abs(field - 180) < 2 ? 178 : field;
}

int HalfViewport() {
    std::array<GLint, 2> most{};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, most.data());
    return std::min(most[0], most[1]) / 2;
}

void Load(GLenum mode, const TGLMatrixd4& matrix) {
    glMatrixMode(mode);
    glLoadMatrixd(matrix[0].data());
}

/// The light's view in place of the camera's.
class TLightView {
public:
    TLightView(const TGLMatrixd4& projection, const TGLMatrixd4& modelView, int half)
        : m_viewport(GL_VIEWPORT_BIT) {
        glViewport(-half, -half, 2 * half, 2 * half);
        Load(GL_PROJECTION, projection);
        Load(GL_MODELVIEW, modelView);
    }
    TLightView(const TLightView&) = delete;
    TLightView& operator=(const TLightView&) = delete;

private:
    TZEPAttribScope m_viewport;
    TZEPMatricesScope m_matrices;
};

} // namespace

/// Sends each contour as a strip between it and infinity.
class TZEPShadowVolume::TSides final : public TZEPOutline::TSink {
public:
    explicit TSides(const TZEPShadowVolume& volume)
        : m_volume(volume), m_parallel(volume.m_casting.Center - volume.m_casting.Eye),
          m_viewport{-volume.m_half, -volume.m_half, 2 * volume.m_half, 2 * volume.m_half} {}

    [[nodiscard]] bool IsEmpty() const { return m_contours == 0; }

    void Begin() override {
        ++m_contours;
        m_isFirst = true;
        glBegin(GL_QUAD_STRIP);
    }
    void Point(const TZEPOutline::TPoint& point) override {
        TGLArrayd3 place{};
        if (!gluUnProject(static_cast<double>(point[0]), static_cast<double>(point[1]),
                          static_cast<double>(point[2]), m_volume.m_view[0].data(),
                          m_volume.m_projection[0].data(), m_viewport.data(), &place[0], &place[1],
                          &place[2]))
            return;
        if (std::exchange(m_isFirst, false)) m_first = place;
        Send(place);
    }
    void End() override {
        if (!m_isFirst) Send(m_first);
        glEnd();
    }

private:
    void Send(const TGLArrayd3& place) const {
        const TZEPCasting& casting = m_volume.m_casting;
        const TGLArrayd3 away = casting.IsAimed ? place - casting.Eye : m_parallel;
        const std::array<double, 4> infinite{away[0], away[1], away[2], 0};
        glVertex3dv(place.data());
        glVertex4dv(infinite.data());
    }

    const TZEPShadowVolume& m_volume;
    TGLArrayd3 m_parallel;
    std::array<GLint, 4> m_viewport;
    TGLArrayd3 m_first{};
    bool m_isFirst = true;
    int m_contours = 0;
};

std::optional<TZEPShadowVolume> TZEPShadowVolume::Of(const TZEPCasting& casting) {
    const TGLArrayd3 ray = casting.Center - casting.Eye;
    const double distance = std::sqrt(Dotd(ray, ray));
    const double radius = casting.Radius;
    if (!(distance > 0) || !(radius > 0) || !AreFinite(casting.Place)) return {};
    const double sine = std::min(radius / distance, WidestSine);
    const double field = FieldOf(sine);
    TZEPShadowVolume volume;
    volume.m_casting = casting;
    volume.m_half = HalfViewport();
    volume.m_view = ViewFrom(casting.Eye, casting.Center);
    const double slope = std::tan(field / 2 * std::numbers::pi / 180);
    volume.m_projection = Perspectived(slope, 1, std::max((distance - radius) * 0.5, LeastNear),
                                       (distance + radius) * 2);
    if (!AreFinite(volume.m_view) || !AreFinite(volume.m_projection)) return {};
    return volume;
}

std::span<const GLfloat> TZEPShadowVolume::Look(const std::function<void()>& draw) const {
    static TZEPFeedback feedback;
    // In one matrix of doubles, the distance to the light does not wear down that to the caster.
    TGLMatrixd4 modelView;
    MultMatrixd(m_view, m_casting.Place, modelView);
    const TLightView view(m_projection, modelView, m_half);
    return feedback.Render(draw);
}

TDisplayList TZEPShadowVolume::Compile(std::span<const GLfloat> tokens) const {
    static TZEPOutline outline;
    outline.Clear();
    ForEachPolygon(tokens, [](std::span<const GLfloat> corners) { outline.Add(corners); });
    TSides sides(*this);
    TDisplayList list;
    list.Compile([&] {
        if (m_casting.IsExact)
            outline.SendLoops(sides);
        else
            outline.Trace(sides);
    });
    if (sides.IsEmpty()) list.Reset();
    return list;
}

std::uint64_t HashOf(std::span<const GLfloat> tokens) {
    const std::string_view bytes(reinterpret_cast<const char*>(tokens.data()), tokens.size_bytes());
    return std::hash<std::string_view>{}(bytes);
}

} // namespace ZEP
