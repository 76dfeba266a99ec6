#include "viewer/files/DrawingSaving.h"
#include "viewer/files/FileWatch.h"
#include "viewer/files/Info.h"
#include "viewer/files/RecentFiles.h"
#include "viewer/files/StoredScene.h"
#include "viewer/window/CameraMenu.h"
#include "viewer/window/ContentsDock.h"
#include "viewer/window/ContentsModel.h"
#include "viewer/window/EditMenu.h"
#include "viewer/window/Icons.h"
#include "viewer/window/KeysHelp.h"
#include "viewer/window/LayoutTabs.h"
#include "viewer/window/MainWindow.h"
#include "viewer/window/MeasureMenu.h"
#include "viewer/window/MessagesDock.h"
#include "viewer/window/Navigation.h"
#include "viewer/window/PictureMenu.h"
#include "viewer/window/Playback.h"
#include "viewer/window/ProgramDock.h"
#include "viewer/window/SectionMenu.h"
#include "viewer/window/Selection.h"
#include "viewer/window/ShownHistory.h"
#include "viewer/window/SourceDock.h"
#include "viewer/window/StatusTip.h"
#include "viewer/window/StockMenu.h"
#include "viewer/window/ViewOptions.h"
#include "viewer/window/WelcomePage.h"
#include <zep/Version.h>
#include <zep/batch/Batch.h>
#include <zep/framework/UserError.h>
#include <zep/view/Gizmo.h>
#include <zep/view/Panel.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>

namespace ZEP {

namespace {

struct TDirectionEntry {
    QString Text;
    Qt::Key Key;
    TDirection Direction;
    QString Tip;
    const char* Icon = nullptr; ///< on the tool bar, where it has one
};

/// What files may be saved as, the form of a name without a suffix first.
struct TSavedForm {
    const char *Filter, *Suffix;
};
constexpr TSavedForm SavedForms[] = {
    {"Scenes (*.zep)", ".zep"}, {"Scenes as text (*.zept)", ".zept"}, {"Drawings (*.dxf)", ".dxf"}};

const QString ReloadsKey = QStringLiteral("files/reloads");

} // namespace

void TMainWindow::AddMenus() {
    AddFileMenu();
    auto* edit = new TEditMenu(this, m_panel, m_selection, m_contents->Model());
    connect(edit, &TEditMenu::FitWanted, this,
            [this](const auto& objects) { m_document.FitObjects(objects, Aspect()); });
    connect(edit, &TEditMenu::FitAllWanted, this, [this] { m_document.FitAll(Aspect()); });
    AddViewMenu();
    auto* camera = new TCameraMenu(this, m_document, m_selection, [this] { return Aspect(); });
    connect(camera, &TCameraMenu::StartWanted, this,
            [this] { m_welcome->Start().LookFromStart(); });
    PutOnBar(camera->FitAll(), "fit");
    auto* navigation = new TNavigation(this, m_panel);
    const auto lock = [this, navigation](TDirection direction) {
        navigation->SetFlatView(direction == TDirection::Top && m_document.IsFlat());
    };
    connect(&m_document, &TDocument::LookedFrom, navigation, lock);
    connect(new TZEPGizmo(m_panel), &TZEPGizmo::Turned, navigation, lock);
    new TMeasureMenu(this, m_panel, m_document, m_contents->Model()->History().Stack());
    AddProgram();
    AddHelpMenu();
}

void TMainWindow::PutOnBar(QAction* action, const char* icon) {
    action->setIcon(Icon(icon));
    m_bar->addAction(action);
}

void TMainWindow::AddFileMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&File"));
    AddFileActions(menu);
    menu->addSeparator();
    Explained(menu->addAction(QStringLiteral("Save &as..."),
                              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), this,
                              &TMainWindow::AskAndSave),
              QStringLiteral("Write what is in the files as a scene or a drawing"));
    new TPictureMenu(this, menu, m_document, [this]() -> TPictureMenu::TSeen {
        if (m_document.Files().empty()) return {m_welcome->View(), &m_welcome->Start().Backdrop()};
        return {m_panel, &m_document.Backdrop()};
    });
    Explained(menu->addAction(QStringLiteral("&Information..."), QKeySequence(Qt::CTRL | Qt::Key_I),
                              this, &TMainWindow::ShowInfo),
              QStringLiteral("What is in the files, and what was passed over"));
    menu->addSeparator();
    Explained(menu->addAction(QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this,
                              &QWidget::close),
              QStringLiteral("Close the window"));
}

