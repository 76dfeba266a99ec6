#include "viewer/drawing/ViewLook.h"

#include "scene/Scene.h"
#include "scene/Vertex3.h"
#include "view/Camera.h"
#include "view/Panel.h"
#include "viewer/content/Faces.h"
#include "viewer/content/Objects.h"
#include "viewer/drawing/EyeLight.h"
#include "viewer/drawing/FileRoot.h"

#include <QSettings>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

const QString LightsKey = QStringLiteral("view/lights");
const QString HeadlightKey = QStringLiteral("view/headlight");
const QString FogKey = QStringLiteral("view/fog");
const QString FlatKey = QStringLiteral("view/flat");
const QString WireKey = QStringLiteral("view/wire");
const QString BackgroundKey = QStringLiteral("view/background");

constexpr TColor HeadlightAlone{0xE0E0E0};
constexpr TColor HeadlightAmongOthers{0x3C3C3C}; // to what they light already
constexpr TColor AmbientUnderHeadlight{0x303030};
constexpr TColor AmbientUnderLights{0x202020};

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

void Show(TZEPObject& light) {
    light.SetVisible(true);
}

void Hide(TZEPObject& light) {
    light.SetVisible(false);
}

void Fill(TZEPObject& object) {
    object.SetDrawType(dtFill);
}

void Outline(TZEPObject& object) {
    object.SetDrawType(dtLine);
}

/// Files hold spots that were never aimed.
bool Shines(TZEPLight& light) {
    if (!light.Visible()) return false;
    const bool cone = light.Directional() && light.Cutoff() <= 90;
    return !cone || light.PositionObject() || light.TargetObject() ||
           light.Position()->Data() != light.Target()->Data();
}

/// Flat drawings have no use for lights.
template <class Visit>
void ForEachUnderLights(TZEPObject& scene, Visit&& visit) {
    for (int i = 0, count = scene.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *scene.GetItem(i);
        if (const auto* file = qobject_cast<TFileRoot*>(&child); file && file->IsEven()) continue;
        visit(child);
        ForEachObject(child, visit);
    }
}

} // namespace

TViewLook TViewLook::Load() {
    const QSettings settings;
    TViewLook look;
    look.Lights = settings.value(LightsKey, look.Lights).toBool();
    look.Headlight = settings.value(HeadlightKey, look.Headlight).toBool();
    const int fog = settings.value(FogKey).toInt();
    if (fog > 0 && fog <= static_cast<int>(TFog::Exp2)) look.Fog = static_cast<TFog>(fog);
    look.Flat = settings.value(FlatKey, look.Flat).toBool();
    look.Wire = settings.value(WireKey, look.Wire).toBool();
    const QColor background(settings.value(BackgroundKey).toString());
    if (background.isValid()) look.Background = FromQColor(background);
    return look;
}

void TViewLook::Save() const {
    QSettings settings;
    settings.setValue(LightsKey, Lights);
    settings.setValue(HeadlightKey, Headlight);
    settings.setValue(FogKey, static_cast<int>(Fog));
    settings.setValue(FlatKey, Flat);
    settings.setValue(WireKey, Wire);
    settings.setValue(BackgroundKey, Background ? ToQColor(*Background).name() : QString());
}

void TSwitchedObjects::Add(TZEPObject& object, const TSwitch& change) {
    change(object);
    m_objects.emplace_back(&object);
}

void TSwitchedObjects::Restore(const TSwitch& change) {
    for (const QPointer<TZEPObject>& object : std::exchange(m_objects, {}))
        if (object) change(*object);
}

TDressedView::TDressedView(TZEPPanel* panel, TSetBackground setBackground,
                           std::function<TColor()> background)
    : m_panel(panel), m_setBackground(std::move(setBackground)),
      m_background(std::move(background)), m_scene(panel->Camera()->Scene()),
      m_headlight(new TEyeLight(m_scene)) {
    m_headlight->SetVisible(false);
    QObject::connect(panel, &TZEPPanel::BeforDraw, &m_listener, [this] { MeasureFog(); });
}

void TDressedView::Dress(const TViewLook& look) {
    m_scene->BeginUpdate();
    DressLights(look);
    DressWire(look.Wire);
    m_scene->EndUpdate();
    DressFog(look);
    for (int i = 0, count = m_scene->GetItemsCount(); i < count; ++i)
        if (auto* file = qobject_cast<TFileRoot*>(m_scene->GetItem(i))) file->SetFlat(look.Flat);
    TZEPOptions options = m_panel->Options();
    options.setFlag(goFlatShadeModel, look.Flat);
    options.setFlag(goCullFace, !m_openSurfaces);
    m_panel->SetOptions(options);
    m_panel->Invalidate();
}

void TDressedView::DressLights(const TViewLook& look) {
    m_dark.Restore(Show);
    bool lit = false;
    bool faces = false;
    m_openSurfaces = false;
    ForEachUnderLights(*m_scene, [&](TZEPObject& object) {
        faces = faces || HasFaces(object);
        m_openSurfaces = m_openSurfaces || IsOpenSurface(object);
        auto* light = qobject_cast<TZEPLight*>(&object);
        if (!light || light == m_headlight) return;
        lit = lit || Shines(*light);
        if (!look.Lights && light->Visible()) m_dark.Add(*light, Hide);
    });
    const bool headlight = look.Lights && faces && (look.Headlight || !lit);
    m_headlight->SetVisible(headlight);
    m_headlight->SetColor(lit ? HeadlightAmongOthers : HeadlightAlone);
    DressAmbient(look.Lights && (lit || headlight), lit);
}

void TDressedView::DressAmbient(bool shines, bool lit) {
    if (shines) {
        m_even.Restore(*m_scene);
        return m_scene->SetSceneAmbientColor(lit ? AmbientUnderLights : AmbientUnderHeadlight);
    }
    m_even.Apply(*m_scene);
    m_scene->SetSceneAmbientColor(clWhite);
}

void TDressedView::DressWire(bool wire) {
    if (!wire) return m_wired.Restore(Fill);
    ForEachObject(*m_scene, [this](TZEPObject& object) {
        if (HasFaces(object) && object.DrawType() == dtFill) m_wired.Add(object, Outline);
    });
}

void TDressedView::DressFog(const TViewLook& look) {
    m_setBackground(look.Background);
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
    const TGLArrayd3 eye = m_panel->Camera()->GetPosition();
    const TGLArrayd3 target = m_panel->Camera()->GetTarget();
    const double distance = std::hypot(eye[0] - target[0], eye[1] - target[1], eye[2] - target[2]);
    fog.SetStart(FogStart * distance);
    fog.SetEnd(FogEnd * distance);
    fog.SetDensity((fog.Mode() == fmExp ? ExpDensity : Exp2Density) / std::max(distance, 1e-9));
}

} // namespace ZEP
