#pragma once

#include <zep/Export.h>
#include <zep/scene/DrawPasses.h>
#include <zep/scene/Geom.h>

#include <optional>

namespace ZEP {

/// Lines and points wider than this, in pixels, are drawn wherever they are.
inline constexpr float WidestCulled = 32;

struct TZEPRegion;

/// How much of a box a view shows.
enum class TZEPSeen { Nothing, Part, All };

/// What is known of neighbours: an axis-aligned box about them, in the frame of their parent, and
/// the passes that one of them takes part in.
struct TZEPBlockBox {
    TGLArrayd3 Min{1e300, 1e300, 1e300}; ///< beyond `Max`: holds nothing, and is seen nowhere
    TGLArrayd3 Max{-1e300, -1e300, -1e300};
    bool Known = false;
    bool Bounded = true; ///< all that the objects draw lies within
    TZEPPassSet Passes = 0;

    /// Widens it to a point; what is no number changes nothing.
    void Add(const TGLArrayd3& point) {
        for (std::size_t k = 0; k < 3; ++k) {
            if (point[k] < Min[k]) Min[k] = point[k];
            if (point[k] > Max[k]) Max[k] = point[k];
        }
    }
};

/// The space that a view shows, between six planes.
class ZEP_CORE_EXPORT TZEPViewVolume {
public:
    /// \param toClip   from the frame of the boxes to clip coordinates, where |x|, |y|, |z| <= w is
    ///                 seen: projection · modelview
    /// \param marginX, marginY  how far around the view counts as seen, in half widths and heights
    explicit TZEPViewVolume(const TGLMatrixd4& toClip, double marginX = 0, double marginY = 0);
    /// What OpenGL's present matrices show, with some pixels around.
    /// \param part  of the viewport, beyond which nothing is seen; null: all of it
    [[nodiscard]] static TZEPViewVolume OfContext(double pixels, const TZEPRegion* part = nullptr);
    /// The same, with room for the widest lines and points that are not drawn everywhere; none
    /// while a display list is made, which may be called in another view.
    [[nodiscard]] static std::optional<TZEPViewVolume> OfSight();

    /// The same space in a frame that `matrix` leads out of.
    [[nodiscard]] TZEPViewVolume Within(const TGLMatrixd4& matrix) const;
    /// `Nothing` where the box lies outside as a whole, on the far side of one of the planes. A box
    /// near a corner may lie outside and yet count as seen in part; so does a box of anything but
    /// numbers.
    [[nodiscard]] TZEPSeen Shows(const TGLArrayd3& min, const TGLArrayd3& max) const;

private:
    static constexpr std::size_t Planes = 6;

    TZEPViewVolume() = default;
    void Measure();

    // a·x + b·y + c·z + d >= 0 is seen; by coordinate, so that one loop serves all planes at once.
    std::array<std::array<double, Planes>, 4> m_planes{};
    std::array<std::array<double, Planes>, 3> m_sizes{};
};

struct TZEPFrame;

/// Where a draw walk stands: the volume of its view in the frame of the object that draws. Children
/// outside of it need not be drawn (`TZEPObject::StaysInSize`). Transforms of objects open
/// inner frames (`TZEPXFormScope`). Whoever changes the matrices by other means while a walk draws
/// opens a frame of its own: one of the matrix, or one that sees everything.
class ZEP_CORE_EXPORT TZEPViewFrame {
public:
    /// Starts a walk; without a volume everything counts as seen, also below an outer walk.
    TZEPViewFrame(TZEPFrame& frame, std::optional<TZEPViewVolume> volume);
    /// An inner frame that `matrix`, which must outlive this, leads out of.
    TZEPViewFrame(TZEPFrame& frame, const TGLMatrixd4& matrix);
    ~TZEPViewFrame();
    TZEPViewFrame(const TZEPViewFrame&) = delete;
    TZEPViewFrame& operator=(const TZEPViewFrame&) = delete;

    /// The innermost frame has a volume.
    [[nodiscard]] static bool Bounds(const TZEPFrame& frame);
    /// What the volume of the innermost frame, which must have one, shows of the box.
    [[nodiscard]] static TZEPSeen Shows(const TZEPFrame& frame, const TZEPBlockBox& box);

private:
    [[nodiscard]] const TZEPViewVolume& Volume();

    TZEPFrame& m_frame;
    TZEPViewFrame* m_outer;
    const TGLMatrixd4* m_matrix = nullptr;
    std::optional<TZEPViewVolume> m_volume; // of an inner frame: made when first asked for
    bool m_bounds;
};

} // namespace ZEP
