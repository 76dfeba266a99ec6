#pragma once

#include <zep/Export.h>
#include <zep/batch/Shown.h>
#include <zep/scene/Object.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ZEP {

class TBatchContents;
struct TBatchLook;

/// A parent that draws what is below it gathered in arrays of vertexes, so that drawings of a
/// million entities are seen at an interactive rate: one for each layer, that is each child that
/// only holds others, and one for its other children. After a change only the block of neighbours
/// that shows it is made anew. What is far from the origin is exact.
///
/// Lines, alone or in sets, arcs, circles, polylines, dashed or not, points, text and polygons are
/// gathered where a colour is all that their material tells (see GatheredClass.h for classes of
/// hosts). Everything else draws itself, in its place, and so does what casts or receives shadows
/// or is a mirror. Picking reaches each object, and those that are selected stand out from the
/// rest. Lines, points and text have their colours whatever lights there are, and polygons are
/// seen from both sides.
///
/// It is correct at each frame whatever a host adds, changes, moves, hides or frees, also where a
/// scene is updated by hand. What changes with each frame stands best in a layer of its own.
///
/// Defaults: visible; all is drawn as its objects say.
class ZEP_CORE_EXPORT TZEPBatch : public TZEPObject {
    Q_OBJECT
    Q_PROPERTY(bool EvenLight READ EvenLight WRITE SetEvenLight)
    Q_CLASSINFO("EvenLight", "false")
    Q_PROPERTY(bool RoundArcs READ RoundArcs WRITE SetRoundArcs)
    Q_CLASSINFO("RoundArcs", "false")
    Q_PROPERTY(bool SmoothShading READ SmoothShading WRITE SetSmoothShading)
    Q_CLASSINFO("SmoothShading", "false")
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_CLASSINFO("Visible", "true")
public:
    explicit TZEPBatch(TComponent* owner = nullptr);
    ~TZEPBatch() override;

    /// All is drawn in its own colour, as in a flat drawing, whatever lights the scene has, and no
    /// shadow falls on it.
    [[nodiscard]] bool EvenLight() const { return m_evenLight; }
    void SetEvenLight(bool even);
    /// Arcs and circles are drawn as round as they are, whatever their number of segments.
    [[nodiscard]] bool RoundArcs() const { return m_roundArcs; }
    void SetRoundArcs(bool round);
    /// Faces of meshes run into each other where they meet at a small angle (`SmoothNormals`), but
    /// for meshes that have a shading of their own.
    [[nodiscard]] bool SmoothShading() const { return m_smoothShading; }
    void SetSmoothShading(bool smooth);

    /// How all views show it. Asks for a repaint, unless only the share is another: views that
    /// differ have rules of their own, `TZEPPanel::SetShown`.
    /// \param shown  none: as the nearest batch above it, else as the view that draws says, else as
    ///               its objects do
    void SetShown(const std::optional<TZEPShown>& shown);
    /// As it was set, or as the batch above it says, whatever the view.
    [[nodiscard]] TZEPShown Shown() const;

    /// Of its children, as of a path that a tool runs along, those from this one on are to come:
    /// their lines and points are faint, below those of the others. Another rule of the view, of
    /// which nothing is stored; a frame that shows another frontier takes no longer than others.
    /// Children that only hold others, and what draws itself, stay as they are. \param child  none:
    /// nothing is to come
    void SetFrontier(const std::optional<int>& child);
    [[nodiscard]] const std::optional<int>& Frontier() const { return m_frontier; }

    /// Which of its children are not shown, by their number; what stands behind the last one is.
    /// Neither are they picked. Another rule of the view, of which nothing is stored and no
    /// listener is told: a host that adds, takes away or sorts children sets it anew.
    /// \param hidden  null: all children are shown that are visible
    void SetHiddenChildren(const std::shared_ptr<const std::vector<bool>>& hidden);
    [[nodiscard]] const std::shared_ptr<const std::vector<bool>>& HiddenChildren() const {
        return m_hidden;
    }

    /// Makes ready what the first frame would make otherwise: arrays, and of meshes their smooth
    /// normals and edges, where they are shown (`SetShown`). It may do so before it stands in a
    /// scene.
    /// \param progress  called now and then with the share that is done, 0 .. 1; false calls it
    /// off.
    ///                  It changes nothing below the batch
    /// \return false when it was called off: the first frame makes it then
    bool Prepare(const std::function<bool(double)>& progress = {});
    /// So much is gathered that a host may wish to draw a share of it while the view moves.
    [[nodiscard]] bool IsLarge() const;

    void Assign(const TComponent* source) override;
    void DrawChildren(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;
    /// The same but for some layers, which costs nothing: nothing is gathered anew.
    void DrawChildrenBut(const TZEPLeftOut& leftOut, TZEPSceneContext& scene, TZEPDrawState state,
                         TZEPDrawKind kind);
    /// Nothing: its contents show what is selected, of a batch that is all of it.
    void DrawSelection() override {}

private:
    [[nodiscard]] TZEPObjectNotify Listener();
    [[nodiscard]] TBatchLook Look(const TZEPShown* ofView) const;
    [[nodiscard]] const TZEPShown* Rules() const;
    void DrawOneByOne(const TZEPLeftOut& leftOut, TZEPSceneContext& scene, TZEPDrawState state,
                      TZEPDrawKind kind);

    std::shared_ptr<TBatchContents> m_contents; ///< may outlive the batch while it is drawn
    std::optional<TZEPShown> m_shown;
    std::optional<int> m_frontier;
    std::shared_ptr<const std::vector<bool>> m_hidden;
    bool m_evenLight = false;
    bool m_roundArcs = false;
    bool m_smoothShading = false;
};

} // namespace ZEP
