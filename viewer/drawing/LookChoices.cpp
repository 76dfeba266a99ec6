#include "viewer/drawing/LookChoices.h"

#include <QSettings>

namespace ZEP {

namespace {

const QString LightsKey = QStringLiteral("view/lights");
const QString HeadlightKey = QStringLiteral("view/headlight");
const QString FogKey = QStringLiteral("view/fog");
const QString FlatKey = QStringLiteral("view/flat");
const QString FacesKey = QStringLiteral("view/faces");
const QString ShadowsKey = QStringLiteral("view/shadows");
const QString ReflectionsKey = QStringLiteral("view/reflections");
const QString GroundKey = QStringLiteral("view/ground");
const QString SamplesKey = QStringLiteral("view/samples");
const QString BackgroundKey = QStringLiteral("view/background");

/// As it was kept, or the first where that is none.
template <class T>
T Kept(const QSettings& settings, const QString& key, T last) {
    const int value = settings.value(key).toInt();
    return value > 0 && value <= static_cast<int>(last) ? static_cast<T>(value) : T{};
}

} // namespace

TViewLook TViewLook::Load() {
    const QSettings settings;
    TViewLook look;
    look.Lights = settings.value(LightsKey, look.Lights).toBool();
    look.Headlight = settings.value(HeadlightKey, look.Headlight).toBool();
    look.Fog = Kept(settings, FogKey, TFog::Exp2);
    look.Flat = settings.value(FlatKey, look.Flat).toBool();
    look.Faces = Kept(settings, FacesKey, TFaces::Wire);
    look.Shadows = Kept(settings, ShadowsKey, TShadows::Accumulated);
    look.Reflections = settings.value(ReflectionsKey, look.Reflections).toBool();
    look.Ground = settings.value(GroundKey, look.Ground).toBool();
    look.Samples = Kept(settings, SamplesKey, TSamples::Never);
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
    settings.setValue(FacesKey, static_cast<int>(Faces));
    settings.setValue(ShadowsKey, static_cast<int>(Shadows));
    settings.setValue(ReflectionsKey, Reflections);
    settings.setValue(GroundKey, Ground);
    settings.setValue(SamplesKey, static_cast<int>(Samples));
    settings.setValue(BackgroundKey, Background ? ToQColor(*Background).name() : QString());
}

} // namespace ZEP
