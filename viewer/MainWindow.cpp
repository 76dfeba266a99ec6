#include "viewer/MainWindow.h"

#include "framework/Exception.h"
#include "view/Panel.h"
#include "viewer/Describe.h"
#include "viewer/DetailControl.h"
#include "viewer/FileRoot.h"
#include "viewer/LoadBar.h"
#include "viewer/Playback.h"
#include "viewer/RecentFiles.h"
#include "viewer/Selection.h"
#include "viewer/SourceDock.h"
#include "viewer/ViewOptions.h"
#include "viewer/WelcomePage.h"

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

#include <algorithm>
#include <new>
#include <utility>

namespace ZEP {

namespace {

constexpr int MessageTime = 5000; // ms

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
    qint64 passedOver = 0;
    for (const TOpenedFile& file : files) {
        objects += file.Root->GetItemsCount();
        for (const TPassedOver& message : file.Messages) passedOver += message.Count;
    }
    const QLocale locale;
    QString text = NamesOf(files) + QStringLiteral(": ");
    text += objects > 0 ? QStringLiteral("%1 objects").arg(locale.toString(objects))
                        : QStringLiteral("nothing to draw");
    if (passedOver > 0)
        text +=
            QStringLiteral(", %1 passed over (Ctrl+I tells what)").arg(locale.toString(passedOver));
    return text;
}

QString SizeOf(const TBox& box, double gridStep) {
    const auto side = [&](std::size_t k) {
        return QLocale().toString(box.Max[k] - box.Min[k], 'f', 2);
    };
    return QStringLiteral("%1 x %2 x %3, grid %4")
        .arg(side(0), side(1), side(2), QLocale().toString(gridStep));
}

} // namespace

TMainWindow::TMainWindow(bool plain)
    : m_pages(new QStackedWidget(this)), m_welcome(new TWelcomePage), m_panel(new TZEPPanel),
      m_loadBar(new TLoadBar), m_status(new QLabel), m_size(new QLabel), m_plain(plain) {
    setWindowTitle(QStringLiteral("zepview"));
    setAcceptDrops(true);
    MakePages();
    AddMenus();
    MakeStatusBar();
    ShowStatus();
    resize(1100, 800);
    restoreGeometry(QSettings().value(GeometryKey).toByteArray());
    restoreState(QSettings().value(BarsKey).toByteArray());
    m_source->FilesChanged();
}

TMainWindow::~TMainWindow() {
    // What stands in the scene or looks at it goes before the document takes it away.
    delete m_playback;
    delete m_source;
    delete takeCentralWidget();
}

void TMainWindow::MakePages() {
    m_pages->addWidget(m_welcome);
    m_pages->addWidget(m_panel);
    setCentralWidget(m_pages);
    m_panel->SetCamera(m_document.Camera());
    new TDetailControl(m_panel, m_document);
    m_selection = new TSelection(m_panel, m_document.Scene());
    connect(m_selection, &TSelection::Changed, this, &TMainWindow::ShowStatus);
    m_welcome->SetRecentFiles(RecentFiles());
    connect(m_welcome, &TWelcomePage::OpenWanted, this, &TMainWindow::AskForFiles);
    connect(m_welcome, &TWelcomePage::FileWanted, this,
            [this](const QString& file) { OpenFiles({file}); });
}

void TMainWindow::AddViewOptions(QMenu* menu) {
    m_viewOptions = new TViewOptions(menu, this);
    m_viewOptions->AddView(std::make_unique<TDressedView>(
        m_panel, [this](const auto& color) { m_document.SetBackground(color); },
        [this] { return m_document.Backdrop().MiddleColor(); }));
    TStartScene& start = m_welcome->Start();
    m_viewOptions->AddView(std::make_unique<TDressedView>(
        m_welcome->View(), [this](const auto& color) { m_welcome->SetBackground(color); },
        [&start] { return start.Backdrop().MiddleColor(); }));
}

void TMainWindow::MakeStatusBar() {
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_loadBar);
    statusBar()->addPermanentWidget(m_size);
    m_size->setToolTip(QStringLiteral("Size of what is shown along x, y and z, and the distance of "
                                      "the grid's lines, in its own unit"));
}

void TMainWindow::OpenFiles(const QStringList& files) {
    if (files.isEmpty()) return;
    m_next = files;
    if (m_loadBar->IsLoading()) return m_loadBar->Cancel();
    while (!m_next.isEmpty() && !m_closed) LoadNext();
}

void TMainWindow::LoadNext() {
    const QStringList files = std::exchange(m_next, {});
    const bool keepView = std::exchange(m_keepView, false);
    try {
        if (!Load(files)) {
            statusBar()->showMessage(QStringLiteral("Cancelled."), MessageTime);
            return;
        }
    } catch (const Exception& error) {
        for (const QString& file : files)
            if (!QFileInfo::exists(file)) ForgetFile(file);
        return Tell(error.Message());
    } catch (const std::bad_alloc&) {
        return Tell(QStringLiteral("There is not enough memory to open %1.").arg(files.first()));
    }
    RememberFiles(files);
    setWindowTitle(NamesOf(m_document.Files()) + QStringLiteral(" - zepview"));
    statusBar()->clearMessage();
    m_viewOptions->Apply();
    ShowStatus();
    if (!keepView) LookFrom(TDirection::Iso);
    m_panel->setGeometry(m_pages->rect()); // before it is shown, which draws
    m_pages->setCurrentWidget(m_panel);
}

bool TMainWindow::Load(const QStringList& files) {
    const auto finish = qScopeGuard([this] { m_loadBar->Finish(); });
    m_loadBar->Start();
    const auto progress = [this](const QString& file, double fraction) {
        return m_loadBar->Progress(file, fraction);
    };
    if (!m_document.Open(files, m_plain, progress)) return false;
    m_selection->Forget();
    m_source->FilesChanged();
    return true;
}

void TMainWindow::Tell(const QString& error) {
    if (m_closed) return;
    QMessageBox::critical(this, QStringLiteral("Cannot open"), error);
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
    // Later, since the program that the files come from waits until this returns.
    QMetaObject::invokeMethod(
        this, [this, files = LocalFiles(*event->mimeData())] { OpenFiles(files); },
        Qt::QueuedConnection);
}

void TMainWindow::ShowStatus() {
    const auto& files = m_document.Files();
    const std::optional<TBox> bounds = m_document.Bounds();
    if (TZEPObject* object = m_selection->Only())
        m_status->setText(Describe(*object));
    else if (m_selection->Count() > 0)
        m_status->setText(QStringLiteral("%1 objects are selected")
                              .arg(QLocale().toString(static_cast<qint64>(m_selection->Count()))));
    else if (files.empty())
        m_status->setText(QStringLiteral("Open a program with Ctrl+O, or drop it here."));
    else
        m_status->setText(CountsOf(files));
    m_size->setText(bounds ? SizeOf(*bounds, m_document.Backdrop().GridStep()) : QString());
}

double TMainWindow::Aspect() const {
    return static_cast<double>(m_pages->width()) / std::max(1, m_pages->height());
}

} // namespace ZEP
