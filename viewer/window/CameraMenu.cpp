#include "viewer/window/CameraMenu.h"

#include "viewer/files/Document.h"
#include "viewer/files/FileCameras.h"
#include "viewer/window/Selection.h"
#include "viewer/window/StatusTip.h"

#include <zep/view/Fitting.h>

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <utility>

namespace ZEP {

namespace {

constexpr int MostKeys = 9; // Ctrl+1 to Ctrl+9

} // namespace

TCameraMenu::TCameraMenu(QMainWindow* window, TDocument& document, TSelection* selection,
                         std::function<double()> aspect)
    : QObject(window), m_document(document), m_aspect(std::move(aspect)) {
    QMenu* menu = window->menuBar()->addMenu(QStringLiteral("&Camera"));
    const auto add = [&](const QString& text, Qt::Key key, const QString& tip, auto&& call) {
        const auto look = [this, call] { m_document.Files().empty() ? StartWanted() : call(); };
        return Explained(menu->addAction(text, QKeySequence(key), this, look), tip);
    };
    add(QStringLiteral("Fit &selection"), Qt::Key_F,
        QStringLiteral("What is selected, or the whole, from where you look now"),
        [this, selection] { m_document.FitObjects(selection->Objects(), m_aspect()); });
    m_fitAll = add(QStringLiteral("Fit &all"), Qt::Key_A,
                   QStringLiteral("The whole, from where you look now"),
                   [this] { m_document.FitAll(m_aspect()); });
    add(QStringLiteral("&Reset"), Qt::Key_Home,
        QStringLiteral("Back to the last standard view or fit"),
        [this] { m_document.Camera()->Reset(); });
    m_parallel = menu->addAction(QStringLiteral("&Orthographic"), QKeySequence(Qt::Key_X));
    m_parallel->setCheckable(true);
    Explained(m_parallel, QStringLiteral("Parallel lines stay parallel"));
    connect(m_parallel, &QAction::toggled, this,
            [this](bool on) { SwitchProjection(*m_document.Camera(), on, m_aspect()); });
    connect(&document, &TDocument::ProjectionChanged, m_parallel, &QAction::setChecked);
    menu->addSeparator();
    m_cameras = menu->addMenu(QStringLiteral("&Cameras in the file"));
    connect(&document, &TDocument::AboutToChange, m_cameras, &QMenu::clear);
    connect(&document, &TDocument::Changed, this, &TCameraMenu::FilesChanged);
    FilesChanged();
}

void TCameraMenu::FilesChanged() {
    m_parallel->setEnabled(!m_document.Files().empty());
    ListCameras();
}

void TCameraMenu::ListCameras() {
    m_cameras->clear();
    int key = 0;
    for (const auto& [name, camera] : CamerasOf(m_document.Files())) {
        QAction* action =
            m_cameras->addAction(QString(name).replace(QLatin1Char('&'), QStringLiteral("&&")),
                                 this, [this, camera = camera] { Choose(*camera); });
        Explained(action, QStringLiteral("Look from where this camera stands"));
        if (++key <= MostKeys)
            action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + key)));
    }
    m_cameras->setEnabled(key > 0);
}

void TCameraMenu::Choose(const TZEPCamera& camera) {
    m_parallel->setChecked(camera.Orthographic());
    LookThrough(camera, m_document);
}

} // namespace ZEP
