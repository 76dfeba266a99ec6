#include "framework/Exception.h"
#include "view/Panel.h"
#include "viewer/FileRoot.h"
#include "viewer/Info.h"
#include "viewer/MainWindow.h"
#include "viewer/Picture.h"
#include "viewer/RecentFiles.h"
#include "viewer/SceneSaving.h"
#include "viewer/WelcomePage.h"

#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
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
        {QStringLiteral("&Right"), Qt::Key_4, TDirection::Right, QStringLiteral("Against x")}};
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&View"));
    for (const TDirectionEntry& entry : entries) {
        const auto look = [this, direction = entry.Direction] { LookFrom(direction); };
        Explained(menu->addAction(entry.Text, QKeySequence(entry.Key), this, look), entry.Tip);
    }
    menu->addSeparator();
    Explained(menu->addAction(QStringLiteral("Fit &all"), QKeySequence(Qt::Key_F), this,
                              [this] { m_document.FitAll(Aspect()); }),
              QStringLiteral("The whole, from where you look now"));
    QAction* guides = menu->addAction(QStringLiteral("&Grid and axes"), QKeySequence(Qt::Key_G));
    guides->setCheckable(true);
    guides->setChecked(m_document.Backdrop().Guides());
    connect(guides, &QAction::toggled, this, [this](bool shown) { m_document.SetGuides(shown); });
    Explained(guides,
              QStringLiteral("Show the floor below what is read, and the axes of its origin"));
    AddViewOptions(menu);
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

void TMainWindow::ShowInfo() {
    QString text;
    for (const TOpenedFile& file : m_document.Files()) text += ToText(InfoOf(file));
    if (text.isEmpty()) text = QStringLiteral("Nothing is open.");
    QMessageBox::information(this, QStringLiteral("Information"), text);
}

void TMainWindow::ShowHelp() {
    QMessageBox::information(
        this, QStringLiteral("Mouse and keys"),
        QStringLiteral("<table cellspacing='6'>"
                       "<tr><td>Left button</td><td>orbit</td></tr>"
                       "<tr><td>Right button</td><td>pan</td></tr>"
                       "<tr><td>Wheel</td><td>nearer, farther</td></tr>"
                       "<tr><td>1, 2, 3, 4</td><td>isometric, top, front, right</td></tr>"
                       "<tr><td>F</td><td>fit all</td></tr>"
                       "<tr><td>G</td><td>grid and axes</td></tr>"
                       "<tr><td>Ctrl+O</td><td>open</td></tr>"
                       "<tr><td>F5</td><td>read again</td></tr>"
                       "<tr><td>Esc</td><td>stop loading</td></tr>"
                       "<tr><td>Ctrl+Shift+S</td><td>save as a scene</td></tr>"
                       "<tr><td>Ctrl+S</td><td>save a picture</td></tr>"
                       "<tr><td>Ctrl+I</td><td>information</td></tr>"
                       "<tr><td>Ctrl+Q</td><td>quit</td></tr></table>"));
}

} // namespace ZEP
