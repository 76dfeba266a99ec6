#pragma once

#include <zep/framework/Color.h>

#include <optional>
#include <unordered_set>

namespace ZEP {

class TZEPObject;

/// Children of a batch that hold others, which a part of a view does not show.
using TZEPLeftOut = std::unordered_set<const TZEPObject*>;

/// How faces of meshes are shaded.
enum class TZEPShading {
    Own,   ///< as the batch and its objects say
    Flat,  ///< each face shows, whatever they say
    Smooth ///< faces run into each other where they meet at a small angle
};

/// Which edges of surfaces are drawn: where a mesh or a solid (`TZEPSolid`) ends or its faces meet
/// at 30 degrees and more (`FeatureEdges`), its silhouette, and the outlines of polygons. Solids of
/// classes that are registered have them, and their published numbers are what tells their form.
enum class TZEPEdges {
    None,
    OnFaces, ///< dark, over the faces
    Alone    ///< faces only hide what is behind them: a line drawing without hidden lines
};

/// How a view shows a batch: rules that hold while it draws. Nothing of them is written into
/// objects or materials, and nothing is stored; see `TZEPBatch::SetShown` and
/// `TZEPPanel::SetShown`. Even light and outlines hold for batches below it in any case.
struct TZEPShown {
    /// Colours of lines, points, text and plain faces that could not be told from it give way to
    /// others (`Readable`); none: all are as they are.
    std::optional<TColor> Background{};
    /// Device pixels for each pixel: widths of lines and points are given in pixels. Above 0.
    double Widths = 1;
    /// Of lines, points, text and plain faces, above 0; from 1 on all is drawn. With less, evenly
    /// spread parts still show the form: for views that move.
    double Share = 1;
    TZEPShading Shading = TZEPShading::Own;
    /// All is drawn in its own colour whatever lights there are, as with `TZEPBatch::EvenLight`.
    bool EvenLight = false;
    /// Surfaces are drawn as their outlines.
    bool Wire = false;
    /// Not where surfaces are drawn as their outlines.
    TZEPEdges Edges = TZEPEdges::None;

    /// Transparent objects, and faces of meshes that are shaded smooth, are drawn from the farthest
    /// on, so that each shows what is behind it; else in the order of the tree.
    bool SortTransparent = false;

    bool operator==(const TZEPShown&) const = default;
};

} // namespace ZEP
