#pragma once

#include <zep/scene/Geom.h>

namespace ZEP {

class TZEPObject;
struct TZEPFrame;

/// While it lives, an object and what is below it are drawn elsewhere than they stand in the tree:
/// as children of a proxy. Such places nest.
class TZEPDrawnPlace {
public:
    /// \param drawnIn  from the frame that the object is drawn in to the absolute one
    TZEPDrawnPlace(TZEPFrame& frame, const TZEPObject& object, const TGLMatrixd4& drawnIn);
    ~TZEPDrawnPlace();
    TZEPDrawnPlace(const TZEPDrawnPlace&) = delete;
    TZEPDrawnPlace& operator=(const TZEPDrawnPlace&) = delete;

private:
    friend TGLMatrixd4 MatrixAsDrawn(const TZEPFrame& frame, const TZEPObject& object);

    TZEPFrame& m_frame;
    const TZEPDrawnPlace* m_outer;
    const TZEPObject* m_object;
    TGLMatrixd4 m_drawnIn;
};

/// From the object's own frame to the absolute one, as it is drawn now.
[[nodiscard]] TGLMatrixd4 MatrixAsDrawn(const TZEPFrame& frame, const TZEPObject& object);

} // namespace ZEP
