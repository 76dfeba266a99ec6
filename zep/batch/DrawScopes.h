#pragma once

#include <zep/scene/Frame.h>
#include <zep/scene/Geom.h>
#include <zep/scene/ViewVolume.h>

#include <optional>

namespace ZEP {

/// A frame of its own for what is drawn while it lives; the identity makes no call.
class TMatrixScope {
public:
    TMatrixScope(TZEPFrame& frame, const TGLMatrixd4& matrix);
    /// The same from the camera's matrix on, which has taken the place of what is loaded: OpenGL
    /// counts in floats, and far from the origin they are coarse. \param view  null: none
    TMatrixScope(TZEPFrame& frame, const TGLMatrixd4& matrix, const TGLMatrixd4* view);
    ~TMatrixScope();
    TMatrixScope(const TMatrixScope&) = delete;
    TMatrixScope& operator=(const TMatrixScope&) = delete;

private:
    TGLMatrixd4 m_matrix;
    std::optional<TZEPViewFrame> m_frame;
    bool m_pushed;
};

[[nodiscard]] inline TGLMatrixd4 TranslationTo(const TGLArrayd3& place) {
    TGLMatrixd4 matrix = idd;
    matrix[3] = {place[0], place[1], place[2], 1};
    return matrix;
}

/// All that is drawn while it lives is lit alike from all around, by white light, so that surfaces
/// show the colour that lamps show them in.
class TEvenScope {
public:
    explicit TEvenScope(TZEPDrawRun& run);
    ~TEvenScope();
    TEvenScope(const TEvenScope&) = delete;
    TEvenScope& operator=(const TEvenScope&) = delete;

private:
    TZEPDrawRun& m_run;
    TZEPDrawRun::RuleScope m_rules;
};

/// How surfaces are drawn while one lives.
class TSurfaceScope {
public:
    struct TLook {
        bool Sinks = false; ///< a little farther away, so that lines on them are seen
        bool Wire = false;  ///< their outlines
        bool Flat = false;  ///< in one colour for each face
    };

    TSurfaceScope(TZEPDrawRun& run, const TLook& look);
    ~TSurfaceScope();
    TSurfaceScope(const TSurfaceScope&) = delete;
    TSurfaceScope& operator=(const TSurfaceScope&) = delete;

private:
    TZEPDrawRun& m_run;
    bool m_pushed;
};

/// While it lives surfaces are not seen, and hide what is behind them.
class TDepthOnlyScope {
public:
    /// \param on  false: they are seen as ever
    TDepthOnlyScope(TZEPDrawRun& run, bool on);
    ~TDepthOnlyScope();
    TDepthOnlyScope(const TDepthOnlyScope&) = delete;
    TDepthOnlyScope& operator=(const TDepthOnlyScope&) = delete;

private:
    TZEPDrawRun& m_run;
    bool m_on;
};

} // namespace ZEP
