#pragma once

#include <zep/converters/dxf/Curves.h>
#include <zep/objects/Tessellation.h>

namespace ZEP {

/// A place of a chain of pieces that have widths: those where the piece begins and ends that starts
/// there.
struct TDXFWidePlace {
    TGLArrayd3 Point{};
    double Start = 0, End = 0;
};

/// Along a polyline whose vertexes have widths; they change evenly along arcs.
[[nodiscard]] std::vector<TDXFWidePlace> WidePlacesOf(std::span<const TDXFBulgeVertex> vertexes,
                                                      bool closed);

/// More are drawn thin.
inline constexpr std::size_t MaxDXFWidePlaces = 10'000;

/// The area of a flat chain: each piece with its widths, mitred where two of them meet that are
/// equally wide there; a corner too sharp for that is cut off.
/// \return  counter-clockwise contours, which together fill it
[[nodiscard]] TContours WideContours(std::span<const TDXFWidePlace> places, bool closed);

} // namespace ZEP
