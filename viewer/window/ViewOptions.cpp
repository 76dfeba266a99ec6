#include "viewer/window/ViewOptions.h"

#include <zep/view/Backdrop.h>

#include <QActionGroup>
#include <QColorDialog>
#include <QMenu>
#include <QScopeGuard>

#include <utility>

namespace ZEP {

namespace {

struct TFogEntry {
    QString Text;
    TViewLook::TFog Fog;
    QString Tip;
};

struct TShadowsEntry {
    QString Text;
    TViewLook::TShadows Shadows;
    QString Tip;
};

} // namespace

TViewOptions::TViewOptions(QMenu* menu, QWidget* window) : QObject(window), m_window(window) {
    menu->addSeparator();
    QAction* lights = AddFlag(
        menu, QStringLiteral("&Lights"), &TViewLook::Lights,
        QStringLiteral("The lights of the scene shine; without them everything is lit alike "
                       "from all sides"));
    QAction* headlight =
        AddFlag(menu, QStringLiteral("&Headlight"), &TViewLook::Headlight,
                QStringLiteral("A light that goes with the eye; solids without a light have it "
                               "always"));
    headlight->setEnabled(m_look.Lights);
    connect(lights, &QAction::toggled, headlight, &QAction::setEnabled);
    AddShadows(menu->addMenu(QStringLiteral("Sha&dows")));
    QAction* mirrors = AddFlag(menu, QStringLiteral("Refle&ctions"), &TViewLook::Reflections,
                               QStringLiteral("Mirrors show what stands before them"));
    m_needs.push_back({mirrors, [](const TDrawMeans& means) { return means.WhyNoMirrors(); }});
    AddFlag(menu, QStringLiteral("Gro&und"), &TViewLook::Ground,
            QStringLiteral("A floor below models and scenes, which mirrors them and catches their "
                           "shadows"));
    AddFog(menu->addMenu(QStringLiteral("F&og")));
    AddFlag(menu, QStringLiteral("Flat &shading"), &TViewLook::Flat,
            QStringLiteral("One colour for each face; else faces run into each other"));
    AddFaces(menu->addMenu(QStringLiteral("Surfa&ces")));
    AddSamples(menu->addMenu(QStringLiteral("&Multisampling")));
    AddBackground(menu);
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, &TViewOptions::ShowMeans);
}

QAction* TViewOptions::AddFlag(QMenu* menu, const QString& text, bool TViewLook::*flag,
                               const QString& tip) {
    QAction* action = menu->addAction(text);
    action->setCheckable(true);
    action->setChecked(m_look.*flag);
    action->setStatusTip(tip);
    connect(action, &QAction::toggled, this, [this, flag](bool on) {
        TViewLook look = m_look;
        look.*flag = on;
        SetLook(look);
    });
    return action;
}

void TViewOptions::AddChoice(QActionGroup* group, QAction* action, bool isChosen,
                             const QString& tip, const std::function<void(TViewLook&)>& choose) {
    group->addAction(action);
    action->setCheckable(true);
    action->setChecked(isChosen);
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, [this, choose] {
        TViewLook look = m_look;
        choose(look);
        SetLook(look);
    });
}

void TViewOptions::AddShadows(QMenu* menu) {
    using enum TViewLook::TShadows;
    const TShadowsEntry entries[] = {
        {QStringLiteral("As the &scene has them"), Own,
         QStringLiteral("Scenes that were made with shadows show them; nothing else does")},
        {QStringLiteral("&Off"), Off, QStringLiteral("No shadows anywhere")},
        {QStringLiteral("S&ubtracted"), Subtracted,
         QStringLiteral("All surfaces cast shadows: the light that does not reach a place is "
                        "taken off")},
        {QStringLiteral("&Accumulated"), Accumulated,
         QStringLiteral("All surfaces cast shadows: the images under each light are added up; "
                        "slower")}};
    auto* group = new QActionGroup(menu);
    for (const TShadowsEntry& entry : entries) {
        QAction* action = menu->addAction(entry.Text);
        const auto choose = [shadows = entry.Shadows](TViewLook& look) { look.Shadows = shadows; };
        AddChoice(group, action, m_look.Shadows == entry.Shadows, entry.Tip, choose);
        m_needs.push_back({action, [shadows = entry.Shadows](const TDrawMeans& means) {
                               return means.WhyNo(shadows);
                           }});
    }
    menu->setToolTipsVisible(true);
}

