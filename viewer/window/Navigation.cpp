#include "viewer/window/Navigation.h"

#include "viewer/window/MiddleButton.h"
#include <zep/view/Panel.h>

#include <QActionGroup>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace ZEP {

namespace {

struct TModeEntry {
    TZEPMouseMode Mode;
    QString Text;
    Qt::Key Key;
    QString Tip;
};

const TModeEntry Modes[] = {
    {mmSelect, QStringLiteral("Select"), Qt::Key_S,
     QStringLiteral("Selects what is clicked, or what is in a rectangle; with Ctrl in addition")},
    {mmOrbit, QStringLiteral("Orbit"), Qt::Key_O,
     QStringLiteral("Turns the view about the middle of the path")},
    {mmTruck, QStringLiteral("Shift"), Qt::Key_T, QStringLiteral("Shifts what is seen")},
    {mmPan, QStringLiteral("Look around"), Qt::Key_P,
     QStringLiteral("Turns the view about the eye")},
    {mmRoll, QStringLiteral("Roll"), Qt::Key_R, QStringLiteral("Turns the picture")},
    {mmDolly, QStringLiteral("Come nearer"), Qt::Key_D,
     QStringLiteral("Comes nearer and goes away")},
    {mmFOV, QStringLiteral("Zoom"), Qt::Key_Z, QStringLiteral("Widens and narrows the lens")},
    {mmPerspective, QStringLiteral("Perspective"), Qt::Key_V,
     QStringLiteral("Comes nearer and widens the lens: what is in the middle keeps its size")},
};

bool Suits(TNavigation::TButton button, TZEPMouseMode mode) {
    return button != TNavigation::Wheel || mode >= mmRoll;
}

QKeySequence KeyFor(TNavigation::TButton button, Qt::Key key) {
    switch (button) {
    case TNavigation::Left:
        return key;
    case TNavigation::Right:
        return QKeyCombination(Qt::SHIFT, key);
    case TNavigation::Middle:
        return QKeyCombination(Qt::ALT | Qt::SHIFT, key);
    case TNavigation::Wheel:
        break;
    }
    return {};
}

void AddButton(QToolBar& bar, QMenu* menu, const QString& name) {
    auto* button = new QToolButton;
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    const auto show = [button, menu, name] {
        for (const QAction* action : menu->actions())
            if (action->isChecked()) button->setText(name + action->text());
    };
    QObject::connect(menu, &QMenu::triggered, button, show);
    for (QAction* action : menu->actions())
        QObject::connect(action, &QAction::toggled, button, show);
    show();
    bar.addWidget(button);
}

} // namespace

TNavigation::TNavigation(QMainWindow* window, TZEPPanel* panel)
    : QObject(window), m_window(window), m_panel(panel), m_middle(new TMiddleButton(panel)) {
    QMenu* menu = window->menuBar()->addMenu(QStringLiteral("&Mouse"));
    QMenu* left = MenuOf(Left, QStringLiteral("&Left button"), mmOrbit);
    QMenu* right = MenuOf(Right, QStringLiteral("&Right button"), mmTruck);
    QMenu* middle = MenuOf(Middle, QStringLiteral("&Middle button"), mmDolly);
    QMenu* wheel = MenuOf(Wheel, QStringLiteral("&Wheel"), mmDolly);
    for (QMenu* each : {left, right, middle, wheel}) menu->addMenu(each);
    QToolBar* bar = window->addToolBar(QStringLiteral("Mouse"));
    bar->setObjectName(QStringLiteral("MouseBar"));
    bar->addActions(left->actions());
    bar->addSeparator();
    AddButton(*bar, middle, QStringLiteral("Middle: "));
    AddButton(*bar, right, QStringLiteral("Right: "));
    AddButton(*bar, wheel, QStringLiteral("Wheel: "));
}

QMenu* TNavigation::MenuOf(TButton button, const QString& title, TZEPMouseMode first) {
    auto* menu = new QMenu(title, m_window);
    auto* group = new QActionGroup(menu);
    for (const TModeEntry& entry : Modes) {
        if (!Suits(button, entry.Mode)) continue;
        QAction* action = menu->addAction(entry.Text);
        action->setShortcut(KeyFor(button, entry.Key));
        action->setStatusTip(entry.Tip);
        action->setCheckable(true);
        action->setChecked(entry.Mode == first);
        group->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, button, mode = entry.Mode] { SetMode(button, mode); });
    }
    SetMode(button, first);
    return menu;
}

void TNavigation::SetMode(TButton button, TZEPMouseMode mode) {
    switch (button) {
    case Left:
        return m_panel->PanelControl()->SetMouseLeft(mode);
    case Right:
        return m_panel->PanelControl()->SetMouseRight(mode);
    case Middle:
        return m_middle->SetMode(mode);
    case Wheel:
        return m_panel->PanelControl()->SetMouseWheel(mode);
    }
}

TZEPMouseMode TNavigation::Mode(TButton button) const {
    switch (button) {
    case Left:
        return m_panel->PanelControl()->MouseLeft();
    case Right:
        return m_panel->PanelControl()->MouseRight();
    case Middle:
        return m_middle->Mode();
    case Wheel:
        break;
    }
    return m_panel->PanelControl()->MouseWheel();
}

} // namespace ZEP
