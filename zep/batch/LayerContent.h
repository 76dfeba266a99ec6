#pragma once

#include <zep/batch/BlockEdit.h>
#include <zep/batch/DrawScopes.h>
#include <zep/batch/FaceBatch.h>
#include <zep/batch/Gathering.h>
#include <zep/batch/PathBatch.h>
#include <zep/batch/TextBatch.h>

namespace ZEP {

class TLayerContent;
class TSpots;

/// Where what a tool has run through ends; see `TPathFrontier`.
struct TLayerFrontier {
    std::size_t Block;                         ///< those before it are done
    std::shared_ptr<const TLayerContent> Done; ///< what is done of that block
};

/// How a frame draws the layers of a batch.
struct TLayerView {
    double Share = 1;                ///< of large layers; see `TDetail`
    bool Fine = true;                ///< lines are smooth and have their styles
    bool Even = false;               ///< surfaces show their colours whatever lights there are
    double LeastText = 2;            ///< pixels; see `TTextBatch::Draw`
    float Widths = 1;                ///< factor of the widths of lines and points
    TSurfaceScope::TLook Surfaces{}; ///< how they are drawn
    TMeshLooks* Meshes = nullptr;    ///< of the layer
    TSurfaceLook Look{};             ///< of surfaces
    const TLayerFrontier* Frontier = nullptr; ///< null: nothing is to come
    const TGLMatrixd4* Exact = nullptr;       ///< from the batch to the eye; null: what is loaded
};

/// What a layer draws, in blocks: arrays of what is gathered, and what draws itself. What it draws
/// may free any of its objects.
class TLayerContent {
public:
    /// \param spots  that what was found is placed at
    TLayerContent(TGathering&& gathering, const TSpots& spots, const TBatchRules& rules);
    /// \param by  made at the same spots, or more of them
    void Replace(const TBlockEdits& edits, TLayerContent&& by);

    [[nodiscard]] std::size_t GatheredCount() const;
    [[nodiscard]] std::size_t VertexCount() const;
    [[nodiscard]] bool HasLines() const;
    /// Calls `visit` for each object that is not gathered.
    template <class Visit>
    void ForEachOther(const Visit& visit) const {
        for (const TGathering::TBlock& block : m_blocks) block.Others.ForEach(visit);
    }
    /// It has something to draw in that pass.
    [[nodiscard]] bool TakesPartIn(TZEPDrawState state) const {
        return (m_passes & PassBit(state)) != 0;
    }

    /// One pass. \param frame  that the layer's objects lie in
    void Draw(const TGLMatrixd4& frame, TZEPSceneContext& scene, TZEPDrawState state,
              TZEPDrawKind kind, const TLayerView& view) const;

private:
    using TBlock = TGathering::TBlock;
    using TPass = TSeparates::TPass;
    void DrawFarthestFirst(const TPass& pass) const;
    /// What counts from one origin.
    struct TSpot {
        TGLArrayd3 Origin;
        TPathBatch Paths{};
        TFaceBatch Faces{};
        TFaceBatch PlainFaces{}; ///< whose colours were never set
        TTextBatch Texts{};
    };

    void Take(const TGathering::TFound& found, const TGLMatrixd4& frame, const TBatchRules& rules);
    static void TakeFace(TZEPPolygon& polygon, const TGLMatrixd4& matrix, TSpot& spot,
                         const TBatchRules& rules);
    void ListPasses();
    void DrawArrays(const TSpot& spot, TZEPSceneContext& scene, TZEPDrawState state,
                    const TLayerView& view) const;
    static void DrawFaceEdges(const TSpot& spot, const TDetail& detail, const TLayerView& view);
    void DrawHiddenEdges(const TGLMatrixd4& frame, TZEPSceneContext& scene, TZEPDrawKind kind,
                         const TLayerView& view) const;
    [[nodiscard]] TPathFrontier FrontierAt(const TSpot& spot, const TLayerView& view) const;
    void DrawShapes(const TPass& pass) const;
    void DrawOthers(const TPass& pass, const TLayerView& view) const;
    void DrawEach(TSeparates TBlock::*separates, const TPass& pass) const;

    std::vector<TSpot> m_spots; ///< where something is gathered
    std::vector<TBlock> m_blocks;
    TZEPPassSet m_shapePasses = 0; ///< that something of that kind takes part in
    TZEPPassSet m_otherPasses = 0;
    TZEPPassSet m_passes = 0;
};

} // namespace ZEP
