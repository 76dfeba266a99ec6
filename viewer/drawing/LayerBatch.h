#pragma once

#include "viewer/drawing/FaceBatch.h"
#include "viewer/drawing/PathBatch.h"
#include "viewer/drawing/SmoothMesh.h"
#include "viewer/drawing/TextBatch.h"
#include <zep/scene/Object.h>

#include <unordered_set>

namespace ZEP {

class TZEPPolygon;

/// How a frame draws the layers of a file.
struct TLayerView {
    double Share = 1;                   ///< of large layers; see `TDetail`
    bool Fine = true;                   ///< lines are smooth and have their styles
    bool Even = false;                  ///< surfaces show their colours whatever lights there are
    double LeastText = 2;               ///< pixels; see `TTextBatch::Draw`
    bool Sinks = false;                 ///< surfaces give way to lines that lie on them
    TSmoothMeshes* Meshes = nullptr;    ///< null: meshes draw themselves
    const TGLMatrixd4* Exact = nullptr; ///< the camera's matrix; null: it is not known
};

/// What stands below one object of a file, a layer say, gathered in arrays of vertexes; what is of
/// other kinds draws itself, and so does what casts shadows, has them fall on it, or is a mirror.
/// Objects that only hold others may be nested, with transforms.
class TLayerBatch {
public:
    using TObjects = std::unordered_set<TZEPObject*>;

    /// It is drawn from arrays, so that its selection must be drawn as well.
    [[nodiscard]] static bool Gathers(TZEPObject& object);

    /// Gathers anew.
    /// \param groups    what stands in groups, too
    /// \param selected  gets what is selected
    void Build(TZEPObject& layer, bool groups, const TBatchRules& rules, TObjects& selected);
    /// It is out of date.
    void MarkStale() { m_stale = true; }
    [[nodiscard]] bool IsStale() const { return m_stale; }
    [[nodiscard]] std::size_t VertexCount() const;
    [[nodiscard]] bool HasLines() const { return !m_paths.IsEmpty(); }
    /// It has something to draw in that pass.
    [[nodiscard]] bool TakesPartIn(TZEPDrawState state) const {
        return (m_passes & PassBit(state)) != 0;
    }

    /// One pass. \param frame  that the layer's objects lie in
    void Draw(const TGLMatrixd4& frame, TZEPSceneContext& scene, TZEPDrawState state,
              TZEPDrawKind kind, const TLayerView& view) const;

private:
    /// Objects that draw themselves, in one frame.
    struct TSeparate {
        TGLMatrixd4 Frame;
        std::vector<TZEPObject*> Objects;
        TZEPPassSet Passes = 0; ///< that one of them takes part in
    };
    struct TSeparates {
        std::vector<TSeparate> Frames;
        TZEPPassSet Passes = 0;

        void Add(const TGLMatrixd4& frame, TZEPObject& object);
    };

    void Collect(TZEPObject& group, const TGLMatrixd4& frame, bool groups, TObjects& selected);
    void StartAt(const TGLArrayd3& origin);
    [[nodiscard]] bool Take(TZEPObject& object, const TGLMatrixd4& frame);
    void TakeFace(TZEPPolygon& polygon, const TGLMatrixd4& matrix);
    void DrawArrays(TZEPDrawState state, const TLayerView& view) const;
    void DrawShapes(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) const;
    void DrawOthers(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind,
                    const TLayerView& view) const;
    static void DrawSeparates(const TSeparates& separates, TZEPSceneContext& scene,
                              TZEPDrawState state, TZEPDrawKind kind, TSmoothMeshes* meshes);

    TPathBatch m_paths;
    TFaceBatch m_faces;
    TTextBatch m_texts;
    TSeparates m_shapes; ///< lines and points of their own kinds: no light falls on them
    TSeparates m_others;
    TBatchRules m_rules;
    TGLArrayd3 m_origin{};
    TZEPPassSet m_passes = 0;
    bool m_started = false;
    bool m_stale = true;
};

} // namespace ZEP
