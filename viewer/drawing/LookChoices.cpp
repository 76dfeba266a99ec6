#include "viewer/drawing/LookChoices.h"

#include <QSettings>

namespace ZEP {

namespace {

const QString LightsKey = QStringLiteral("view/lights");
const QString HeadlightKey = QStringLiteral("view/headlight");
const QString FogKey = QStringLiteral("view/fog");
const QString FlatKey = QStringLiteral("view/flat");
const QString WireKey = QStringLiteral("view/wire");
const QString ShadowsKey = QStringLiteral("view/shadows");
const QString ReflectionsKey = QStringLiteral("view/reflections");
const QString GroundKey = QStringLiteral("view/ground");
const QString BackgroundKey = QStringLiteral("view/background");

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
    const int shadows = settings.value(ShadowsKey).toInt();
    if (shadows > 0 && shadows <= static_cast<int>(TShadows::Accumulated))
        look.Shadows = static_cast<TShadows>(shadows);
    look.Reflections = settings.value(ReflectionsKey, look.Reflections).toBool();
    look.Ground = settings.value(GroundKey, look.Ground).toBool();
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
    settings.setValue(ShadowsKey, static_cast<int>(Shadows));
    settings.setValue(ReflectionsKey, Reflections);
    settings.setValue(GroundKey, Ground);
    settings.setValue(BackgroundKey, Background ? ToQColor(*Background).name() : QString());
}

} // namespace ZEP
