#include "viewer/window/EditMenu.h"

#include "viewer/window/ContentsModel.h"
#include "viewer/window/Selection.h"
#include "viewer/window/ShownHistory.h"
#include "viewer/window/StatusTip.h"
#include <zep/scene/Object.h>
#include <zep/view/Panel.h>

#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace ZEP {

namespace {

constexpr int Still = 4; // pixels that a click may move

} // namespace

TEditMenu::TEditMenu(QMainWindow* window, TZEPPanel* panel, TSelection* selection,
                     TContentsModel* contents)
    : QObject(window), m_panel(panel), m_selection(selection), m_contents(contents),
      m_context(new QMenu(window)) {
    QMenu* menu = window->menuBar()->addMenu(QStringLiteral("&Edit"));
    QUndoStack& stack = contents->History().Stack();
    QAction* undo = stack.createUndoAction(this, QStringLiteral("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = stack.createRedoAction(this, QStringLiteral("&Redo"));
    redo->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    menu->addActions({undo, redo});
    menu->addSeparator();
    AddActions(menu);
    m_context->addActions(menu->actions().mid(3));
    m_context->addSeparator();
    m_context->addAction(QStringLiteral("Fit &all"), this, &TEditMenu::FitAllWanted);
    m_context->addAction(undo);
    connect(selection, &TSelection::Changed, this, &TEditMenu::Follow);
    Follow();
    window->installEventFilter(this);
    connect(panel, &TZEPPanel::BeforeMouseDown, this,
            [this](TZEPPanel*, TMouseButton, TShiftState, int x, int y) {
                m_press = {x, y};
            });
    connect(panel, &TZEPPanel::AfterMouseUp, this,
            [this](TZEPPanel*, TMouseButton button, TShiftState, int x, int y) {
                const QPoint place(x, y);
                if (button == mbRight && (place - m_press).manhattanLength() <= Still)
                    AskWhatToDo(place);
            });
}

void TEditMenu::AddActions(QMenu* menu) {
    const auto add = [&](const QString& text, const QKeySequence& keys, const QString& tip,
                         auto&& call) {
        return Explained(menu->addAction(text, keys, this, call), tip);
    };
    m_ofSelected = {
        add(QStringLiteral("&Fit selected"), {}, QStringLiteral("Show what is selected, near by"),
            [this] { Q_EMIT FitWanted(m_selection->Objects()); }),
        add(QStringLiteral("&Hide selected"), Qt::Key_H, QStringLiteral("Hide what is selected"),
            [this] { m_contents->SetShown(m_selection->Objects(), false); }),
        add(QStringLiteral("Show &only selected"), QKeyCombination(Qt::SHIFT, Qt::Key_H),
            QStringLiteral("Hide everything else"),
            [this] { m_contents->ShowOnly(m_selection->Objects()); })};
    add(QStringLiteral("&Show all"), QKeyCombination(Qt::CTRL, Qt::Key_H),
        QStringLiteral("Show everything that is hidden"), [this] { m_contents->ShowAll(); });
    menu->addSeparator();
    m_ofSelected.push_back(add(QStringLiteral("&Deselect\tEsc"), {},
                               QStringLiteral("Select nothing"),
                               [this] { m_selection->SelectOnly(nullptr); }));
}

void TEditMenu::Follow() {
    for (QAction* action : m_ofSelected) action->setEnabled(m_selection->Count() > 0);
}

/// What is under the pointer is selected first, unless it is already.
void TEditMenu::AskWhatToDo(const QPoint& place) {
    TZEPObject* object = m_selection->ObjectAt(place);
    if (object && !object->Selected()) m_selection->SelectOnly(object);
    Follow(); // it is told later
    m_context->popup(m_panel->mapToGlobal(place / m_panel->devicePixelRatioF()));
}

/// Keys that nothing in the window has taken.
bool TEditMenu::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return QObject::eventFilter(watched, event);
    m_selection->SelectOnly(nullptr);
    return true;
}

} // namespace ZEP
