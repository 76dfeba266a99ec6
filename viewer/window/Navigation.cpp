#include "viewer/window/Navigation.h"

#include "viewer/window/StatusTip.h"
#include <zep/view/Cursors.h>
#include <zep/view/Panel.h>

#include <QActionGroup>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QSettings>
#include <QToolBar>
#include <QToolButton>

#include <utility>

namespace ZEP {

namespace {

constexpr int ZoomWindowCursor = 102;

const QString PresetKey = QStringLiteral("mouse/preset");
const QString WheelKey = QStringLiteral("mouse/wheelReversed");

struct TModeEntry {
    TZEPMouseMode Mode;
    QString Text;
    Qt::Key Key;
    QString Tip;
};

const TModeEntry Modes[] = {
    {mmSelect, QStringLiteral("Select"), Qt::Key_S,
     QStringLiteral(
         "Selects what is clicked; a rectangle to the right what lies inside, one to the "
         "left what it touches; with Ctrl in addition")},
    {mmOrbit, QStringLiteral("Orbit"), Qt::Key_O,
     QStringLiteral("Turns the view about what is under the pointer; pans in a locked 2D view")},
    {mmTruck, QStringLiteral("Pan"), Qt::Key_P, QStringLiteral("Shifts what is seen")},
    {mmPan, QStringLiteral("Look"), Qt::Key_L,
     QStringLiteral("Looks around: turns the view about the eye")},
    {mmRoll, QStringLiteral("Roll"), Qt::Key_R, QStringLiteral("Turns the picture")},
    {mmDolly, QStringLiteral("Dolly"), Qt::Key_D, QStringLiteral("Comes nearer and goes away")},
    {mmFOV, QStringLiteral("Zoom"), Qt::Key_E, QStringLiteral("Widens and narrows the lens")},
    {mmPerspective, QStringLiteral("Perspective"), Qt::Key_V,
     QStringLiteral("Comes nearer and widens the lens: what is in the middle keeps its size")},
};

struct TPresetEntry {
    TZEPMousePreset Preset;
    const char* Name; ///< in the settings
    QString Text;
    QString Tip;
};

const TPresetEntry Presets[] = {
    {TZEPMousePreset::Cad, "cad", QStringLiteral("&CAD"),
     QStringLiteral("Left orbits, middle pans, with Shift orbits; flat files are locked")},
    {TZEPMousePreset::Modeller, "modeller", QStringLiteral("Mo&deller"),
     QStringLiteral("Left selects, middle orbits, with Shift pans, with Ctrl dollies")},
    {TZEPMousePreset::Plain, "before", QStringLiteral("As &before"),
     QStringLiteral("Left orbits about the middle, right pans, middle and wheel dolly; the wheel "
                    "comes nearer towards you")},
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

/// Shows what is chosen in the menu.
QToolButton* ButtonOf(QMenu* menu, const QString& name) {
    auto* button = new QToolButton;
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    const auto show = [button, menu, name] {
        for (const QAction* action : menu->actions())
            if (action->isChecked())
                button->setText(name + action->text().remove(QLatin1Char('&')));
    };
    for (QAction* action : menu->actions())
        QObject::connect(action, &QAction::toggled, button, show);
    show();
    return button;
}

} // namespace

TNavigation::TNavigation(QMainWindow* window, TZEPPanel* panel)
    : QObject(window), m_window(window), m_panel(panel) {
    QMenu* menu = window->menuBar()->addMenu(QStringLiteral("&Mouse"));
    QMenu* presets = PresetMenu();
    menu->addActions(presets->actions());
    menu->addSeparator();
    QMenu* left = MenuOf(Left, QStringLiteral("&Left button"));
    for (QMenu* each : {left, MenuOf(Right, QStringLiteral("&Right button")),
                        MenuOf(Middle, QStringLiteral("&Middle button")),
                        MenuOf(Wheel, QStringLiteral("&Wheel"))})
        menu->addMenu(each);
    menu->addSeparator();
    AddOptions(menu);
    QToolBar* bar = window->addToolBar(QStringLiteral("Mouse"));
    bar->setObjectName(QStringLiteral("MouseBar"));
    bar->addActions(left->actions());
    bar->addAction(m_zoomWindow);
    bar->addSeparator();
    bar->addWidget(ButtonOf(presets, QStringLiteral("Mouse: ")));
    panel->installEventFilter(this);
    connect(panel, &TZEPPanel::AfterMouseUp, this, [this] {
        if (!m_panel->PanelControl()->NextDrag()) EndZoomWindow();
    });
    const QString kept = QSettings().value(PresetKey).toString();
    for (const TPresetEntry& entry : Presets)
        if (kept == QLatin1String(entry.Name)) m_preset = entry.Preset;
    SetPreset(m_preset);
}

// --- menus -------------------------------------------------------------------------------------

QMenu* TNavigation::PresetMenu() {
    auto* menu = new QMenu(m_window);
    auto* group = new QActionGroup(menu);
    for (const TPresetEntry& entry : Presets) {
        QAction* action = menu->addAction(entry.Text);
        Explained(action, entry.Tip);
        action->setCheckable(true);
        group->addAction(action);
        m_presets[entry.Preset] = action;
        connect(action, &QAction::triggered, this,
                [this, preset = entry.Preset] { SetPreset(preset); });
    }
    return menu;
}

QMenu* TNavigation::MenuOf(TButton button, const QString& title) {
    auto* menu = new QMenu(title, m_window);
    auto* group = new QActionGroup(menu);
    for (const TModeEntry& entry : Modes) {
        if (!Suits(button, entry.Mode)) continue;
        QAction* action = menu->addAction(entry.Text);
        action->setShortcut(KeyFor(button, entry.Key));
        Explained(action, entry.Tip);
        action->setCheckable(true);
        group->addAction(action);
        m_modes[button][entry.Mode] = action;
        connect(action, &QAction::triggered, this,
                [this, button, mode = entry.Mode] { SetMode(button, mode); });
    }
    return menu;
}

void TNavigation::AddOptions(QMenu* menu) {
    m_zoomWindow = menu->addAction(QStringLiteral("&Zoom window"), QKeySequence(Qt::Key_Z), this,
                                   &TNavigation::StartZoomWindow);
    Explained(m_zoomWindow, QStringLiteral("Draw a rectangle that is to fill the view"));
    QAction* lock = menu->addAction(QStringLiteral("Loc&k 2D view"));
    lock->setCheckable(true);
    Explained(lock, QStringLiteral("Drags pan and do not turn the view; Shift orbits out of it"));
    connect(lock, &QAction::triggered, this,
            [this](bool on) { m_panel->PanelControl()->SetLock2D(on); });
    connect(menu, &QMenu::aboutToShow, lock,
            [this, lock] { lock->setChecked(m_panel->PanelControl()->Lock2D()); });
    QAction* reversed = menu->addAction(QStringLiteral("Re&verse the wheel"));
    reversed->setCheckable(true);
    reversed->setChecked(QSettings().value(WheelKey).toBool());
    Explained(reversed, QStringLiteral("The wheel works the other way round"));
    m_panel->PanelControl()->SetWheelReversed(reversed->isChecked());
    connect(reversed, &QAction::toggled, this, [this](bool on) {
        m_panel->PanelControl()->SetWheelReversed(on);
        QSettings().setValue(WheelKey, on);
    });
}

// --- what the mouse does -----------------------------------------------------------------------

void TNavigation::SetPreset(TZEPMousePreset preset) {
    m_preset = preset;
    EndZoomWindow();
    SetMousePreset(*m_panel->PanelControl(), preset);
    SetFlatView(m_flat);
    m_presets.at(preset)->setChecked(true);
    for (const TPresetEntry& entry : Presets)
        if (entry.Preset == preset) QSettings().setValue(PresetKey, QLatin1String(entry.Name));
    ShowModes();
}

void TNavigation::ShowModes() {
    for (const auto& [button, actions] : m_modes)
        if (const auto found = actions.find(Mode(button)); found != actions.end())
            found->second->setChecked(true);
}

void TNavigation::SetFlatView(bool flat) {
    m_flat = flat;
    m_panel->PanelControl()->SetLock2D(flat && m_preset != TZEPMousePreset::Plain);
}

void TNavigation::SetMode(TButton button, TZEPMouseMode mode) {
    TZEPPanelControl& control = *m_panel->PanelControl();
    switch (button) {
    case Left:
        return control.SetMouseLeft(mode);
    case Right:
        return control.SetMouseRight(mode);
    case Middle:
        return control.SetMouseMiddle(mode);
    case Wheel:
        return control.SetMouseWheel(mode);
    }
}

TZEPMouseMode TNavigation::Mode(TButton button) const {
    const TZEPPanelControl& control = *m_panel->PanelControl();
    switch (button) {
    case Left:
        return control.MouseLeft();
    case Right:
        return control.MouseRight();
    case Middle:
        return control.MouseMiddle();
    case Wheel:
        break;
    }
    return control.MouseWheel();
}

// --- zoom window -------------------------------------------------------------------------------

void TNavigation::StartZoomWindow() {
    m_panel->PanelControl()->SetNextDrag(mmZoomWindow);
    m_panel->setCursor(NavigationCursor(ZoomWindowCursor));
    m_zooms = true;
}

void TNavigation::EndZoomWindow() {
    m_panel->PanelControl()->SetNextDrag({});
    if (std::exchange(m_zooms, false)) m_panel->unsetCursor();
}

/// Escape calls off what waits or is drawn, and only then reaches the window.
bool TNavigation::eventFilter(QObject* watched, QEvent* event) {
    TZEPPanelControl& control = *m_panel->PanelControl();
    if (watched == m_panel && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
        (control.NextDrag() || control.MouseDowned())) {
        EndZoomWindow();
        control.Cancel(*m_panel);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace ZEP
