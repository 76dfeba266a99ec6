#include "viewer/window/MainWindow.h"

#include "viewer/content/Describe.h"
#include "viewer/files/FileLayouts.h"
#include "viewer/files/FileWatch.h"
#include "viewer/files/RecentFiles.h"
#include "viewer/window/ContentsDock.h"
#include "viewer/window/DetailControl.h"
#include "viewer/window/LayoutTabs.h"
#include "viewer/window/LoadBar.h"
#include "viewer/window/MessagesDock.h"
#include "viewer/window/Playback.h"
#include "viewer/window/ProgramDock.h"
#include "viewer/window/Selection.h"
#include "viewer/window/SourceDock.h"
#include "viewer/window/StockMenu.h"
#include "viewer/window/ViewOptions.h"
#include "viewer/window/WelcomePage.h"
#include <zep/batch/Batch.h>
#include <zep/framework/UserError.h>
#include <zep/view/Panel.h>

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QMimeData>
#include <QScopeGuard>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

constexpr int RestSamples = 8;
constexpr int ContentsWidth = 300;
constexpr int MessagesHeight = 130;

const QString BarsKey = QStringLiteral("window/bars");
const QString GeometryKey = QStringLiteral("window/geometry");

QStringList LocalFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) files << url.toLocalFile();
    return files;
}

QString NamesOf(const std::vector<TOpenedFile>& files) {
    QStringList names;
    for (const TOpenedFile& file : files) names << QFileInfo(file.Name).fileName();
    return names.join(QStringLiteral(", "));
}

QString CountsOf(const std::vector<TOpenedFile>& files) {
    qint64 objects = 0;
    for (const TOpenedFile& file : files) objects += file.Objects;
    // NGC is what a program is taken for where nothing tells.
    const bool isFanuc = files.size() == 1 && files[0].Dialect == QStringLiteral("Fanuc");
    return NamesOf(files) + QStringLiteral(": ") +
           (objects == 0   ? QStringLiteral("nothing to draw")
            : objects == 1 ? QStringLiteral("1 object")
                           : QStringLiteral("%1 objects").arg(QLocale().toString(objects))) +
           (isFanuc ? QStringLiteral(", Fanuc's dialect") : QString());
}

/// Of what is shown as a whole.
QString UnitOf(const std::vector<TOpenedFile>& files) {
    const bool isOne = std::ranges::all_of(
        files, [&](const TOpenedFile& file) { return file.Unit == files[0].Unit; });
    return isOne && !files.empty() ? files[0].Unit : TOpenedFile().Unit;
}

QString SizeOf(const TZEPBounds& box, const QString& unit, double gridStep) {
    const auto side = [&](std::size_t k) {
        return QLocale().toString(box.Max[k] - box.Min[k], 'f', 2);
    };
    return QStringLiteral("%1 x %2 x %3 %4, grid %5")
        .arg(side(0), side(1), side(2), unit, QLocale().toString(gridStep));
}

} // namespace

TMainWindow::TMainWindow(bool plain)
    : m_pages(new QStackedWidget(this)), m_welcome(new TWelcomePage), m_panel(new TZEPPanel),
      m_layouts(new TLayoutTabs(m_document, [this] { return Aspect(); })),
      m_watch(new TFileWatch(this)), m_loadBar(new TLoadBar), m_status(new QLabel),
      m_size(new QLabel), m_bar(addToolBar(QStringLiteral("Files and views"))), m_plain(plain) {
    setWindowTitle(QStringLiteral("zepview"));
    setAcceptDrops(true);
    m_bar->setObjectName(QStringLiteral("FilesBar"));
    MakePages();
    MakeDocks();
    AddMenus();
    MakeStatusBar();
    ShowStatus();
    resize(1100, 800);
    restoreGeometry(QSettings().value(GeometryKey).toByteArray());
    restoreState(QSettings().value(BarsKey).toByteArray());
    Q_EMIT m_document.Changed(); // docks that were shown last time may have nothing to show now
}

