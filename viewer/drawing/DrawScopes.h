#pragma once

#include <zep/scene/Geom.h>
#include <zep/scene/ViewVolume.h>

#include <optional>

namespace ZEP {

/// A frame of its own for what is drawn while it lives; the identity makes no call.
class TMatrixScope {
public:
    explicit TMatrixScope(const TGLMatrixd4& matrix);
    /// The same from the camera's matrix on, which has taken the place of what is loaded: OpenGL
    /// counts in floats, and far from the origin they are coarse. \param view  null: none
    TMatrixScope(const TGLMatrixd4& matrix, const TGLMatrixd4* view);
    ~TMatrixScope();
    TMatrixScope(const TMatrixScope&) = delete;
    TMatrixScope& operator=(const TMatrixScope&) = delete;

private:
    TGLMatrixd4 m_matrix;
    std::optional<TZEPViewFrame> m_frame;
    bool m_pushed;
};

/// All that is drawn while it lives is lit alike from all around, by white light.
class TEvenScope {
public:
    TEvenScope();
    ~TEvenScope();
    TEvenScope(const TEvenScope&) = delete;
    TEvenScope& operator=(const TEvenScope&) = delete;
};

/// Surfaces that are drawn while it lives lie a little farther away, so that lines on them are
/// seen.
class TSinkScope {
public:
    /// \param sinks  false: nothing
    explicit TSinkScope(bool sinks);
    ~TSinkScope();
    TSinkScope(const TSinkScope&) = delete;
    TSinkScope& operator=(const TSinkScope&) = delete;

private:
    bool m_sinks;
};

} // namespace ZEP
