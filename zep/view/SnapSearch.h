#pragma once

#include <zep/scene/Sections.h>
#include <zep/view/SnapPoint.h>
#include <zep/view/SnapShape.h>

#include <QSize>

#include <vector>

namespace ZEP {

class TZEPCamera;

/// A circle that a place came near to.
struct TZEPKnownCircle {
    QPointer<TZEPObject> Object;
    TZEPRound Round;
};

struct TSnapEdge {
    TGLArrayd3 From, To;
    TZEPObject* Object;
    std::optional<TZEPRound> Round;
    double Pixels; ///< from the pointer
    /// Those of one surface meet at its corners alone.
    bool IsOfSurface = false;
};

/// One search of what one place in a view snaps to.
class TSnapSearch {
public:
    TSnapSearch(const TZEPCamera& camera, const QSize& view, double x, double y, double reach);

    [[nodiscard]] bool IsSeen() const { return m_isSeen; }

    void Add(TZEPObject& object, const TSnapShape& shape);
    void AddCentre(TZEPObject* object, const TZEPRound& round);
    /// Where edges meet that are near.
    void AddMeetings();

    /// Those that it came near to.
    [[nodiscard]] const std::vector<TZEPKnownCircle>& Circles() const { return m_circles; }
    /// What was found, the best first.
    [[nodiscard]] std::vector<TZEPSnap> Found() const;
    /// As far along the line of sight.
    [[nodiscard]] double DepthOf(const TGLArrayd3& point) const;

    /// What the reach is there, in the scene's unit.
    [[nodiscard]] double ReachAt(const TGLArrayd3& at) const { return m_reach / PixelsPerUnit(at); }
    /// Where edges of a surface count that is hit there.
    [[nodiscard]] TSnapBox Around(const TGLArrayd3& at) const;

private:
    struct TOffer {
        TZEPSnap Snap;
        double Pixels;
    };

    /// From the pointer, as it is seen.
    [[nodiscard]] double PixelsTo(const TGLArrayd3& point) const;
    [[nodiscard]] bool IsCutAway(const TGLArrayd3& point) const;
    void Offer(TZEPSnapKind kind, const TGLArrayd3& point, TZEPObject* object,
               const std::optional<TZEPRound>& round);
    /// \return  it is near
    bool AddEdge(TSnapEdge edge, bool hasMiddle);
    void AddCircle(const TSnapCircle& circle, TZEPObject& object);
    /// Of the point of a circle that is nearest to the line of sight.
    [[nodiscard]] double AngleNear(const TSnapCircle& circle) const;
    /// How many pixels a radian is there.
    [[nodiscard]] double PixelsAround(const TSnapCircle& circle, double angle) const;
    [[nodiscard]] double PixelsPerUnit(const TGLArrayd3& at) const;

    QSize m_size;
    double m_x, m_y, m_reach;
    TGLMatrixd4 m_toClip{};
    std::vector<TGLArrayd4> m_planes;
    bool m_isSeen = false;
    TGLArrayd3 m_eye{}, m_sight{};
    std::vector<TOffer> m_offers;
    std::vector<TSnapEdge> m_edges;
    std::vector<TZEPKnownCircle> m_circles;
};

} // namespace ZEP