void TViewOptions::AddFaces(QMenu* menu) {
    using enum TViewLook::TFaces;
    struct TEntry {
        QString Text;
        TViewLook::TFaces Faces;
        QString Tip;
    };
    const TEntry entries[] = {
        {QStringLiteral("&Shaded"), Shaded, QStringLiteral("Faces in the light")},
        {QStringLiteral("Shaded with &edges"), Edged,
         QStringLiteral("Faces in the light, and the sharp edges of models over them")},
        {QStringLiteral("&Hidden line"), HiddenLine,
         QStringLiteral("Sharp edges alone; those behind a face are hidden")},
        {QStringLiteral("&Wire frame"), Wire,
         QStringLiteral("Outlines of faces in place of faces")}};
    auto* group = new QActionGroup(menu);
    for (const TEntry& entry : entries)
        AddChoice(group, menu->addAction(entry.Text), m_look.Faces == entry.Faces, entry.Tip,
                  [faces = entry.Faces](TViewLook& look) { look.Faces = faces; });
}

void TViewOptions::AddSamples(QMenu* menu) {
    using enum TViewLook::TSamples;
    struct TEntry {
        QString Text;
        TViewLook::TSamples Samples;
        QString Tip;
    };
    const TEntry entries[] = {
        {QStringLiteral("By &hardware"), ByHardware,
         QStringLiteral("What moves is smooth, too, where a graphics card draws")},
        {QStringLiteral("&Always"), Always,
         QStringLiteral("What moves is smooth, too, also where that takes its time")},
        {QStringLiteral("&Never"), Never, QStringLiteral("Only what rests is smooth")}};
    auto* group = new QActionGroup(menu);
    for (const TEntry& entry : entries)
        AddChoice(group, menu->addAction(entry.Text), m_look.Samples == entry.Samples, entry.Tip,
                  [samples = entry.Samples](TViewLook& look) { look.Samples = samples; });
}

/// A context is made with its window, long after the menu.
void TViewOptions::ShowMeans() const {
    for (const auto& view : m_views) {
        const std::optional<TDrawMeans> means = view->Means();
        if (!means) continue;
        for (const TNeed& need : m_needs) {
            const QString reason = need.WhyNo(*means);
            need.Action->setEnabled(reason.isEmpty());
            need.Action->setToolTip(reason.isEmpty() ? need.Action->statusTip() : reason);
        }
        return;
    }
}

void TViewOptions::AddFog(QMenu* menu) {
    const TFogEntry entries[] = {
        {QStringLiteral("&Off"), TViewLook::TFog::Off, QStringLiteral("Clear air")},
        {QStringLiteral("&Linear"), TViewLook::TFog::Linear,
         QStringLiteral("From clear to hidden in even steps")},
        {QStringLiteral("&Exponential"), TViewLook::TFog::Exp,
         QStringLiteral("Each step takes the same part of what is left")},
        {QStringLiteral("E&xponential, squared"), TViewLook::TFog::Exp2,
         QStringLiteral("Clear near the eye, dense behind")}};
    auto* group = new QActionGroup(menu);
    for (const TFogEntry& entry : entries)
        AddChoice(group, menu->addAction(entry.Text), m_look.Fog == entry.Fog, entry.Tip,
                  [fog = entry.Fog](TViewLook& look) { look.Fog = fog; });
}

void TViewOptions::AddBackground(QMenu* menu) {
    QMenu* background = menu->addMenu(QStringLiteral("&Background"));
    background->addAction(QStringLiteral("&Colour..."), this, &TViewOptions::AskForBackground)
        ->setStatusTip(QStringLiteral("Choose a colour to stand behind everything"));
    const auto reset = [this] {
        TViewLook look = m_look;
        look.Background.reset();
        SetLook(look);
    };
    background->addAction(QStringLiteral("&Standard"), this, reset)
        ->setStatusTip(QStringLiteral("The dark one that zepview begins with"));
}

void TViewOptions::AskForBackground() {
    const QColor color =
        QColorDialog::getColor(ToQColor(m_look.Background.value_or(TZEPBackdrop::TColors().Top)),
                               m_window, QStringLiteral("Background"));
    if (!color.isValid()) return;
    TViewLook look = m_look;
    look.Background = FromQColor(color);
    SetLook(look);
}

void TViewOptions::AddView(std::unique_ptr<TDressedView> view) {
    view->Dress(m_look);
    m_views.push_back(std::move(view));
}

void TViewOptions::Apply() {
    for (const auto& view : m_views) view->Dress(m_look);
}

void TViewOptions::Undressed(const std::function<void()>& call) {
    TViewLook stored = m_look;
    stored.Shadows = TViewLook::TShadows::Own;
    const auto dress = qScopeGuard([this] { Apply(); });
    for (const auto& view : m_views) view->Dress(stored);
    call();
}

void TViewOptions::SetLook(const TViewLook& look) {
    m_look = look;
    m_look.Save();
    Apply();
}

} // namespace ZEP
