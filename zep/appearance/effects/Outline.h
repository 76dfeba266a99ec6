#pragma once

#include <zep/appearance/effects/EdgeTurns.h>
#include <zep/gl/Tessellator.h>

#include <array>
#include <cstddef>
#include <deque>
#include <span>
#include <vector>

namespace ZEP {

/// The outline of the union of polygons that all run the same way round, in the plane of their x
/// and y. Edges that two of them share in opposite directions cancel out, so that of a closed
/// surface hardly more than its silhouette reaches GLU's tessellator, which does the rest.
class TZEPOutline {
public:
    using TPoint = TZEPEdgeTurns::TPoint;
    /// Takes the closed contours, with the inside to their left: each `Begin`, its points in order,
    /// `End`. It must not throw.
    class TSink {
    public:
        virtual void Begin() = 0;
        virtual void Point(const TPoint& point) = 0;
        virtual void End() = 0;

    protected:
        ~TSink() = default;
    };

    TZEPOutline();

    void Clear() { m_edges.Clear(); }
    /// \param corners  x, y, z of each; a polygon of anything but numbers is left out
    void Add(std::span<const GLfloat> corners);
    /// Sends the outline of the union. Raises `Exception` ("ERROR: " and the words of GLU).
    void Trace(TSink& sink);
    /// Sends the edges that did not cancel out, as they are: parts that cover each other keep an
    /// outline of their own.
    void SendLoops(TSink& sink);

private:
    struct TDirected {
        TPoint From, To;
        bool Used = false;
    };
    /// One call of `Trace`, as GLU's callbacks get it.
    struct TTracing;

    void ListDirected();
    [[nodiscard]] TDirected* UnusedFrom(const TPoint& point);
    template <class Begin, class Visit, class End>
    void WalkLoops(Begin&& begin, Visit&& visit, End&& end);

    TTessellator m_tess;
    TZEPEdgeTurns m_edges;
    std::vector<TDirected> m_directed;
    std::deque<TPoint> m_combined; // where edges cross; in place until all is traced
};

} // namespace ZEP
