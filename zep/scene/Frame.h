#pragma once

#include <zep/Export.h>
#include <zep/framework/Component.h>
#include <zep/framework/Watch.h>
#include <zep/scene/DrawRun.h>
#include <zep/scene/Kept.h>

#include <QPointer>

#include <vector>

namespace ZEP {

class TZEPDrawnPlace;
class TZEPObject;
class TZEPSceneContext;
class TZEPViewFrame;
struct TZEPCut;
struct TZEPRegion;
struct TZEPShown;

/// What drawing carries from one object to the next. It belongs to the scene that draws, where its
/// objects find it (`TZEPObject::DrawFrame`); whoever changes a field puts it back.
struct ZEP_CORE_EXPORT TZEPFrame {
    TZEPDrawRun Run;
    /// What objects keep from frame to frame.
    TZEPKeptList Kept;
    /// Where the walk stands; null while nothing bounds what is seen.
    TZEPViewFrame* View = nullptr;
    /// How the view that draws shows batches without rules of their own; null: as they say.
    const TZEPShown* Shown = nullptr;
    /// Factor of the widths of lines and points, beyond what batches and objects say: for pictures
    /// whose pixels are smaller than those of the view.
    double Widths = 1;
    /// What the view that draws cuts away; null: nothing.
    const TZEPCut* Cut = nullptr;
    /// The object that the view that draws shows in place of the whole scene; null: the whole.
    QPointer<TComponent> Sheet;
    /// The pixels of the viewport that a `TZEPViewport` shows something in now, as which others are
    /// not drawn in turn; null: none does.
    const TZEPRegion* Window = nullptr;
    /// Where a proxy shows something now; null: all is drawn where it stands.
    const TZEPDrawnPlace* Place = nullptr;
    /// What proxies show now, each target within the one before, and how often one within itself.
    std::vector<const TZEPObject*> ProxyTargets;
    int ProxyRepeats = 0;
    /// OpenGL selects or feeds back. Over a display list of several kinds of primitives Mesa 22.3
    /// then loses some or ends in a fault: what keeps such lists draws without them.
    bool IsNotRendering = false;
    /// Solids are being carved, as which others are not carved in turn.
    bool Carves = false;
    /// Where shadows are accumulated: images that are still to be added up, the present one
    /// included. What is drawn now is in all of them.
    int ShadowImagesLeft = 1;
    /// What lies in shadow is drawn, black.
    bool DrawsShadowsBlack = false;
    /// The scene was freed while it draws: what is on the way ends. The frame itself stays until
    /// then.
    bool SceneIsGone = false;
    /// Objects have left the scene since this was set to false.
    bool TreeChanged = false;
    /// Transforms on OpenGL's stack, and those that did not fit there.
    int Transforms = 0;

    /// Of objects that stand in no scene: each of those draws alone.
    [[nodiscard]] static TZEPFrame& OfNoScene();
};

/// While it lives, objects of another scene, or of none, are drawn in the frame of the scene that
/// shows them.
class ZEP_CORE_EXPORT TZEPFrameLoan {
public:
    /// \param of  the scene that the objects stand in; may be null, or the one that draws
    TZEPFrameLoan(TZEPSceneContext* of, TZEPSceneContext& draws);
    ~TZEPFrameLoan();
    TZEPFrameLoan(const TZEPFrameLoan&) = delete;
    TZEPFrameLoan& operator=(const TZEPFrameLoan&) = delete;

private:
    TZEPWatch m_exists;
    TZEPFrame** m_lent;
    TZEPFrame* m_own;
};

} // namespace ZEP
