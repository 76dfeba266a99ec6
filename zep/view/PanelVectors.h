#pragma once

#include <zep/Export.h>

#include <QByteArray>
#include <QSize>

namespace ZEP {

class TZEPPanel;

enum class TZEPVectorFormat { Svg, Pdf };

/// Whether this library was built with GL2PS, which makes pictures of lines and areas.
[[nodiscard]] ZEP_EXPORT bool HasVectorPictures();

/// What the panel's camera sees as a picture of lines and areas, as the content of a file. It has
/// neither textures, shadows and mirrors nor what only the stencil buffer makes, such as carved
/// solids; what hides what is told by cutting up to some ten thousand areas, beyond that by their
/// distances, so that few may show that are hidden. A whole background belongs to a picture of
/// pixels: a backdrop should be without (`TZEPBackdrop::SetBackground`).
/// \param size         points of the page
/// \param transparent  without the background of the scene
/// Raises `Exception` where there is no GL2PS, no context or no memory.
[[nodiscard]] ZEP_EXPORT QByteArray RenderVectors(TZEPPanel& panel, const QSize& size,
                                                  TZEPVectorFormat format,
                                                  bool transparent = false);

} // namespace ZEP
