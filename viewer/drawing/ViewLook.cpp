#include "viewer/drawing/ViewLook.h"

#include "viewer/content/Faces.h"
#include "viewer/drawing/DrawMeans.h"
#include "viewer/drawing/Ground.h"
#include "viewer/drawing/LitContent.h"
#include "viewer/drawing/ShownBatches.h"
#include "viewer/drawing/ViewLights.h"
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

constexpr TColor HeadlightAlone{0xC8C8C8};       // white stays below white, and shows its shape
constexpr TColor HeadlightAmongOthers{0x3C3C3C}; // to what they light already
constexpr TColor Sun{0x989898};
constexpr TColor AmbientUnderHeadlight{0x303030};
constexpr TColor AmbientUnderLights{0x202020};

constexpr int MostSamples = 8; // of a pixel

// Of fog, in distances from the eye to what it looks at: that is seen through about a third of it.
constexpr double FogStart = 0.65;
constexpr double FogEnd = 1.6;
constexpr double ExpDensity = 0.42;
constexpr double Exp2Density = 0.62;

constexpr TFogMode ModeOf(TViewLook::TFog fog) {
    switch (fog) {
    case TViewLook::TFog::Exp:
        return fmExp;
    case TViewLook::TFog::Exp2:
        return fmExp2;
    default:
        return fmLinear;
    }
}

TSampleWish WishOf(TViewLook::TSamples samples) {
    using enum TViewLook::TSamples;
    return {.Samples = samples == Never ? 0 : MostSamples, .InSoftware = samples == Always};
}

TZEPEdges EdgesOf(TViewLook::TFaces faces) {
    switch (faces) {
    case TViewLook::TFaces::Edged:
        return TZEPEdges::OnFaces;
    case TViewLook::TFaces::HiddenLine:
        return TZEPEdges::Alone;
    default:
        return TZEPEdges::None;
    }
}

} // namespace

void GiveLook(const TViewLook& look, bool even, TZEPShown& shown) {
    const auto faces = even ? TViewLook::TFaces::Shaded : look.Faces;
    shown.Wire = faces == TViewLook::TFaces::Wire;
    shown.Edges = EdgesOf(faces);
    shown.SortTransparent = true;
    shown.Shading = look.Flat ? TZEPShading::Flat : TZEPShading::Own;
}

TDressedView::TDressedView(TZEPPanel* panel, TSetBackground setBackground,
                           std::function<TColor()> background)
    : m_panel(panel), m_setBackground(std::move(setBackground)),
      m_background(std::move(background)), m_scene(panel->Camera()->Scene()),
      m_headlight(Add<TZEPHeadlight>(m_scene)), m_ownShadows(m_scene->Shadows()),
      m_ownAccumulation(m_scene->AccumShadows()) {
    m_headlight->SetVisible(false);
    QObject::connect(panel, &TZEPPanel::BeforDraw, &m_listener, [this] { MeasureFog(); });
}

void TDressedView::Dress(const TViewLook& look) {
    m_scene->BeginUpdate();
    DressShadows(look);
    DressGround(look.Ground && m_hasGround);
    DressLights(look);
    DressBatches(look);
    m_scene->EndUpdate();
    DressFog(look);
    TZEPOptions options = m_panel->Options();
    options.setFlag(goFlatShadeModel, look.Flat);
    options.setFlag(goCullFace, !m_openSurfaces);
    m_panel->SetOptions(options);
    m_panel->SetSampleWish(WishOf(look.Samples));
    m_panel->Invalidate();
}

std::optional<TDrawMeans> TDressedView::Means() const {
    if (!m_panel->Context()->HasContext()) return {};
    return TDrawMeans::Of(*m_panel->Context());
}

