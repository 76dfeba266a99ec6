#include "viewer/window/StockMenu.h"

#include "viewer/window/Playback.h"
#include "viewer/window/SourceDock.h"
#include "viewer/window/StatusTip.h"
#include "viewer/window/StockDialog.h"
#include "viewer/window/StockView.h"

#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>

namespace ZEP {

TStockMenu::TStockMenu(QMainWindow* window, TPlayback* playback, TSourceDock* source,
                       TZEPScene* scene)
    : QObject(window), m_window(window), m_playback(playback), m_source(source),
      m_view(new TStockView(this, scene)) {
    Explained(
        playback->Menu()->addAction(QStringLiteral("C&ut stock..."), this, &TStockMenu::ShowDialog),
        QStringLiteral("Show what is left of the block that the program cuts, move by move"));
    connect(source, &TSourceDock::ProgramChanged, this, &TStockMenu::TakeProgram);
    connect(playback, &TPlayback::StatusChanged, this, &TStockMenu::Follow);
    connect(m_view, &TStockView::ShownChanged, this, &TStockMenu::ShownChanged);
    connect(m_view, &TStockView::Progressed, this, &TStockMenu::ShowProgress);
}

TStockMenu::~TStockMenu() {
    delete m_dialog;
}

void TStockMenu::ShowDialog() {
    TakeProgram();
    if (!m_dialog) {
        m_dialog = new TStockDialog(m_window, m_view);
        connect(m_dialog, &TStockDialog::MoveWanted, this, &TStockMenu::GoTo);
    }
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

void TStockMenu::TakeProgram() {
    const TProgram* program = m_source->Program();
    const TToolPath* played = m_playback->Player().Path();
    // What is not played is not that of the objects any more.
    if (program && program->Path.get() == played)
        m_view->SetPath(program->Path, program->Text);
    else
        m_view->SetPath(nullptr, {});
    Follow();
}

void TStockMenu::Follow() {
    const auto place = m_playback->Place();
    m_view->Show(place ? place->Move : -1, place ? place->Part : 1);
}

void TStockMenu::ShowProgress() {
    constexpr int shownFor = 1500; // ms
    const int percent = qRound(m_view->Progress() * 100);
    m_window->statusBar()->showMessage(
        QStringLiteral("The program cuts its stock, as a whole first: %1 %").arg(percent),
        shownFor);
}

void TStockMenu::GoTo(int move) {
    if (m_playback->Player().Path() != m_view->Path().get() || !m_view->Path()) return;
    if (const auto object = m_view->Path()->ObjectOf(move)) m_source->GoTo(*object);
}

} // namespace ZEP
