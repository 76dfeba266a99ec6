#include <zep/gl/Feedback.h>

#include <zep/framework/Exception.h>
#include <zep/gl/Scopes.h>

#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZEP {

namespace {

constexpr std::size_t FirstSize = 20'000;
constexpr std::size_t GrowthFactor = 8;
constexpr std::size_t LargestSize = std::numeric_limits<GLsizei>::max();
constexpr std::size_t Coordinates = 3;
constexpr int Marker = 0x1234BA00;

[[noreturn]] void RaiseUnexpected(int token) {
    throw Exception(
        QString::asprintf("ERROR: Unexpected feedback token 0x%x (%d).", unsigned(token), token));
}

/// Reads numbers off the front; what is cut off counts as a token that is not expected.
class TTokens {
public:
    explicit TTokens(std::span<const GLfloat> tokens) : m_rest(tokens) {}

    [[nodiscard]] bool IsEmpty() const { return m_rest.empty(); }
    [[nodiscard]] std::span<const GLfloat> Take(std::size_t count, int token) {
        if (count > m_rest.size()) RaiseUnexpected(token);
        const auto taken = m_rest.first(count);
        m_rest = m_rest.subspan(count);
        return taken;
    }
    [[nodiscard]] int TakeRounded(int token) {
        const float number = Take(1, token).front();
        // No count and no token is that large.
        if (!(std::abs(number) < 2e9F)) RaiseUnexpected(token);
        return static_cast<int>(std::lround(number));
    }

private:
    std::span<const GLfloat> m_rest;
};

} // namespace

// An object of a million faces needs four attempts. What is not written takes no memory.
void TZEPFeedback::Grow() {
    if (m_size >= LargestSize) throw Exception(QStringLiteral("ERROR: Too much for a shadow."));
    const std::size_t size = std::clamp(GrowthFactor * m_size, FirstSize, LargestSize);
    m_buffer.reset();
    m_size = 0;
    m_buffer = std::make_unique_for_overwrite<GLfloat[]>(size);
    m_size = size;
}

std::span<const GLfloat> TZEPFeedback::Render(const std::function<void()>& draw) {
    if (!m_buffer) Grow();
    for (;; Grow()) {
        glFeedbackBuffer(static_cast<GLsizei>(m_size), GL_3D, m_buffer.get());
        glRenderMode(GL_FEEDBACK);
        auto leave = qScopeGuard([] { glRenderMode(GL_RENDER); });
        draw();
        leave.dismiss();
        const GLint count = glRenderMode(GL_RENDER);
        if (count >= 0) return std::span(m_buffer.get(), static_cast<std::size_t>(count));
    }
}

void ForEachPolygon(std::span<const GLfloat> all,
                    const std::function<void(std::span<const GLfloat>)>& visit) {
    TTokens tokens(all);
    bool marked = false;
    while (!tokens.IsEmpty()) {
        const int token = tokens.TakeRounded(0);
        if (token == GL_PASS_THROUGH_TOKEN) {
            if (const int value = tokens.TakeRounded(token); value != Marker)
                RaiseUnexpected(token);
            marked = !marked;
        } else if (token == GL_POINT_TOKEN && marked) {
            static_cast<void>(tokens.Take(Coordinates, token));
            marked = false;
        } else if (token == GL_POLYGON_TOKEN) {
            const int corners = tokens.TakeRounded(token);
            if (corners < 3)
                throw Exception(QStringLiteral("Assertion failure (ZEPClasses, line 3023)"));
            visit(tokens.Take(Coordinates * static_cast<std::size_t>(corners), token));
        } else {
            RaiseUnexpected(token);
        }
    }
}

} // namespace ZEP
