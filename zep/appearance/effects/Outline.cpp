#include <zep/appearance/effects/Outline.h>

#include <zep/framework/Exception.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

struct TZEPOutline::TTracing {
    TSink& Sink;
    std::deque<TPoint>& Combined;
    GLenum Error = 0;

    static void Begin(GLenum /*loop*/, void* tracing) {
        static_cast<TTracing*>(tracing)->Sink.Begin();
    }
    static void Vertex(void* point, void* tracing) {
        static_cast<TTracing*>(tracing)->Sink.Point(*static_cast<TPoint*>(point));
    }
    static void End(void* tracing) { static_cast<TTracing*>(tracing)->Sink.End(); }
    static void Combine(const GLdouble place[3], void* /*neighbours*/[4],
                        const GLfloat /*weights*/[4], void** result, void* tracing) {
        *result = &static_cast<TTracing*>(tracing)->Combined.emplace_back(
            TPoint{static_cast<float>(place[0]), static_cast<float>(place[1]),
                   static_cast<float>(place[2])});
    }
    // Nothing may be thrown through GLU: what went wrong is told at the end.
    static void Fail(GLenum error, void* tracing) {
        static_cast<TTracing*>(tracing)->Error = error;
    }
};

TZEPOutline::TZEPOutline() {
    GLUtesselator* tess = m_tess.Get();
    gluTessProperty(tess, GLU_TESS_BOUNDARY_ONLY, GL_TRUE);
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessNormal(tess, 0, 0, 1);
    m_tess.SetCallback(GLU_TESS_BEGIN_DATA, TTracing::Begin);
    m_tess.SetCallback(GLU_TESS_VERTEX_DATA, TTracing::Vertex);
    m_tess.SetCallback(GLU_TESS_END_DATA, TTracing::End);
    m_tess.SetCallback(GLU_TESS_COMBINE_DATA, TTracing::Combine);
    m_tess.SetCallback(GLU_TESS_ERROR_DATA, TTracing::Fail);
}

void TZEPOutline::Add(std::span<const GLfloat> corners) {
    if (!std::ranges::all_of(corners, [](float c) { return std::isfinite(c); })) return;
    const std::size_t count = corners.size() / 3;
    const auto at = [&](std::size_t i) {
        return TPoint{corners[3 * i], corners[3 * i + 1], corners[3 * i + 2]};
    };
    for (std::size_t i = 0; i < count; ++i) m_edges.Add(at(i), at((i + 1) % count));
}

void TZEPOutline::ListDirected() {
    m_directed.clear();
    m_edges.ForEach([this](const TZEPEdgeTurns::TEdge& edge) {
        for (int turn = 0; turn < std::abs(edge.Turns); ++turn)
            m_directed.push_back(edge.Turns > 0 ? TDirected{edge.Low, edge.High}
                                                : TDirected{edge.High, edge.Low});
    });
    std::ranges::sort(m_directed, {}, &TDirected::From);
}

/// Null where all that begin there are used.
TZEPOutline::TDirected* TZEPOutline::UnusedFrom(const TPoint& point) {
    auto edge = std::ranges::lower_bound(m_directed, point, {}, &TDirected::From);
    for (; edge != m_directed.end() && edge->From == point; ++edge)
        if (!edge->Used) return &*edge;
    return nullptr;
}

/// As many edges end at a point as begin there, so that every walk comes back to where it began.
/// Which one is taken where several begin does not matter: the winding numbers are the same.
template <class Begin, class Visit, class End>
void TZEPOutline::WalkLoops(Begin&& begin, Visit&& visit, End&& end) {
    ListDirected();
    for (TDirected& first : m_directed) {
        if (first.Used) continue;
        begin();
        for (TDirected* edge = &first; edge;) {
            edge->Used = true;
            visit(edge->From);
            edge = edge->To == first.From ? nullptr : UnusedFrom(edge->To);
        }
        end();
    }
}

void TZEPOutline::SendLoops(TSink& sink) {
    WalkLoops([&] { sink.Begin(); }, [&](const TPoint& point) { sink.Point(point); },
              [&] { sink.End(); });
}

void TZEPOutline::Trace(TSink& sink) {
    GLUtesselator* tess = m_tess.Get();
    m_combined.clear();
    TTracing tracing{sink, m_combined};
    gluTessBeginPolygon(tess, &tracing);
    WalkLoops([tess] { gluTessBeginContour(tess); },
              [tess](TPoint& point) {
                  std::array<GLdouble, 3> place{};
                  std::ranges::copy(point, place.begin());
                  gluTessVertex(tess, place.data(), point.data());
              },
              [tess] { gluTessEndContour(tess); });
    gluTessEndPolygon(tess);
    if (tracing.Error != 0)
        throw Exception(
            QStringLiteral("ERROR: ") +
            QString::fromLatin1(reinterpret_cast<const char*>(gluErrorString(tracing.Error))));
}

} // namespace ZEP
