#include "viewer/window/ViewOptions.h"

#include "viewer/drawing/Look.h"

#include <QActionGroup>
#include <QColorDialog>
#include <QMenu>

#include <utility>

namespace ZEP {

namespace {

struct TFogEntry {
    QString Text;
    TViewLook::TFog Fog;
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
    AddFog(menu->addMenu(QStringLiteral("F&og")));
    AddFlag(menu, QStringLiteral("Flat &shading"), &TViewLook::Flat,
            QStringLiteral("One colour for each face; else faces run into each other"));
    AddFlag(menu, QStringLiteral("&Wire frame"), &TViewLook::Wire,
            QStringLiteral("Outlines of faces in place of faces"));
    AddBackground(menu);
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
    for (const TFogEntry& entry : entries) {
        QAction* action = group->addAction(menu->addAction(entry.Text));
        action->setCheckable(true);
        action->setChecked(m_look.Fog == entry.Fog);
        action->setStatusTip(entry.Tip);
        connect(action, &QAction::triggered, this, [this, fog = entry.Fog] {
            TViewLook look = m_look;
            look.Fog = fog;
            SetLook(look);
        });
    }
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
    const QColor color = QColorDialog::getColor(ToQColor(m_look.Background.value_or(Look::Sky)),
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

void TViewOptions::SetLook(const TViewLook& look) {
    m_look = look;
    m_look.Save();
    Apply();
}

} // namespace ZEP
