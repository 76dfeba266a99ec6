#pragma once

#include <QImage>
#include <QPoint>

#include <functional>

class QPainter;

namespace ZEP {

/// \name Pictures over what the current context shows
/// Their lower left corner stands at a place in device pixels, counted from that of the viewport.
/// OpenGL's state stays.
/// @{

/// \param picture  `Format_ARGB32`, taken as it is; the lowest row comes first
void DrawPixels(const QImage& picture, const QPoint& at);
/// \param picture  `Format_ARGB32_Premultiplied`
void DrawBlended(const QImage& picture, const QPoint& at);
/// @}

/// A picture for `DrawBlended`, painted smoothly on nothing.
/// \param size    in pixels of the application; the picture has device pixels
/// \param middle  the painter's origin
[[nodiscard]] QImage PaintedMark(const QSizeF& size, const QPointF& middle, double pixelRatio,
                                 const std::function<void(QPainter&)>& paint);

/// Two rings about the point that a view turns about.
[[nodiscard]] QImage PivotMark(double pixelRatio);

} // namespace ZEP
