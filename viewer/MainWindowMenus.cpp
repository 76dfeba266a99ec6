#include "framework/Exception.h"
#include "view/Panel.h"
#include "viewer/FileRoot.h"
#include "viewer/Info.h"
#include "viewer/MainWindow.h"
#include "viewer/Navigation.h"
#include "viewer/Picture.h"
#include "viewer/Playback.h"
#include "viewer/RecentFiles.h"
#include "viewer/SceneSaving.h"
#include "viewer/Selection.h"
#include "viewer/SourceDock.h"
#include "viewer/WelcomePage.h"

#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>

namespace ZEP {

namespace {

struct TDirectionEntry {
    QString Text;
    Qt::Key Key;
    TDirection Direction;
    QString Tip;
};

QAction* Explained(QAction* action, const QString& tip) {
    action->setStatusTip(tip);
    return action;
}

} // namespace

void TMainWindow::AddMenus() {
    AddFileMenu();
    AddViewMenu();
    AddCameraMenu();
    new TNavigation(this, m_panel);
    AddProgram();
    AddHelpMenu();
}

void TMainWindow::AddFileMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&File"));
    Explained(menu->addAction(QStringLiteral("&Open..."), QKeySequence::Open, this,
                              &TMainWindow::AskForFiles),
              QStringLiteral("Open one or more programs in place of what is shown"));
    m_recent = menu->addMenu(QStringLiteral("Open &recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &TMainWindow::ListRecentFiles);
    Explained(menu->addAction(QStringLiteral("Re&load"), QKeySequence(Qt::Key_F5), this,
                              &TMainWindow::Reload),
              QStringLiteral("Read the files again; the view stays"));
    menu->addSeparator();
    Explained(menu->addAction(QStringLiteral("Save &as..."),
                              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), this,
                              &TMainWindow::SaveSceneAs),
              QStringLiteral("Write what is in the files as a scene"));
    Explained(menu->addAction(QStringLiteral("&Save picture..."), QKeySequence::Save, this,
                              &TMainWindow::SavePicture),
              QStringLiteral("Write what is seen as a PNG"));
    Explained(menu->addAction(QStringLiteral("&Print..."), QKeySequence::Print, this,
                              &TMainWindow::Print),
              QStringLiteral("Put what is seen on paper"));
    Explained(menu->addAction(QStringLiteral("&Information..."), QKeySequence(Qt::CTRL | Qt::Key_I),
                              this, &TMainWindow::ShowInfo),
              QStringLiteral("What is in the files, and what was passed over"));
    menu->addSeparator();
    Explained(menu->addAction(QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this,
                              &QWidget::close),
              QStringLiteral("Close the window"));
}

void TMainWindow::AddViewMenu() {
    const TDirectionEntry entries[] = {
        {QStringLiteral("&Isometric"), Qt::Key_1, TDirection::Iso,
         QStringLiteral("From the front, right and above")},
        {QStringLiteral("&Top"), Qt::Key_2, TDirection::Top, QStringLiteral("Down along z")},
        {QStringLiteral("&Front"), Qt::Key_3, TDirection::Front, QStringLiteral("Along y")},
        {QStringLiteral("&Right"), Qt::Key_4, TDirection::Right, QStringLiteral("Against x")},
        {QStringLiteral("&Left"), Qt::Key_5, TDirection::Left, QStringLiteral("Along x")},
        {QStringLiteral("&Back"), Qt::Key_6, TDirection::Back, QStringLiteral("Against y")},
        {QStringLiteral("B&ottom"), Qt::Key_7, TDirection::Bottom, QStringLiteral("Up along z")}};
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&View"));
    for (const TDirectionEntry& entry : entries) {
        const auto look = [this, direction = entry.Direction] { LookFrom(direction); };
        Explained(menu->addAction(entry.Text, QKeySequence(entry.Key), this, look), entry.Tip);
    }
    menu->addSeparator();
    QAction* guides = menu->addAction(QStringLiteral("&Grid and axes"), QKeySequence(Qt::Key_G));
    guides->setCheckable(true);
    guides->setChecked(m_document.Backdrop().Guides());
    connect(guides, &QAction::toggled, this, [this](bool shown) { m_document.SetGuides(shown); });
    Explained(guides,
              QStringLiteral("Show the floor below what is read, and the axes of its origin"));
    AddViewOptions(menu);
}

void TMainWindow::AddCameraMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Camera"));
    Explained(menu->addAction(QStringLiteral("Fit &selection"), QKeySequence(Qt::Key_F), this,
                              &TMainWindow::FitSelection),
              QStringLiteral("What is selected, or the whole, from where you look now"));
    Explained(menu->addAction(QStringLiteral("Fit &all"), QKeySequence(Qt::Key_A), this,
                              [this] { m_document.FitAll(Aspect()); }),
              QStringLiteral("The whole, from where you look now"));
    Explained(menu->addAction(QStringLiteral("&Reset"), QKeySequence(Qt::Key_Home), this,
                              [this] { m_document.Camera()->Reset(); }),
              QStringLiteral("Back to the last standard view or fit"));
    QAction* parallel = menu->addAction(QStringLiteral("&Orthographic"), QKeySequence(Qt::Key_X));
    parallel->setCheckable(true);
    connect(parallel, &QAction::toggled, this,
            [this](bool on) { m_document.Camera()->SwitchProjection(on, Aspect()); });
    Explained(parallel, QStringLiteral("Parallel lines stay parallel"));
}

