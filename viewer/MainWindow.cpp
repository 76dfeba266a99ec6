#include "viewer/MainWindow.h"

#include "framework/Exception.h"
#include "view/Panel.h"
#include "viewer/FileRoot.h"
#include "viewer/Info.h"
#include "viewer/OrbitControl.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressDialog>
#include <QSettings>
#include <QStatusBar>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int RecentFiles = 10;
constexpr int ProgressSteps = 1000;
constexpr int ProgressDelay = 300; // ms: shorter loads show no dialog

const QString GeometryKey = QStringLiteral("window/geometry");
const QString RecentKey = QStringLiteral("files/recent");
const QString FolderKey = QStringLiteral("files/folder");

QStringList LocalFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) files << url.toLocalFile();
    return files;
}

QString TitleOf(const std::vector<TOpenedFile>& files) {
    QStringList names;
    for (const TOpenedFile& file : files) names << QFileInfo(file.Name).fileName();
    return names.join(QStringLiteral(", "));
}

} // namespace

TMainWindow::TMainWindow(bool plain)
    : m_panel(new TZEPPanel(this)), m_status(new QLabel(this)), m_plain(plain) {
    setWindowTitle(QStringLiteral("zepview"));
    setAcceptDrops(true);
    setCentralWidget(m_panel);
    m_panel->SetCamera(m_document.Camera());
    m_panel->setToolTip(QStringLiteral("Left button: orbit. Right button: pan. Wheel: zoom."));
    new TOrbitControl(m_panel, m_document.Camera());
    AddFileMenu();
    AddViewMenu();
    AddHelpMenu();
    statusBar()->addWidget(m_status, 1);
    ShowStatus();
    resize(1100, 800);
    restoreGeometry(QSettings().value(GeometryKey).toByteArray());
}

TMainWindow::~TMainWindow() {
    // The panel lets go of the camera before the document takes it away.
    delete takeCentralWidget();
}

void TMainWindow::OpenFiles(const QStringList& files) {
    try {
        if (!Load(files)) {
            statusBar()->showMessage(QStringLiteral("Cancelled."), 5000);
            return;
        }
    } catch (const Exception& error) {
        QMessageBox::critical(this, QStringLiteral("Cannot open"), error.Message());
        return;
    }
    Remember(files);
    setWindowTitle(TitleOf(m_document.Files()) + QStringLiteral(" - zepview"));
    ShowStatus();
    LookFrom(TDirection::Iso);
}

bool TMainWindow::Load(const QStringList& files) {
    QProgressDialog dialog(this);
    dialog.setWindowTitle(QStringLiteral("Opening"));
    dialog.setLabelText(files.join(QLatin1Char('\n')));
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setRange(0, ProgressSteps);
    dialog.setMinimumDuration(ProgressDelay);
    return m_document.Open(files, m_plain, [&](qint64 done, qint64 total) {
        dialog.setValue(static_cast<int>(done * ProgressSteps / std::max<qint64>(total, 1)));
        return !dialog.wasCanceled();
    });
}

void TMainWindow::closeEvent(QCloseEvent* event) {
    QSettings().setValue(GeometryKey, saveGeometry());
    QMainWindow::closeEvent(event);
}

void TMainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void TMainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    OpenFiles(LocalFiles(*event->mimeData()));
}

