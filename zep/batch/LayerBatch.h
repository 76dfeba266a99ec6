#pragma once

#include <zep/batch/DrawScopes.h>
#include <zep/batch/FaceBatch.h>
#include <zep/batch/PathBatch.h>
#include <zep/batch/SmoothMesh.h>
#include <zep/batch/TextBatch.h>
#include <zep/scene/Object.h>

#include <QPointer>

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

/// A batch draws its children by itself, with their marks.
using TIsBatch = bool (*)(const TZEPObject&);

/// What stands below one object of a batch, a layer say, gathered in arrays of vertexes; what is of
/// other kinds draws itself, and so does what casts shadows, has them fall on it, or is a mirror.
/// Objects that only hold others may be nested, with transforms.
///
/// It is not changed once it is built. What it draws may free any of its objects.
class TLayerBatch {
public:
    using TObjects = std::vector<QPointer<TZEPObject>>;

    /// Gathers. \param groups  what stands in groups, too
    TLayerBatch(TZEPObject& layer, bool groups, const TBatchRules& rules);
    [[nodiscard]] std::size_t VertexCount() const;
    [[nodiscard]] bool HasLines() const;
    /// What has happened since it was built or asked last.
    [[nodiscard]] TZEPChildNews TakeNews() const;
    /// The layer and the groups in it.
    [[nodiscard]] const TObjects& Groups() const { return m_groups; }
    /// What has children and draws itself, and what has below that; nothing of other batches.
    [[nodiscard]] TObjects Parents(TIsBatch isBatch) const;
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
    /// What counts from one origin.
    struct TSpot {
        TGLArrayd3 Origin;
        TPathBatch Paths;
        TFaceBatch Faces;
        TFaceBatch PlainFaces; ///< whose colours were never set
        TTextBatch Texts;
    };
    class TGathering;

    void DrawArrays(const TSpot& spot, TZEPSceneContext& scene, TZEPDrawState state,
                    const TLayerView& view) const;
    void DrawShapes(const TPass& pass) const;
    void DrawOthers(const TPass& pass, const TLayerView& view) const;
    static void DrawSeparates(const TSeparates& separates, const TPass& pass);
    static void DrawOne(TZEPObject& object, const TPass& pass);

    std::vector<TSpot> m_spots; ///< where something is gathered
    TObjects m_groups;          ///< whose children were looked at
    TSeparates m_shapes;        ///< lines and points of their own kinds: no light falls on them
    TSeparates m_others;
    TZEPPassSet m_passes = 0;
};

} // namespace ZEP