void TMainWindow::AddProgram() {
    m_source = new TSourceDock(this, m_document, m_selection);
    addDockWidget(Qt::RightDockWidgetArea, m_source);
    m_playback = new TPlayback(this, m_document.Scene(), m_source);
}

void TMainWindow::AddHelpMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Help"));
    menu->addAction(QStringLiteral("&Mouse and keys"), QKeySequence::HelpContents, this,
                    &TMainWindow::ShowHelp);
}

void TMainWindow::AskForFiles() {
    const QString filter =
        QStringLiteral("Programs and scenes (%1 %2);;All files (*)")
            .arg(ProgramPatterns().join(QLatin1Char(' ')), ScenePatterns().join(QLatin1Char(' ')));
    OpenFiles(QFileDialog::getOpenFileNames(this, QStringLiteral("Open"), RecentFolder(), filter));
}

void TMainWindow::Reload() {
    QStringList files;
    for (const TOpenedFile& file : m_document.Files()) files << file.Name;
    m_keepView = true;
    OpenFiles(files);
}

void TMainWindow::SaveSceneAs() {
    if (m_document.Files().empty()) return;
    QString name =
        QFileDialog::getSaveFileName(this, QStringLiteral("Save as"), RecentFolder(),
                                     QStringLiteral("Scenes (*.zep);;Scenes as text (*.zept)"));
    if (name.isEmpty()) return;
    if (!IsSceneName(name)) name += QStringLiteral(".zep");
    QStringList files;
    for (const TOpenedFile& file : m_document.Files()) files << file.Name;
    try {
        SaveScene(files, m_plain, name);
        RememberFiles({name});
        statusBar()->showMessage(QStringLiteral("Saved as %1.").arg(name));
    } catch (const Exception& error) {
        QMessageBox::critical(this, QStringLiteral("Cannot save"), error.Message());
    }
}

void TMainWindow::SavePicture() {
    const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Save picture"), {},
                                                      QStringLiteral("Pictures (*.png)"));
    if (name.isEmpty()) return;
    try {
        TZEPPanel* seen = m_document.Files().empty() ? m_welcome->View() : m_panel;
        WritePicture(seen->GrabFrame(), name);
    } catch (const Exception& error) {
        QMessageBox::critical(this, QStringLiteral("Cannot save"), error.Message());
    }
}

void TMainWindow::Print() {
    QPrinter printer(QPrinter::HighResolution);
    if (QPrintDialog(&printer, this).exec() != QDialog::Accepted) return;
    try {
        m_panel->Print(printer);
    } catch (const Exception& error) {
        QMessageBox::critical(this, QStringLiteral("Cannot print"), error.Message());
    }
}

void TMainWindow::ListRecentFiles() {
    m_recent->clear();
    for (const QString& file : RecentFiles())
        m_recent->addAction(QString(file).replace(QLatin1Char('&'), QStringLiteral("&&")), this,
                            [this, file] { OpenFiles({file}); });
    if (m_recent->isEmpty()) m_recent->addAction(QStringLiteral("None yet"))->setEnabled(false);
}

void TMainWindow::LookFrom(TDirection direction) {
    m_document.LookFrom(direction, Aspect());
}

void TMainWindow::FitSelection() {
    m_document.FitObjects(m_selection->Objects(), Aspect());
}

void TMainWindow::ShowInfo() {
    QString text;
    for (const TOpenedFile& file : m_document.Files()) text += ToText(InfoOf(file));
    if (text.isEmpty()) text = QStringLiteral("Nothing is open.");
    QMessageBox::information(this, QStringLiteral("Information"), text);
}

void TMainWindow::ShowHelp() {
    QMessageBox::information(
        this, QStringLiteral("Mouse and keys"),
        QStringLiteral(
            "<table cellspacing='6'>"
            "<tr><td>Left button</td><td>click: select; drag: orbit</td></tr>"
            "<tr><td>Right button</td><td>shift</td></tr>"
            "<tr><td>Middle button</td><td>nearer, farther</td></tr>"
            "<tr><td>Wheel</td><td>nearer, farther</td></tr>"
            "<tr><td>1 to 7</td><td>isometric, top, front, right, left, back, bottom</td></tr>"
            "<tr><td>F, A</td><td>fit selection, all</td></tr>"
            "<tr><td>Home</td><td>back to the last fit</td></tr>"
            "<tr><td>X</td><td>orthographic</td></tr>"
            "<tr><td>S, O, T, P, R, D, Z, V</td><td>left button: select, orbit, shift, look "
            "around, roll, come nearer, zoom, perspective<br>with Shift: right button, "
            "with Alt+Shift: middle button</td></tr>"
            "<tr><td>Up, Down</td><td>previous, next move of the program</td></tr>"
            "<tr><td>Space</td><td>play</td></tr>"
            "<tr><td>F4</td><td>text of the program</td></tr>"
            "<tr><td>G</td><td>grid and axes</td></tr>"
            "<tr><td>Ctrl+O</td><td>open</td></tr>"
            "<tr><td>F5</td><td>read again</td></tr>"
            "<tr><td>Esc</td><td>stop loading</td></tr>"
            "<tr><td>Ctrl+Shift+S</td><td>save as a scene</td></tr>"
            "<tr><td>Ctrl+S</td><td>save a picture</td></tr>"
            "<tr><td>Ctrl+P</td><td>print</td></tr>"
            "<tr><td>Ctrl+I</td><td>information</td></tr>"
            "<tr><td>Ctrl+Q</td><td>quit</td></tr></table>"));
}

} // namespace ZEP
