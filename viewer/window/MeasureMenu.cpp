#include "viewer/window/MeasureMenu.h"

#include "viewer/files/Document.h"
#include "viewer/window/StatusTip.h"
#include <zep/batch/Batch.h>
#include <zep/scene/ForEach.h>
#include <zep/scene/Scene.h>
#include <zep/sheets/Layout.h>
#include <zep/view/MeasureTool.h>
#include <zep/view/Panel.h>

#include <QActionGroup>
#include <QClipboard>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QStatusBar>
#include <QUndoStack>

#include <utility>

namespace ZEP {

namespace {

/// Dimensions that come or go: those that have gone wait for their scene's end.
class TMove : public QUndoCommand {
public:
    TMove(const QString& text, const std::vector<TZEPDimension*>& dimensions, bool come)
        : QUndoCommand(text), m_come(come) {
        for (TZEPDimension* each : dimensions) m_each.push_back({each, each->Parent()});
    }

    void undo() override { Move(!m_come); }
    void redo() override { Move(m_come); }

private:
    struct TPlaced {
        QPointer<TZEPDimension> Dimension;
        QPointer<TZEPObject> Parent;
    };

    void Move(bool come) {
        for (const TPlaced& each : m_each)
            if (each.Dimension && each.Parent)
                each.Dimension->SetParentComponent(come ? each.Parent.data() : nullptr);
    }

    std::vector<TPlaced> m_each;
    bool m_come;
};

} // namespace

TMeasureMenu::TMeasureMenu(QMainWindow* window, TZEPPanel* panel, TDocument& document,
                           QUndoStack& stack)
    : QObject(window), m_window(window), m_panel(panel), m_document(document), m_stack(stack),
      m_tool(new TZEPMeasureTool(panel)) {
    QMenu* menu = window->menuBar()->addMenu(QStringLiteral("Mea&sure"));
    AddTool(menu, QStringLiteral("&Distance"), Qt::Key_M, dmDistance,
            QStringLiteral("Between two points"));
    AddTool(menu, QStringLiteral("&Angle"), Qt::Key_N, dmAngle,
            QStringLiteral("Between two arms: a point on one, the corner, a point on the other"));
    AddTool(menu, QStringLiteral("&Radius"), Qt::Key_U, dmRadius,
            QStringLiteral("Of a circle or an arc, or through three points; and the diameter"));
    AddTool(menu, QStringLiteral("&Chain"), Qt::Key_C, dmChain,
            QStringLiteral("Along points, until Return; closed at the first one, also the area"));
    menu->addSeparator();
    m_ofAll = {
        Explained(menu->addAction(QStringLiteral("C&opy all"), QKeySequence::Copy, this,
                                  &TMeasureMenu::Copy),
                  QStringLiteral("Put all that is measured on the clipboard as text")),
        Explained(menu->addAction(QStringLiteral("R&emove all"), this, &TMeasureMenu::RemoveAll),
                  QStringLiteral("Remove all dimensions"))};
    connect(m_tool, &TZEPMeasureTool::Told, this, &TMeasureMenu::Tell);
    connect(m_tool, &TZEPMeasureTool::Measured, this, &TMeasureMenu::Keep);
    connect(m_tool, &TZEPMeasureTool::Stopped, this,
            [this] { m_window->statusBar()->clearMessage(); });
    connect(&document, &TDocument::AboutToChange, m_tool, &TZEPMeasureTool::Stop);
    connect(&document, &TDocument::Changed, this, &TMeasureMenu::Follow);
    connect(&stack, &QUndoStack::indexChanged, this, &TMeasureMenu::Follow);
    Follow();
}

void TMeasureMenu::AddTool(QMenu* menu, const QString& text, Qt::Key key, TZEPDimensionKind kind,
                           const QString& tip) {
    QAction* action = menu->addAction(text, QKeySequence(key), this, [this, kind] { Start(kind); });
    m_tools.push_back(Explained(action, tip));
}

void TMeasureMenu::Start(TZEPDimensionKind kind) {
    const QString unit = m_document.Files().front().Unit;
    m_tool->SetSuffix(unit == TOpenedFile().Unit ? QString() : unit);
    m_tool->Start(kind);
    m_panel->setFocus(); // Escape and Return are the tool's
}

void TMeasureMenu::Keep(TZEPDimension* dimension, const TZEPObject* of) {
    TZEPObject* root = m_document.Files().empty() ? nullptr : m_document.Files().front().Root;
    for (const TZEPObject* above = of; above; above = above->Parent())
        for (const TOpenedFile& file : m_document.Files())
            if (file.Root == above) root = file.Root;
    if (TZEPLayout* sheet = m_document.Layout()) root = sheet;
    if (!root) return;
    dimension->SetParentComponent(root);
    m_stack.push(new TMove(QStringLiteral("measuring"), {dimension}, true));
}

void TMeasureMenu::Tell(const QString& text) {
    m_window->statusBar()->showMessage(text);
}

void TMeasureMenu::Copy() {
    QStringList reports;
    for (const TZEPDimension* dimension : Dimensions()) reports << dimension->Report();
    QGuiApplication::clipboard()->setText(reports.join(QLatin1Char('\n')));
    Tell(reports.size() == 1
             ? QStringLiteral("1 dimension is on the clipboard.")
             : QStringLiteral("%1 dimensions are on the clipboard.").arg(reports.size()));
}

void TMeasureMenu::RemoveAll() {
    const std::vector<TZEPDimension*> all = Dimensions();
    if (!all.empty()) m_stack.push(new TMove(QStringLiteral("removing dimensions"), all, false));
}

void TMeasureMenu::Follow() {
    for (QAction* tool : m_tools) tool->setEnabled(!m_document.Files().empty());
    const bool some = !Dimensions().empty();
    for (QAction* action : m_ofAll) action->setEnabled(some);
}

std::vector<TZEPDimension*> TMeasureMenu::Dimensions() const {
    std::vector<TZEPDimension*> dimensions;
    for (const TOpenedFile& file : m_document.Files())
        ForEachObject(*file.Root, [&dimensions](TZEPObject& object) {
            if (auto* dimension = qobject_cast<TZEPDimension*>(&object))
                dimensions.push_back(dimension);
        });
    return dimensions;
}

} // namespace ZEP
