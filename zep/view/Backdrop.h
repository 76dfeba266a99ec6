#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/view/Extent.h>

#include <QObject>
#include <QPointer>

#include <cstddef>
#include <optional>

namespace ZEP {

class TZEPCamera;
class TZEPScene;

/// What is seen through a camera behind its scene: a background that gets darker downwards, a grid
/// on the floor of the content, the axes of the origin, and in the lower left corner the directions
/// of the axes. It belongs to the view: it is not stored, selected or measured, and other cameras
/// see nothing of it. One line puts it there, and it is gone with the object:
///
///     TZEPBackdrop backdrop(camera);
///     backdrop.SetContent(VisibleExtent(scene).Bounds());
///
/// It draws at the scene's `AfterCamera`, in whatever context the scene is drawn, and leaves
/// nothing in the depth buffer. What a host draws there itself is to be connected later.
///
/// Defaults: dark blue colours, guides shown, no content and therefore neither grid nor axes.
class ZEP_CORE_EXPORT TZEPBackdrop : public QObject {
    Q_OBJECT
public:
    struct TColors {
        TColor Top{0x33261B};
        TColor Bottom{0x17110D};
        std::optional<TColor> Grid; ///< bright on a dark background and dark on a bright one
        TColor AxisX{0x5B5BF0};
        TColor AxisY{0x6BCB6B};
        TColor AxisZ{0xFF9B5C};

        /// \param axis  0 .. 2
        [[nodiscard]] TColor Axis(std::size_t axis) const {
            return axis == 0 ? AxisX : axis == 1 ? AxisY : AxisZ;
        }
        /// One colour for all of the background.
        [[nodiscard]] ZEP_CORE_EXPORT static TColors Plain(TColor background);
        bool operator==(const TColors&) const = default;
    };

    explicit TZEPBackdrop(TZEPCamera* camera = nullptr, QObject* parent = nullptr);

    [[nodiscard]] TZEPCamera* Camera() const;
    /// Follows that one into the scenes that it comes to; null for none.
    void SetCamera(TZEPCamera* camera);
    /// What the grid lies below, and its cells and the axes are measured by.
    void SetContent(const std::optional<TZEPBounds>& content);
    [[nodiscard]] bool Guides() const { return m_guides; }
    /// Shows grid, axes and directions, besides the background.
    void SetGuides(bool shown);
    [[nodiscard]] bool Background() const { return m_background; }
    /// Shows the background, as at first; else the scene's own is seen behind the guides, or in a
    /// transparent picture none.
    void SetBackground(bool shown);
    [[nodiscard]] const TColors& Colors() const { return m_colors; }
    void SetColors(const TColors& colors);
    /// The background's at the height of the eye: fog looks best in it.
    [[nodiscard]] TColor MiddleColor() const;
    /// Between two lines of the grid: 1, 2 or 5 times a power of ten; 0 without content, and where
    /// that is so far from the origin that its places could not be told apart.
    [[nodiscard]] double GridStep() const;
    /// Device pixels for each pixel; lines and letters get that much larger. None: as the
    /// application has it.
    void SetPixelRatio(std::optional<double> ratio);

private:
    void FollowScene();
    void Repaint() const;
    void Draw() const;
    void DrawGrid(const TZEPBounds& box) const;
    void DrawOrigin(double length) const;
    void DrawDirections() const;
    [[nodiscard]] TColor GridColor() const;
    [[nodiscard]] double PixelRatio() const;

    QPointer<TZEPCamera> m_camera;
    QMetaObject::Connection m_drawing;
    std::optional<TZEPBounds> m_content;
    TColors m_colors;
    std::optional<double> m_pixelRatio;
    bool m_guides = true;
    bool m_background = true;
};

} // namespace ZEP