TMainWindow::~TMainWindow() {
    // What stands in the scene or looks at it goes before the document takes it away.
    delete m_stock;
    delete m_playback;
    delete m_program;
    delete m_source;
    delete m_contents;
    delete m_messages;
    delete takeCentralWidget();
}

void TMainWindow::MakePages() {
    m_pages->addWidget(m_welcome);
    m_pages->addWidget(m_panel);
    auto* view = new QWidget(this);
    auto* rows = new QVBoxLayout(view);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_pages, 1);
    rows->addWidget(m_layouts);
    setCentralWidget(view);
    m_panel->SetCamera(m_document.Camera());
    m_panel->SetRestSamples(RestSamples);
    connect(m_panel, &TZEPPanel::FrameFailed, this, [this](TZEPPanel*, const QString& error) {
        statusBar()->showMessage(QStringLiteral("The view cannot be drawn: %1").arg(error));
    });
    new TDetailControl(m_panel, m_document);
    m_selection = new TSelection(m_panel, m_document.Scene());
    connect(m_selection, &TSelection::Changed, this, &TMainWindow::ShowStatus);
    connect(m_selection, &TSelection::Changed, this, &TMainWindow::TurnAboutSelected);
    m_welcome->SetRecentFiles(RecentFiles());
    connect(m_welcome, &TWelcomePage::OpenWanted, this,
            [this] { OpenFiles(AskForFiles(QStringLiteral("Open"))); });
    connect(m_welcome, &TWelcomePage::FileWanted, this,
            [this](const QString& file) { OpenFiles({file}); });
}

void TMainWindow::MakeDocks() {
    m_contents = new TContentsDock(this, m_document);
    addDockWidget(Qt::LeftDockWidgetArea, m_contents);
    connect(m_contents, &TContentsDock::FitWanted, this,
            [this](const auto& objects) { m_document.FitObjects(objects, Aspect()); });
    connect(m_contents, &TContentsDock::CloseWanted, this, &TMainWindow::CloseFile);
    connect(m_contents, &TContentsDock::ReloadWanted, this, [this](const QString& file) {
        Want({.Files = {file}, .Adds = true, .KeepsView = true});
    });
    m_messages = new TMessagesDock(this, m_document);
    addDockWidget(Qt::BottomDockWidgetArea, m_messages);
    m_source = new TSourceDock(this, m_document, m_selection);
    addDockWidget(Qt::RightDockWidgetArea, m_source);
    m_program = new TProgramDock(this, m_source);
    tabifyDockWidget(m_source, m_program);
    m_source->raise();
    resizeDocks({m_contents}, {ContentsWidth}, Qt::Horizontal);
    resizeDocks({m_messages}, {MessagesHeight}, Qt::Vertical);
    connect(&m_document, &TDocument::AboutToChange, this,
            [this] { m_selection->SelectOnly(nullptr); });
    connect(&m_document, &TDocument::Changed, this, &TMainWindow::ShowFiles);
    connect(&m_document, &TDocument::LayoutShown, this, &TMainWindow::ShowStatus);
    connect(m_watch, &TFileWatch::Changed, this, &TMainWindow::FilesChangedOnDisk);
    connect(m_watch, &TFileWatch::Vanished, this, [this](const QString& file) {
        statusBar()->showMessage(QStringLiteral("%1 is gone from the disk; it stays shown.")
                                     .arg(QFileInfo(file).fileName()));
    });
}

void TMainWindow::AddViewOptions(QMenu* menu) {
    m_viewOptions = new TViewOptions(menu, this);
    m_viewOptions->AddView(std::make_unique<TDressedView>(
        m_panel, [this](const auto& color) { m_document.SetBackground(color); },
        [this] { return m_document.Backdrop().MiddleColor(); }));
    TStartScene& start = m_welcome->Start();
    auto welcome = std::make_unique<TDressedView>(
        m_welcome->View(), [this](const auto& color) { m_welcome->SetBackground(color); },
        [&start] { return start.Backdrop().MiddleColor(); });
    welcome->SetGroundAllowed(false);
    m_viewOptions->AddView(std::move(welcome));
}