void TMainWindow::AddFileActions(QMenu* menu) {
    PutOnBar(Explained(menu->addAction(QStringLiteral("&Open..."), QKeySequence::Open, this,
                                       [this] { OpenFiles(AskForFiles(QStringLiteral("Open"))); }),
                       QStringLiteral("Open one or more files in place of what is shown")),
             "open");
    Explained(menu->addAction(QStringLiteral("&Add file..."),
                              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), this,
                              [this] { AddFiles(AskForFiles(QStringLiteral("Add"))); }),
              QStringLiteral("Open one or more files beside what is shown"));
    m_recent = menu->addMenu(QStringLiteral("Open &recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &TMainWindow::ListRecentFiles);
    Explained(menu->addAction(QStringLiteral("Re&load"), QKeySequence(Qt::Key_F5), this,
                              &TMainWindow::Reload),
              QStringLiteral("Read the files again; the view stays"));
    Explained(menu->addAction(QStringLiteral("&Close"), QKeySequence::Close, this,
                              &TMainWindow::CloseAll),
              QStringLiteral("Put away what is shown; the start page comes back"));
    m_reloads = Explained(menu->addAction(QStringLiteral("Reload au&tomatically")),
                          QStringLiteral("Read files again when they change on the disk"));
    m_reloads->setCheckable(true);
    m_reloads->setChecked(QSettings().value(ReloadsKey, true).toBool());
    connect(m_reloads, &QAction::toggled, this,
            [](bool on) { QSettings().setValue(ReloadsKey, on); });
}

void TMainWindow::AddViewMenu() {
    const TDirectionEntry entries[] = {
        {QStringLiteral("&Isometric"), Qt::Key_1, TDirection::Iso,
         QStringLiteral("From the front, right and above"), "iso"},
        {QStringLiteral("&Top"), Qt::Key_2, TDirection::Top, QStringLiteral("Down along z"), "top"},
        {QStringLiteral("&Front"), Qt::Key_3, TDirection::Front, QStringLiteral("Along y"),
         "front"},
        {QStringLiteral("&Right"), Qt::Key_4, TDirection::Right, QStringLiteral("Against x"),
         "right"},
        {QStringLiteral("&Left"), Qt::Key_5, TDirection::Left, QStringLiteral("Along x")},
        {QStringLiteral("&Back"), Qt::Key_6, TDirection::Back, QStringLiteral("Against y")},
        {QStringLiteral("B&ottom"), Qt::Key_7, TDirection::Bottom, QStringLiteral("Up along z")}};
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&View"));
    for (const TDirectionEntry& entry : entries) {
        const auto look = [this, direction = entry.Direction] { LookFrom(direction); };
        QAction* action = menu->addAction(entry.Text, QKeySequence(entry.Key), this, look);
        Explained(action, entry.Tip);
        if (entry.Icon) PutOnBar(action, entry.Icon);
    }
    menu->addSeparator();
    QAction* guides = menu->addAction(QStringLiteral("&Grid and axes"), QKeySequence(Qt::Key_G));
    guides->setCheckable(true);
    guides->setChecked(m_document.Guides());
    connect(guides, &QAction::toggled, this, [this](bool shown) { m_document.SetGuides(shown); });
    Explained(guides,
              QStringLiteral("Show the floor below what is read, and the axes of its origin"));
    guides->setEnabled(false);
    connect(&m_document, &TDocument::Changed, guides,
            [this, guides] { guides->setEnabled(!m_document.Files().empty()); });
    new TSectionMenu(menu, this, m_panel, m_document);
    m_layouts->AddTo(menu);
    AddDocks(menu);
    AddViewOptions(menu);
    AddFullScreen(menu);
}

void TMainWindow::AddDocks(QMenu* menu) {
    menu->addSeparator();
    QAction* contents = m_contents->toggleViewAction();
    contents->setShortcut(QKeySequence(Qt::Key_F3));
    connect(contents, &QAction::triggered, m_contents, [this](bool on) {
        if (on) m_contents->Focus();
    });
    menu->addAction(Explained(contents, QStringLiteral("Files, layers and objects, to show, hide "
                                                       "and find them")));
    Explained(menu->addAction(QStringLiteral("&Find..."), QKeySequence::Find, m_contents,
                              &TContentsDock::Find),
              QStringLiteral("Find a layer or object by its name or kind"));
    QAction* program = m_program->toggleViewAction();
    program->setShortcut(QKeySequence(Qt::Key_F6));
    menu->addAction(Explained(program, QStringLiteral("Times, lengths and tools of the program, "
                                                      "and which of its moves are shown")));
    menu->addAction(Explained(m_messages->toggleViewAction(),
                              QStringLiteral("What was passed over in the files")));
}

void TMainWindow::AddProgram() {
    m_playback = new TPlayback(this, m_document.Scene(), m_source);
    connect(m_playback, &TPlayback::StatusChanged, this, &TMainWindow::ShowStatus);
    connect(m_program, &TProgramDock::TimesChanged, m_playback, &TPlayback::TakeTimes);
    connect(m_playback, &TPlayback::Told, this,
            [this](const QString& text) { statusBar()->showMessage(text, MessageTime); });
    m_stock = new TStockMenu(this, m_playback, m_source, m_document.Scene());
    connect(m_stock, &TStockMenu::ShownChanged, this, [this] { m_viewOptions->Apply(); });
}

void TMainWindow::AddFullScreen(QMenu* menu) {
    menu->addSeparator();
    QAction* full = menu->addAction(QStringLiteral("F&ull screen"), QKeySequence(Qt::Key_F11));
    full->setCheckable(true);
    connect(full, &QAction::triggered, this,
            [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
    // The window manager changes it, too.
    connect(menu, &QMenu::aboutToShow, full, [this, full] { full->setChecked(isFullScreen()); });
    Explained(full, QStringLiteral("The whole screen for this window, and back"));
}

void TMainWindow::AddHelpMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Help"));
    menu->addAction(QStringLiteral("&Mouse and keys"), QKeySequence::HelpContents, this, [this] {
        QMessageBox::information(this, QStringLiteral("Mouse and keys"), KeysHelp());
    });
    menu->addAction(QStringLiteral("&About zepview"), this, &TMainWindow::ShowAbout);
}

void TMainWindow::ShowAbout() {
    TZEPPanel& seen = m_document.Files().empty() ? *m_welcome->View() : *m_panel;
    QMessageBox::about(
        this, QStringLiteral("About zepview"),
        QStringLiteral("zepview %1\n\nShows tool paths, drawings and models.\n\n"
                       "Qt %2\nOpenGL: %3")
            .arg(LibraryVersion(), QLatin1String(qVersion()), seen.Context()->Acceleration()));
}

QStringList TMainWindow::AskForFiles(const QString& title) {
    return QFileDialog::getOpenFileNames(this, title, RecentFolder(), OpenFilters());
}

QStringList TMainWindow::FileNames() const {
    QStringList names;
    for (const TOpenedFile& file : m_document.Files()) names << file.Name;
    return names;
}

void TMainWindow::Reload() {
    Want({.Files = FileNames(), .Adds = true, .KeepsView = true});
}

void TMainWindow::SaveAs(const QString& file) {
    std::vector<TPassedOver> left;
    m_viewOptions->Undressed([&] { left = m_document.Save(file); });
    RememberFiles({file});
    m_watch->Watch(m_document.Files());
    // All that is shown is in that file now: read once more beside the others, it would be there
    // twice.
    if (m_document.Files().size() > 1 && m_document.Find(file))
        Want({.Files = {file}, .KeepsView = true});
    QStringList kinds;
    for (const TPassedOver& kind : left)
        kinds << QStringLiteral("%1: %2").arg(kind.Kind).arg(kind.Count);
    statusBar()->showMessage(kinds.isEmpty() ? QStringLiteral("Saved as %1.").arg(file)
                                             : QStringLiteral("Saved as %1, but left out: %2")
                                                   .arg(file, kinds.join(QStringLiteral("; "))));
}

/// Beside the first file that is shown, with its name and another suffix.
QString TMainWindow::ProposedName(const char* suffix) const {
    if (m_document.Files().empty()) return RecentFolder();
    const QFileInfo first(m_document.Files().front().Name);
    return first.dir().filePath(first.completeBaseName() + QLatin1String(suffix));
}

void TMainWindow::AskAndSave() {
    if (m_document.Files().empty()) return;
    QStringList filters;
    for (const TSavedForm& form : SavedForms) filters << QLatin1StringView(form.Filter);
    QString filter;
    QString name =
        QFileDialog::getSaveFileName(this, QStringLiteral("Save as"), ProposedName(".zep"),
                                     filters.join(QStringLiteral(";;")), &filter);
    if (name.isEmpty()) return;
    const auto chosen = static_cast<std::size_t>(std::max<qsizetype>(filters.indexOf(filter), 0));
    if (!IsSceneName(name) && !IsDrawingName(name))
        name += QLatin1StringView(SavedForms[chosen].Suffix);
    try {
        SaveAs(name);
    } catch (const std::exception& error) {
        QMessageBox::critical(this, QStringLiteral("Cannot save"), ErrorReport(error, name));
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
    if (m_document.Files().empty()) return m_welcome->Start().LookFrom(direction);
    m_document.LookFrom(direction, Aspect());
}

void TMainWindow::ShowInfo() {
    QString text;
    for (const TOpenedFile& file : m_document.Files()) text += ToText(InfoOf(file));
    if (text.isEmpty()) text = QStringLiteral("Nothing is open.");
    QMessageBox::information(this, QStringLiteral("Information"), text);
}

} // namespace ZEP
