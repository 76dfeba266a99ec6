#pragma once

#include "viewer/content/Box.h"
#include <zep/framework/Color.h>

#include <optional>

namespace ZEP {

/// What a view shows behind its content: a background that gets darker downwards, a grid on the
/// floor of the content, the axes of the origin, and in the corner the directions of the axes.
class TBackdrop {
public:
    void SetContent(const std::optional<TBox>& content) { m_content = content; }
    /// Grid and axes, besides the background.
    void SetGuides(bool shown) { m_guides = shown; }
    [[nodiscard]] bool Guides() const { return m_guides; }
    /// One colour in place of the background of its own.
    void SetBackground(const std::optional<TColor>& color) { m_color = color; }
    /// The background's at the height of the eye.
    [[nodiscard]] TColor MiddleColor() const;
    /// Of the grid: 1, 2 or 5 times a power of ten; 0 without content.
    [[nodiscard]] double GridStep() const;

    /// Into the current context, with the camera's matrices loaded and the buffers cleared.
    /// \param pixelRatio  device pixels for each pixel
    void Draw(double pixelRatio) const;

private:
    void DrawGrid(const TBox& box, double pixelRatio) const;

    std::optional<TBox> m_content;
    std::optional<TColor> m_color;
    bool m_guides = true;
};

} // namespace ZEP