void TMainWindow::MakeStatusBar() {
    m_status->setSizePolicy(QSizePolicy::Ignored,
                            QSizePolicy::Preferred); // the window may be narrow
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_messages->Badge());
    statusBar()->addPermanentWidget(m_loadBar);
    statusBar()->addPermanentWidget(m_size);
    m_size->setToolTip(QStringLiteral("Size of what is shown along x, y and z, and the distance of "
                                      "the grid's lines"));
}

void TMainWindow::OpenFiles(const QStringList& files, const QString& layout) {
    Want({.Files = files, .Layout = layout});
}

void TMainWindow::AddFiles(const QStringList& files) {
    Want({.Files = files, .Adds = true});
}

void TMainWindow::CloseFile(const QString& file) {
    if (!m_loadBar->IsLoading()) m_document.Close(file);
}

void TMainWindow::CloseAll() {
    if (m_loadBar->IsLoading()) return m_loadBar->Cancel();
    for (const QString& file : FileNames()) m_document.Close(file);
}

void TMainWindow::Want(const TRequest& request) {
    if (request.Files.isEmpty()) return;
    m_next = request;
    if (m_loadBar->IsLoading()) return m_loadBar->Cancel();
    while (m_next && !m_closed) LoadNext();
}

void TMainWindow::LoadNext() {
    const TRequest request = *std::exchange(m_next, {});
    const bool wasEmpty = m_document.Files().empty();
    try {
        if (!Load(request)) {
            statusBar()->showMessage(QStringLiteral("Cancelled."), MessageTime);
            return;
        }
    } catch (const std::exception& error) {
        if (!m_document.Failures().empty()) return EndLoad(request); // none can be read
        return Tell(ErrorReport(error, request.Files.first()));
    }
    statusBar()->clearMessage();
    LookAt(request, wasEmpty);
    EndLoad(request);
}

void TMainWindow::LookAt(const TRequest& request, bool wasEmpty) {
    if (!request.KeepsView && request.Adds && !wasEmpty)
        m_document.FitAll(Aspect());
    else if (!request.KeepsView)
        m_document.LookBest(Aspect());
    if (request.Layout.isEmpty()) return;
    try {
        m_document.ShowLayout(LayoutNamed(request.Layout, m_document.Files()), Aspect());
    } catch (const std::exception& error) {
        if (!m_closed) Tell(ErrorReport(error, request.Files.first()));
    }
}

void TMainWindow::EndLoad(const TRequest& request) {
    QStringList read = request.Files;
    for (const TFailure& failure : m_document.Failures()) {
        read.removeAll(failure.File);
        if (!QFileInfo::exists(failure.File)) ForgetFile(failure.File);
    }
    if (!request.KeepsView) RememberFiles(read);
    if (!m_closed && !m_document.Failures().empty()) TellFailures(request.IsQuiet);
}

bool TMainWindow::Load(const TRequest& request) {
    const auto finish = qScopeGuard([this] {
        m_loadBar->Finish();
        m_welcome->Start().SetMoving(m_welcome->isVisible());
    });
    m_loadBar->Start();
    m_welcome->Start().SetMoving(false); // its frames would take the time
    TZEPShown shown;
    GiveLook(m_viewOptions->Look(), false, shown);
    m_document.SetFirstShown(shown);
    const auto progress = [this](const QString& file, double fraction) {
        return m_loadBar->Progress(file, fraction);
    };
    return request.Adds ? m_document.Add(request.Files, m_plain, progress)
                        : m_document.Open(request.Files, m_plain, progress);
}

