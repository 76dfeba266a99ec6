#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <memory>

namespace ZEP {

class TPathBatch;
class TZEPObject;

/// What marks one object while a click would take it: a line as it is, of anything else the edges
/// of its box. It is what the object is now.
class ZEP_CORE_EXPORT TObjectMark {
public:
    explicit TObjectMark(TZEPObject& object);
    ~TObjectMark();
    TObjectMark(const TObjectMark&) = delete;
    TObjectMark& operator=(const TObjectMark&) = delete;

    /// Over whatever is there, with the projection that is loaded; the model-view matrix changes.
    /// \param view    from the scene to the eye
    /// \param widths  device pixels for each pixel
    void Draw(const TGLMatrixd4& view, float widths) const;

private:
    TGLArrayd3 m_origin{}; ///< that places count from: far from the scene's, floats are coarse
    std::unique_ptr<TPathBatch> m_paths;
};

} // namespace ZEP
