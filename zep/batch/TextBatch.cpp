#include <zep/batch/TextBatch.h>

#include <zep/gl/Told.h>
#include <zep/objects/Label.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Vectors.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr double LetterWidth =
    0.75;                         // of the cap height, about: where a text ends that is too small
constexpr double LeastLength = 1; // pixels, of a line in place of a text
constexpr std::uint8_t LineAlpha = 130;

std::array<float, 3> Column(const TGLMatrixd4& m, std::size_t i, double length) {
    return ToFloats({m[i][0] * length, m[i][1] * length, m[i][2] * length});
}

qsizetype LongestLine(const QString& caption) {
    qsizetype longest = 0;
    for (const QStringView line : QStringView(caption).tokenize(u'\n'))
        longest = std::max(longest, line.size());
    return longest;
}

} // namespace

/// OpenGL's present view.
class TTextBatch::TView {
public:
    TView() {
        std::array<GLint, 4> viewport{};
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        m_half = {viewport[2] / 2.0, viewport[3] / 2.0};
    }

    [[nodiscard]] TSeenText Seen(const TText& text) const {
        const TPlace base = PlaceOf(text.Base, {}, {});
        if (base.W <= 0) return {PlaceOf(text.Base, text.Along, text.Up).W > 0, 1e9, 1e9};
        const TPlace end = PlaceOf(text.Base, text.Along, {});
        const TPlace top = PlaceOf(text.Base, {}, text.Up);
        // A text may be wider than it was taken for, and reaches below its base.
        const double reach = 2 * (Distance(base, end) + text.Lines * Distance(base, top));
        const bool inView =
            std::abs(base.X) < m_half[0] + reach && std::abs(base.Y) < m_half[1] + reach;
        return {inView, Distance(base, top), Distance(base, end)};
    }

private:
    /// From the middle of the view, in pixels. `W` is 0 and less behind the eye.
    struct TPlace {
        double X, Y, W;
    };

    [[nodiscard]] TPlace PlaceOf(const std::array<float, 3>& base,
                                 const std::array<float, 3>& along,
                                 const std::array<float, 3>& up) const {
        std::array<double, 4> clip = m_toClip[3];
        for (std::size_t k = 0; k < 3; ++k)
            for (std::size_t i = 0; i < 4; ++i)
                clip[i] += m_toClip[k][i] * (base[k] + along[k] + up[k]);
        const double w = std::max(clip[3], 1e-30);
        return {clip[0] / w * m_half[0], clip[1] / w * m_half[1], clip[3]};
    }
    static double Distance(const TPlace& a, const TPlace& b) {
        return b.W <= 0 ? 1e9 : std::hypot(a.X - b.X, a.Y - b.Y);
    }

    TGLMatrixd4 m_toClip = LoadedToClip();
    std::array<double, 2> m_half{};
};

void TTextBatch::Add(TZEPLabel& label, const TGLMatrixd4& frame, TColor color) {
    const bool known = !m_texts.empty() && *m_texts.back().Frame == frame;
    TGLMatrixd4 matrix;
    MultMatrixd(frame, label.GetMatrix(), matrix);
    const auto letters = static_cast<double>(LongestLine(label.Caption()));
    const auto lines = static_cast<float>(1 + label.Caption().count(QLatin1Char('\n')));
    const TGLArrayd3 base = TGLArrayd3{matrix[3][0], matrix[3][1], matrix[3][2]} - m_origin;
    m_texts.push_back({m_block, &label, ToFloats(base), Column(matrix, 0, LetterWidth * letters),
                       Column(matrix, 1, 1), lines,
                       known ? m_texts.back().Frame : std::make_shared<const TGLMatrixd4>(frame),
                       ToVertexColor(color)});
}

/// Where the middle of the letters would be.
void TTextBatch::SendLine(const TText& text) {
    glColor4ub(text.Color[0], text.Color[1], text.Color[2], LineAlpha);
    for (const float part : {0.0F, 1.0F}) {
        std::array<float, 3> place = text.Base;
        for (std::size_t k = 0; k < 3; ++k) place[k] += part * text.Along[k] + text.Up[k] / 2;
        glVertex3fv(place.data());
    }
}

void TTextBatch::DrawLetters(const TText& text) const {
    TGLMatrixd4 matrix;
    MultMatrixd(*text.Frame, text.Label->GetMatrix(), matrix);
    for (std::size_t k = 0; k < 3; ++k) matrix[3][k] -= m_origin[k];
    glColor4ubv(text.Color.data());
    glPushMatrix();
    glMultMatrixd(matrix[0].data());
    text.Label->DrawSpecific(GL_FRONT_AND_BACK, false);
    glPopMatrix();
}

void TTextBatch::Draw(double least) const {
    if (m_texts.empty()) return;
    const TView view;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_LINE_BIT);
    glDisable(GL_LIGHTING);
    SetLineWidth(1);
    glBegin(GL_LINES);
    for (const TText& text : m_texts) {
        const TSeenText seen = view.Seen(text);
        if (seen.InView && seen.Height < least && seen.Length >= LeastLength) SendLine(text);
    }
    glEnd();
    for (const TText& text : m_texts)
        if (const TSeenText seen = view.Seen(text); seen.InView && seen.Height >= least)
            DrawLetters(text);
    glPopAttrib();
}

} // namespace ZEP
