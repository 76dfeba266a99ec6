#pragma once

#include <zep/batch/DrawScopes.h>
#include <zep/batch/FaceBatch.h>
#include <zep/batch/PathBatch.h>
#include <zep/batch/SmoothMesh.h>
#include <zep/batch/TextBatch.h>
#include <zep/scene/Object.h>

#include <QPointer>

#include <unordered_set>

namespace ZEP {

class TZEPPolygon;

/// How a frame draws the layers of a batch.
struct TLayerView {
    double Share = 1;                   ///< of large layers; see `TDetail`
    bool Fine = true;                   ///< lines are smooth and have their styles
    bool Even = false;                  ///< surfaces show their colours whatever lights there are
    double LeastText = 2;               ///< pixels; see `TTextBatch::Draw`
    float Widths = 1;                   ///< factor of the widths of lines and points
    TSurfaceScope::TLook Surfaces{};    ///< how they are drawn
    TSmoothMeshes* Meshes = nullptr;    ///< null: meshes draw themselves
    const TGLMatrixd4* Exact = nullptr; ///< from the batch to the eye; null: what is loaded
};

/// Of its box, in its own frame.
[[nodiscard]] TGLArrayd3 MiddleOf(const TZEPObject& object);

/// What stands below one object of a batch, a layer say, gathered in arrays of vertexes; what is of
/// other kinds draws itself, and so does what casts shadows, has them fall on it, or is a mirror.
/// Objects that only hold others may be nested, with transforms.
///
/// It is not changed once it is built. What it draws may free any of its objects.
class TLayerBatch {
public:
    using TObjects = std::unordered_set<TZEPObject*>;

    /// It is drawn from arrays, so that its selection must be drawn as well.
    [[nodiscard]] static bool Gathers(TZEPObject& object);

    /// Gathers.
    /// \param groups    what stands in groups, too
    /// \param selected  gets what is selected
    TLayerBatch(TZEPObject& layer, bool groups, const TBatchRules& rules, TObjects& selected);
    [[nodiscard]] std::size_t VertexCount() const;
    [[nodiscard]] bool HasLines() const { return !m_paths.IsEmpty(); }
    /// The diagonal of the box about what is gathered, in its own frame; 0 of nothing.
    [[nodiscard]] double Size() const;
    /// What has happened below its layer since it was built or asked last. None of the groups may
    /// have gone.
    [[nodiscard]] TZEPChildNews TakeNews() const;
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
        std::vector<QPointer<TZEPObject>> Objects;
        TZEPPassSet Passes = 0; ///< that one of them takes part in
    };
    struct TSeparates {
        std::vector<TSeparate> Frames;
        TZEPPassSet Passes = 0;

        void Add(const TGLMatrixd4& frame, TZEPObject& object);
    };
    /// One pass of what draws itself.
    struct TPass {
        TZEPSceneContext& Scene;
        TZEPDrawState State;
        TZEPDrawKind Kind;
        TSmoothMeshes* Meshes = nullptr;
        bool Wire = false;
    };

    void Collect(TZEPObject& group, const TGLMatrixd4& frame, bool groups, TObjects& selected);
    void StartAt(const TGLArrayd3& origin);
    [[nodiscard]] bool Take(TZEPObject& object, const TGLMatrixd4& frame);
    void TakeFace(TZEPPolygon& polygon, const TGLMatrixd4& matrix);
    void DrawArrays(TZEPSceneContext& scene, TZEPDrawState state, const TLayerView& view) const;
    void DrawShapes(const TPass& pass) const;
    void DrawOthers(const TPass& pass, const TLayerView& view) const;
    static void DrawSeparates(const TSeparates& separates, const TPass& pass);
    static void DrawOne(TZEPObject& object, const TPass& pass);

    TPathBatch m_paths;
    TFaceBatch m_faces;
    TTextBatch m_texts;
    std::vector<TZEPObject*> m_groups; ///< whose children were looked at
    TSeparates m_shapes; ///< lines and points of their own kinds: no light falls on them
    TSeparates m_others;
    TBatchRules m_rules;
    TGLArrayd3 m_origin{};
    TZEPPassSet m_passes = 0;
    bool m_started = false;
};

} // namespace ZEP
