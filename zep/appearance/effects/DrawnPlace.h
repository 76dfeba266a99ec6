#pragma once

#include <zep/scene/Geom.h>

namespace ZEP {

class TZEPObject;

/// While it lives, an object and what is below it are drawn elsewhere than they stand in the tree:
/// as children of a proxy. Such places nest.
class TZEPDrawnPlace {
public:
    /// \param frame  from the frame that the object is drawn in to the absolute one
    TZEPDrawnPlace(const TZEPObject& object, const TGLMatrixd4& frame);
    ~TZEPDrawnPlace() { s_current = m_outer; }
    TZEPDrawnPlace(const TZEPDrawnPlace&) = delete;
    TZEPDrawnPlace& operator=(const TZEPDrawnPlace&) = delete;

    /// From the object's own frame to the absolute one, as it is drawn now.
    [[nodiscard]] static TGLMatrixd4 MatrixOf(const TZEPObject& object);
    /// Something is drawn elsewhere than it stands.
    [[nodiscard]] static bool IsElsewhere() { return s_current; }

private:
    static const TZEPDrawnPlace* s_current; // everything is drawn on one thread

    const TZEPDrawnPlace* m_outer = s_current;
    const TZEPObject* m_object;
    TGLMatrixd4 m_frame;
};

} // namespace ZEP
