#pragma once

#include <QImage>
#include <QPoint>

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

/// Two rings about the point that a view turns about.
[[nodiscard]] QImage PivotMark(double pixelRatio);

} // namespace ZEP