/// Outlines and what is lit alike from all sides have no shadows.
void TDressedView::DressShadows(const TViewLook& look) {
    using enum TViewLook::TShadows;
    const bool isOwn = look.Shadows == Own;
    const bool wanted = isOwn ? m_ownShadows : look.Shadows != Off;
    const bool drawn =
        look.Faces == TViewLook::TFaces::Wire || look.Faces == TViewLook::TFaces::HiddenLine;
    const bool shadows = wanted && look.Lights && !drawn;
    m_casts = shadows && !isOwn;
    m_content.reset();
    if (m_casts || look.Ground) m_content = BoundsOfLit(*m_scene);
    if (m_casts && m_content)
        m_shadows.Apply(*m_scene, *m_content);
    else
        m_shadows.Restore();
    m_scene->SetFShadows(shadows);
    m_scene->SetAccumShadows(isOwn ? m_ownAccumulation : look.Shadows == Accumulated);
    m_scene->SetReflections(look.Reflections);
}

void TDressedView::DressGround(bool ground) {
    const std::vector<TZEPObject*> content = LitContent(*m_scene);
    const bool isFile = std::ranges::any_of(
        content, [](TZEPObject* child) { return qobject_cast<TZEPBatch*>(child); });
    if (!ground || !m_content || !isFile) {
        delete m_ground;
        return;
    }
    if (!m_ground) m_ground = new TGround(m_scene);
    m_ground->LieBelow(*m_content);
}

/// \return whether it shines
bool TDressedView::DressSun(bool wanted) {
    if (!wanted) {
        delete m_sun;
        return false;
    }
    if (!m_sun) m_sun = new TSunLight(m_scene);
    m_sun->SetColor(Sun);
    m_sun->ShineOn(*m_content);
    return true;
}

void TDressedView::DressLights(const TViewLook& look) {
    bool lit = false;
    bool casts = false;
    bool faces = false;
    m_openSurfaces = false;
    ForEachLit(*m_scene, [&](TZEPObject& object) {
        faces = faces || HasFaces(object);
        m_openSurfaces = m_openSurfaces || IsOpenSurface(object);
        auto* light = qobject_cast<TZEPLight*>(&object);
        if (!light) return;
        lit = lit || Shines(*light);
        casts = casts || (Shines(*light) && light->CastsShadows());
    });
    const bool sun = DressSun(m_casts && m_content && !casts);
    const bool headlight = look.Lights && faces && (look.Headlight || !lit);
    m_headlight->SetVisible(headlight);
    m_headlight->SetColor(lit || sun ? HeadlightAmongOthers : HeadlightAlone);
    m_shines = look.Lights && (lit || headlight);
    DressAmbient(lit);
}

void TDressedView::DressAmbient(bool lit) {
    const TColor shade = lit ? AmbientUnderLights : AmbientUnderHeadlight;
    m_scene->SetSceneAmbientColor(m_shines ? shade : clWhite);
    if (m_ground) m_ground->SetEven(!m_shines);
}

/// Flat drawings keep their faces.
void TDressedView::DressBatches(const TViewLook& look) {
    ChangeShown(*m_scene, [&](const TZEPBatch& batch, TZEPShown& shown) {
        shown.EvenLight = !m_shines;
        GiveLook(look, batch.EvenLight(), shown);
    });
}

void TDressedView::DressFog(const TViewLook& look) {
    m_setBackground(look.Background);
    if (m_ground) m_ground->Suit(m_background());
    TZEPFog& fog = *m_panel->Fog();
    fog.SetColor(m_background());
    fog.SetMode(ModeOf(look.Fog));
    fog.SetEnabled(look.Fog != TViewLook::TFog::Off);
    MeasureFog();
}

/// Fog keeps to what is looked at, however near the eye comes.
void TDressedView::MeasureFog() {
    TZEPFog& fog = *m_panel->Fog();
    if (!fog.Enabled()) return;
    const double distance =
        Distance(m_panel->Camera()->GetPosition(), m_panel->Camera()->GetTarget());
    fog.SetStart(FogStart * distance);
    fog.SetEnd(FogEnd * distance);
    fog.SetDensity((fog.Mode() == fmExp ? ExpDensity : Exp2Density) / std::max(distance, 1e-9));
}

} // namespace ZEP
