#pragma once

#include <QObject>

#include <functional>

class QAction;
class QMainWindow;
class QMenu;

namespace ZEP {

class TDocument;
class TSelection;
class TZEPCamera;

/// The menu "&Camera" of the window: fits, the projection, and the cameras that the files hold.
class TCameraMenu : public QObject {
    Q_OBJECT
public:
    /// \param window  owns this
    /// \param aspect  width to height of the view
    TCameraMenu(QMainWindow* window, TDocument& document, TSelection* selection,
                std::function<double()> aspect);
    [[nodiscard]] QAction* FitAll() const { return m_fitAll; }

Q_SIGNALS:
    /// The whole is to be seen, but nothing is open.
    void StartWanted();

private:
    void FilesChanged();
    void ListCameras();
    void Choose(const TZEPCamera& camera);

    TDocument& m_document;
    std::function<double()> m_aspect;
    QMenu* m_cameras = nullptr;
    QAction* m_fitAll = nullptr;
    QAction* m_parallel = nullptr;
};

} // namespace ZEP