void TMainWindow::ShowFiles() {
    const auto& files = m_document.Files();
    m_watch->Watch(files);
    m_source->FilesChanged();
    m_viewOptions->Apply();
    ShowStatus();
    setWindowTitle((files.empty() ? QString() : NamesOf(files) + QStringLiteral(" - ")) +
                   QStringLiteral("zepview"));
    m_welcome->SetRecentFiles(RecentFiles());
    if (files.empty()) return m_pages->setCurrentWidget(m_welcome);
    m_panel->setGeometry(m_pages->rect()); // before it is shown, which draws
    m_pages->setCurrentWidget(m_panel);
}

void TMainWindow::FilesChangedOnDisk(const QStringList& files) {
    if (m_loadBar->IsLoading()) return m_watch->Watch(m_document.Files()); // told again later
    for (const QString& file : files) // one by one: each can fail
        if (m_reloads->isChecked() && m_document.Find(file))
            Want({.Files = {file}, .Adds = true, .KeepsView = true, .IsQuiet = true});
    if (m_reloads->isChecked()) return;
    statusBar()->showMessage(QStringLiteral("%1 has changed on the disk; F5 reads it again.")
                                 .arg(QFileInfo(files.first()).fileName()));
}

void TMainWindow::Tell(const QString& error) {
    QMessageBox::critical(this, QStringLiteral("Cannot open"), error);
}

/// \param quietly  among the messages
void TMainWindow::TellFailures(bool quietly) {
    const std::vector<TFailure> failures = m_document.Failures(); // a dialog lives long
    if (!quietly) return Tell(ReportOf(failures));
    for (const TFailure& failure : failures)
        m_messages->SetNote(
            failure.File, QStringLiteral("What is shown is older than the file. ") + failure.Reason,
            failure.Line);
}

void TMainWindow::closeEvent(QCloseEvent* event) {
    m_closed = true;
    m_loadBar->Cancel();
    QSettings().setValue(GeometryKey, saveGeometry());
    QSettings().setValue(BarsKey, saveState());
    QMainWindow::closeEvent(event);
}

void TMainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void TMainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    const bool adds = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    // Later, since the program that the files come from waits until this returns.
    QMetaObject::invokeMethod(
        this,
        [this, adds, files = LocalFiles(*event->mimeData())] {
            Want({.Files = files, .Adds = adds});
        },
        Qt::QueuedConnection);
}

void TMainWindow::ShowStatus() {
    const auto& files = m_document.Files();
    const std::optional<TZEPBounds> bounds = m_document.Bounds();
    const QString played = m_playback ? m_playback->Status() : QString();
    if (TZEPObject* object = m_selection->Only())
        m_status->setText(played.isEmpty() ? Describe(*object, m_document.UnitOf(*object))
                                           : played);
    else if (m_selection->Count() > 0)
        m_status->setText(QStringLiteral("%1 objects are selected")
                              .arg(QLocale().toString(static_cast<qint64>(m_selection->Count()))));
    else if (files.empty())
        m_status->setText(QStringLiteral("Open a file with Ctrl+O, or drop it here."));
    else
        m_status->setText(CountsOf(files));
    m_size->setText(bounds ? SizeOf(*bounds, UnitOf(files), m_document.Backdrop().GridStep())
                           : QString());
}

/// The view turns about a move that is looked at, and about the middle where there is none.
void TMainWindow::TurnAboutSelected() {
    const TZEPObject* object = m_selection->Only();
    std::optional<TGLArrayd3> center;
    if (object && ProgramLineOf(*object)) {
        center.emplace();
        object->GetBoundingBoxAbsoluteCenter3Real((*center)[0], (*center)[1], (*center)[2]);
    }
    m_document.Camera()->SetOrbitCenter(center);
}

double TMainWindow::Aspect() const {
    return static_cast<double>(m_pages->width()) / std::max(1, m_pages->height());
}

} // namespace ZEP
