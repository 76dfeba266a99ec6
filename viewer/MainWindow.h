#pragma once

#include "viewer/Document.h"

#include <QMainWindow>

class QLabel;
class QMenu;
class QStackedWidget;

namespace ZEP {

class TLoadBar;
class TPlayback;
class TSelection;
class TSourceDock;
class TViewOptions;
class TWelcomePage;
class TZEPPanel;

/// The window of the viewer: a view of the document, menus, and a status line. Size, place,
/// bars and the files opened last are remembered. While a file is read the window stays in use.
class TMainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// \param plain  read programs by the bare rules of their format
    explicit TMainWindow(bool plain);
    ~TMainWindow() override;

    /// Shows these files in place of what is shown, from the `Iso` direction. What goes wrong is
    /// told in a dialog, and what was shown stays. During a load it is called off for this one.
    void OpenFiles(const QStringList& files);
    [[nodiscard]] const TDocument& Document() const { return m_document; }
    [[nodiscard]] TSelection* Selection() const { return m_selection; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void MakePages();
    void MakeStatusBar();
    void AddMenus();
    void AddFileMenu();
    void AddProgram();
    void AddViewMenu();
    void AddViewOptions(QMenu* menu);
    void AddCameraMenu();
    void AddHelpMenu();
    void AskForFiles();
    void Reload();
    void SaveSceneAs();
    void SavePicture();
    void Print();
    void ListRecentFiles();
    void LookFrom(TDirection direction);
    void FitSelection();
    void ShowInfo();
    void ShowHelp();
    void ShowStatus();
    void LoadNext();
    bool Load(const QStringList& files);
    void Tell(const QString& error);
    [[nodiscard]] double Aspect() const;

    TDocument m_document;
    QStackedWidget* m_pages;
    TWelcomePage* m_welcome;
    TZEPPanel* m_panel;
    TSelection* m_selection = nullptr; ///< owned by the panel
    TSourceDock* m_source = nullptr;
    TPlayback* m_playback = nullptr;
    TLoadBar* m_loadBar;
    QLabel* m_status;
    QLabel* m_size;
    QMenu* m_recent = nullptr;
    TViewOptions* m_viewOptions = nullptr;
    QStringList m_next; ///< to be opened when the present load has ended
    bool m_plain;
    bool m_keepView = false; ///< when the next files are shown
    bool m_closed = false;
};

} // namespace ZEP
