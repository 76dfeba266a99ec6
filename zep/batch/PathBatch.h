#pragma once

#include <zep/appearance/effects/LineShape.h>
#include <zep/batch/ArcArray.h>
#include <zep/batch/Steps.h>
#include <zep/framework/Color.h>

#include <functional>
#include <memory>
#include <optional>

namespace ZEP {

class TDashTexture;
class TZEPDashedPolyline;
class TZEPLineSet;
class TZEPPolyline;

/// How a batch takes over what objects draw.
struct TBatchRules {
    /// That arcs may stray from their circle in a view of the whole, in the unit of the batch.
    double Error = 1e-5;
    /// Arcs are as round as they are, else they have their own number of segments.
    bool RoundArcs = false;
    /// The colour that is shown for the one of an object.
    std::function<TColor(TColor)> Shown = [](TColor color) { return color; };
    /// Told of each object that is taken over.
    std::shared_ptr<TSteps> Steps = std::make_shared<TSteps>();
};

class TPathBatch;

/// Where what a tool has run through ends; what stands behind is to come.
struct TPathFrontier {
    std::size_t Block = 0;            ///< those before it are done
    const TPathBatch* Done = nullptr; ///< what is done of that block; null: all is done
};

/// How marks stand out from what they lie on.
struct TMarkLook {
    std::array<GLubyte, 3> Color;
    std::array<GLubyte, 3> Rim; ///< sets it off from a path of any colour
    float Width;                ///< pixels
};
/// Of what is selected.
inline constexpr TMarkLook SelectedLook{{255, 230, 0}, {30, 20, 0}, 5};

/// Lines, arcs, circles, polylines and points as arrays of vertexes: a million separate objects
/// cannot be drawn at an interactive rate. What has the same width and style is drawn together.
class TPathBatch {
public:
    /// \param origin  is subtracted from all places, which keeps them exact
    void Start(const TGLArrayd3& origin, const TBatchRules& rules);
    /// As in `TVertexArray`.
    void StartBlock(std::size_t block) { m_block = block; }
    /// Nothing of what it does not take.
    /// \param matrix  from the frame of the object to that of the batch
    void Add(TZEPObject& object, const TGLMatrixd4& matrix);
    /// \return false for what is of another kind
    [[nodiscard]] static bool Takes(const TZEPObject& object);
    /// An outline, of one pixel.
    void AddLoop(const std::vector<TGLArrayd3>& corners, TColor color);
    /// The edges of a box of the object's frame.
    void AddBox(const TGLArrayd3& min, const TGLArrayd3& max, const TGLMatrixd4& matrix);
    /// What marks any object: a line as it is, of anything else the edges of its box.
    void AddMark(TZEPObject& object, const TGLMatrixd4& matrix);
    void Close();
    void Replace(const TBlockEdits& edits, const TPathBatch& by);
    [[nodiscard]] bool IsEmpty() const { return VertexCount() == 0; }
    [[nodiscard]] std::size_t VertexCount() const;

    /// After what is opaque: smooth lines blend with it.
    /// \param fine    smooth, and with the styles of the lines
    /// \param widths  factor of all widths
    /// \param frontier  what is to come is faint, below what is done
    void Draw(const TDetail& detail, bool fine, float widths, const TPathFrontier& frontier) const;
    /// All of it, wide and in one colour, over whatever is there; thinner where it is much.
    void DrawMarks(const TDetail& detail, float widths, const TMarkLook& look = SelectedLook) const;

private:
    /// Where a kind comes first in a block.
    struct TFirst {
        std::size_t Block, Place;
    };
    /// How many vertexes that are not of arcs, and arcs.
    struct TCount {
        std::size_t Vertexes = 0;
        TArcCount Arcs{};
    };
    /// What has the same width and style, at the place where it comes first.
    struct TKind {
        TPenStyle Style;
        float Width;
        TVertexArray Vertexes{}; ///< points, or two for each line
        TArcArray Arcs{};
        std::shared_ptr<const TDashTexture> Dashes{}; ///< null: solid, or as the style says
        std::vector<float> Along{};                   ///< them, of each vertex, if there are any
        std::vector<TFirst> Firsts{};                 ///< in each block that has some

        [[nodiscard]] TKind Empty() const {
            return {.Style = Style, .Width = Width, .Dashes = Dashes};
        }
        [[nodiscard]] bool IsLike(const TKind& other) const {
            return Style == other.Style && Width == other.Width && Dashes == other.Dashes;
        }
        [[nodiscard]] TCount Count() const { return {Vertexes.Count(), Arcs.Count()}; }
    };
    using TKinds = std::vector<TKind>;

    [[nodiscard]] TKind& KindOf(TKinds& kinds, const TKind& like);
    static void ReplaceKinds(const TBlockEdits& edits, TKinds& kinds, const TKinds& by);
    static void SortKinds(TKinds& kinds);
    void AddArc(double start, double turn, int segments);
    void AddPolyline(TZEPPolyline& polyline);
    void AddDashed(TZEPDashedPolyline& polyline);
    void AddLineSet(TZEPLineSet& lines);
    void StartLines(const TZEPLineShape& shape, TColor color);
    [[nodiscard]] TGLArrayd3 At(const TGLArrayd3& point) const;
    [[nodiscard]] TVertexColor ShownColor(TColor color);
    void MoveTo(const TGLArrayd3& point) { m_last = At(point); }
    void LineTo(const TGLArrayd3& point);
    [[nodiscard]] static TCount DoneOf(const TKind& kind, const TPathFrontier& frontier,
                                       const TKinds TPathBatch::*kinds);
    /// Without their dashes.
    static void DrawSolid(const TKind& lines, const TDetail& detail, bool colored,
                          const TCount& from, const TCount& to);
    static void DrawLines(const TKind& lines, const TDetail& detail, const TCount& from,
                          const TCount& to);
    void DrawToCome(const TDetail& detail, float widths, const TPathFrontier& frontier) const;
    void DrawMark(const TDetail& detail, float width, bool joints) const;

    TKinds m_lines;
    TKinds m_points;
    TBatchRules m_rules;
    TGLArrayd3 m_origin{};
    std::size_t m_block = 0;
    std::size_t m_place = 0; ///< of the next kind
    const TGLMatrixd4* m_matrix = nullptr;
    TKind* m_present = nullptr; ///< that lines are added to
    TVertexColor m_color{};
    TGLArrayd3 m_last{};
    std::optional<TColor> m_given; ///< the one whose shown colour is at hand
    TVertexColor m_shown{};
};

} // namespace ZEP
