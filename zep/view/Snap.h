#pragma once

#include <zep/view/SnapPoint.h>

#include <QSize>

#include <vector>

namespace ZEP {

class TZEPCamera;
struct TZEPKnownCircle;

/// Finds what a place in a view snaps to: within some pixels the nearest end, corner, intersection,
/// middle or centre, and where there is none the nearest point of a line or a surface. What is
/// hidden by a surface, cut away by a section, not selectable or a dimension is passed over, and
/// so is what is no number.
///
/// Of 100,000 lines in a batch it takes a few milliseconds, of a mesh some 20 for each million
/// faces.
class ZEP_CORE_EXPORT TZEPSnapper {
public:
    TZEPSnapper();
    ~TZEPSnapper();

    /// How far from the place what it snaps to may be seen, in device pixels: 10 at first.
    void SetReach(double pixels) { m_reach = pixels; }
    /// With a context current, in which nothing is drawn. Centres count of the circles that the
    /// last places came near to.
    /// \param view   its size in device pixels
    /// \param place  in device pixels from its upper left corner
    [[nodiscard]] std::optional<TZEPSnap> Find(TZEPCamera& camera, const QSize& view, double x,
                                               double y);
    /// Other objects are there now.
    void Forget();

private:
    class TLooking;

    void Remember(const std::vector<TZEPKnownCircle>& circles);

    double m_reach = 10;
    std::vector<TZEPKnownCircle> m_circles; ///< the last ones, the latest first
};

} // namespace ZEP
