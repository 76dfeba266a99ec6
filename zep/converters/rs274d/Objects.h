#pragma once

#include <zep/converters/rs274d/Sink.h>
#include <zep/framework/Color.h>

namespace ZEP {

class TZEPArc;
class TZEPLine;
class TZEPObject;
class TZEPPoint;
class TZEPPolyline;

/// \name Path objects, owned by `root` and its children, with the ident "Line %d"
/// @{
TZEPLine* AddPathLine(TZEPObject& root, const TRS274DPoint& from, const TRS274DPoint& to,
                      TColor color, qint64 line);
/// Radius and place are the transform's.
TZEPArc* AddPathArc(TZEPObject& root, const TRS274DArc& arc, TColor color, qint64 line);
/// Straight pieces from point to point.
TZEPPolyline* AddPathCurve(TZEPObject& root, std::span<const TRS274DPoint> points, TColor color,
                           qint64 line);
TZEPPoint* AddPathPoint(TZEPObject& root, const TRS274DPoint& at, TColor color, qint64 line);
/// @}

} // namespace ZEP