void TMainWindow::AddFileMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&File"));
    menu->addAction(QStringLiteral("&Open..."), QKeySequence::Open, this, &TMainWindow::AskForFiles)
        ->setStatusTip(QStringLiteral("Open one or more programs in place of what is shown"));
    m_recent = menu->addMenu(QStringLiteral("Open &recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &TMainWindow::ListRecentFiles);
    menu->addAction(QStringLiteral("&Information..."), QKeySequence(Qt::CTRL | Qt::Key_I), this,
                    &TMainWindow::ShowInfo)
        ->setStatusTip(QStringLiteral("What is in the files, and what was passed over"));
    menu->addSeparator();
    menu->addAction(QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this,
                    &QWidget::close)
        ->setStatusTip(QStringLiteral("Close the window"));
}

void TMainWindow::AddViewMenu() {
    struct TEntry {
        QString Text;
        Qt::Key Key;
        TDirection Direction;
        QString Tip;
    };
    const TEntry entries[] = {
        {QStringLiteral("&Isometric"), Qt::Key_1, TDirection::Iso,
         QStringLiteral("From the front, right and above")},
        {QStringLiteral("&Top"), Qt::Key_2, TDirection::Top, QStringLiteral("Down along z")},
        {QStringLiteral("&Front"), Qt::Key_3, TDirection::Front, QStringLiteral("Along y")},
        {QStringLiteral("&Right"), Qt::Key_4, TDirection::Right, QStringLiteral("Against x")}};
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&View"));
    for (const TEntry& entry : entries) {
        const auto look = [this, direction = entry.Direction] { LookFrom(direction); };
        menu->addAction(entry.Text, QKeySequence(entry.Key), this, look)->setStatusTip(entry.Tip);
    }
    menu->addSeparator();
    menu->addAction(QStringLiteral("Fit &all"), QKeySequence(Qt::Key_F), this,
                    [this] { m_document.FitAll(Aspect()); })
        ->setStatusTip(QStringLiteral("The whole, from where you look now"));
}

void TMainWindow::AddHelpMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Help"));
    menu->addAction(QStringLiteral("&Mouse and keys"), QKeySequence::HelpContents, this,
                    &TMainWindow::ShowHelp);
}

void TMainWindow::AskForFiles() {
    QSettings settings;
    const QString filter = QStringLiteral("Programs (%1);;All files (*)")
                               .arg(ProgramPatterns().join(QLatin1Char(' ')));
    const QStringList files = QFileDialog::getOpenFileNames(
        this, QStringLiteral("Open"), settings.value(FolderKey).toString(), filter);
    if (!files.isEmpty()) OpenFiles(files);
}

void TMainWindow::ListRecentFiles() {
    m_recent->clear();
    for (const QString& file : QSettings().value(RecentKey).toStringList())
        m_recent->addAction(QString(file).replace(QLatin1Char('&'), QStringLiteral("&&")), this,
                            [this, file] { OpenFiles({file}); });
    if (m_recent->isEmpty()) m_recent->addAction(QStringLiteral("None yet"))->setEnabled(false);
}

void TMainWindow::Remember(const QStringList& files) {
    QSettings settings;
    QStringList recent = settings.value(RecentKey).toStringList();
    for (const QString& file : files) recent.prepend(QFileInfo(file).absoluteFilePath());
    recent.removeDuplicates();
    settings.setValue(RecentKey, recent.mid(0, RecentFiles));
    if (!files.isEmpty()) settings.setValue(FolderKey, QFileInfo(files.last()).absolutePath());
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
    QMessageBox::information(this, QStringLiteral("Mouse and keys"),
                             QStringLiteral("Left button: orbit\nRight button: pan\nWheel: zoom\n\n"
                                            "1, 2, 3, 4: isometric, top, front, right\n"
                                            "F: fit all\nCtrl+O: open\nCtrl+I: information\n"
                                            "Ctrl+Q: quit"));
}

void TMainWindow::ShowStatus() {
    qint64 objects = 0;
    qint64 passedOver = 0;
    for (const TOpenedFile& file : m_document.Files()) {
        objects += file.Root->GetItemsCount();
        for (const TPassedOver& message : file.Messages) passedOver += message.Count;
    }
    if (m_document.Files().empty())
        m_status->setText(QStringLiteral("Open a program with Ctrl+O, or drop it here."));
    else if (passedOver == 0)
        m_status->setText(QStringLiteral("%1 objects").arg(objects));
    else
        m_status->setText(QStringLiteral("%1 objects; %2 passed over (Ctrl+I tells what)")
                              .arg(objects)
                              .arg(passedOver));
}

double TMainWindow::Aspect() const {
    return static_cast<double>(m_panel->width()) / std::max(1, m_panel->height());
}

} // namespace ZEP
