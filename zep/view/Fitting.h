#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>
#include <zep/view/Extent.h>

#include <span>
#include <vector>

namespace ZEP {

class TZEPCamera;
class TZEPObject;

/// How a view is fitted to what it is to show.
struct TFitOptions {
    /// The view is that many times as wide, or as high, as what it shows; at least 1.
    double Margin = 1.12;
    /// The middle of the box about the points is the camera's target, and the eye stays outside of
    /// the sphere about that box, so that the view can be turned about it. Else the view is as near
    /// as the points let it, with even margins on opposite sides.
    bool Centred = false;
    /// What was before the far plane still is: for a view of a part of the scene.
    bool KeepsDepth = false;
};

/// \name Fits
/// They move the base placement of a camera along its present direction of view to where points
/// fill a view of that width to height: in the deciding direction, across or upwards, they reach to
/// the margin, in the other one not as far. The planes are set so that there is room to orbit and
/// zoom. The following of objects and all offsets end; the lens (`FOVY`) and the up vector stay.
///
/// Points are absolute, whatever parents the camera rides on, and of either projection. Points that
/// are not finite are passed over; a single place counts as a box of size 1. A view along the up
/// vector, which would show nothing, is turned by a twentieth of a degree. The eye keeps clear of
/// what is long and narrow along the view, which then is seen smaller than the view.
///
/// An aspect that is no positive number counts as 1.
/// \return false, with the camera as it was, where there is nothing to fit or it is out of range
/// @{
ZEP_CORE_EXPORT bool FitCamera(TZEPCamera& camera, std::span<const TGLArrayd3> points,
                               double aspect, const TFitOptions& options = {});
/// To a box; an empty one (a minimum beyond the maximum) is nothing.
ZEP_CORE_EXPORT bool FitCamera(TZEPCamera& camera, const TZEPBounds& box, double aspect,
                               const TFitOptions& options = {});
/// To what can be seen of an object and of all below it: of a scene, to the whole.
ZEP_CORE_EXPORT bool FitCamera(TZEPCamera& camera, TZEPObject& node, double aspect,
                               const TFitOptions& options = {});
/// @}

/// The eight corners of a box.
[[nodiscard]] ZEP_CORE_EXPORT std::vector<TGLArrayd3> CornersOf(const TZEPBounds& box);
/// Absolute points that all that can be seen of an object and below it lies between, as good as;
/// some fifty, or none.
[[nodiscard]] ZEP_CORE_EXPORT std::vector<TGLArrayd3> VisiblePoints(TZEPObject& node);

/// Changes between parallel and perspective projection by moving the eye: what is at the target
/// keeps its size in a view of that width to height.
ZEP_CORE_EXPORT void SwitchProjection(TZEPCamera& camera, bool parallel, double aspect);

} // namespace ZEP
