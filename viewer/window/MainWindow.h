#pragma once

#include "viewer/files/Document.h"

#include <QMainWindow>

class QAction;
class QLabel;
class QMenu;
class QStackedWidget;
class QToolBar;

namespace ZEP {

class TContentsDock;
class TFileWatch;
class TLayoutTabs;
class TLoadBar;
class TMessagesDock;
class TPlayback;
class TProgramDock;
class TSelection;
class TSourceDock;
class TStockMenu;
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

    /// Shows these files in place of what is shown, from where they show best. What goes
    /// wrong is told in a dialog, and what was shown stays. During a load it is called off for this
    /// one.
    /// \param layout  name of the sheet that is shown first; empty: the model
    void OpenFiles(const QStringList& files, const QString& layout = {});
    /// Shows these in addition; those that are shown already are read again.
    void AddFiles(const QStringList& files);
    void CloseFile(const QString& file);
    /// Shows the start page again.
    void CloseAll();
    /// Saves what is shown as a scene or a drawing; see `TDocument::Save`. Raises `Exception`.
    void SaveAs(const QString& file);
    [[nodiscard]] const TDocument& Document() const { return m_document; }
    [[nodiscard]] TSelection* Selection() const { return m_selection; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    static constexpr int MessageTime = 5000; // ms, in the status line

    /// What is to be done with files.
    struct TRequest {
        QStringList Files;
        bool Adds = false; ///< to what is shown; those that are shown are read again
        bool KeepsView = false;
        bool IsQuiet = false; ///< what goes wrong stands among the messages
        QString Layout{};     ///< to be shown; empty: the model
    };

    void MakePages();
    void MakeStatusBar();
    void MakeDocks();
    void AddMenus();
    void PutOnBar(QAction* action, const char* icon);
    void AddFileMenu();
    void AddFileActions(QMenu* menu);
    void AddProgram();
    void AddViewMenu();
    void AddDocks(QMenu* menu);
    void AddViewOptions(QMenu* menu);
    void AddFullScreen(QMenu* menu);
    void AddHelpMenu();
    void ShowAbout();
    [[nodiscard]] QStringList AskForFiles(const QString& title);
    [[nodiscard]] QStringList FileNames() const;
    void Reload();
    [[nodiscard]] QString ProposedName(const char* suffix) const;
    void AskAndSave();
    void ListRecentFiles();
    void LookFrom(TDirection direction);
    void ShowInfo();
    void ShowStatus();
    void TurnAboutSelected();
    void Want(const TRequest& request);
    void LoadNext();
    bool Load(const TRequest& request);
    void ShowFiles();
    void FilesChangedOnDisk(const QStringList& files);
    void LookAt(const TRequest& request, bool wasEmpty);
    void EndLoad(const TRequest& request);
    void Tell(const QString& error);
    void TellFailures(bool quietly);
    [[nodiscard]] double Aspect() const;

    TDocument m_document;
    QStackedWidget* m_pages;
    TWelcomePage* m_welcome;
    TZEPPanel* m_panel;
    TLayoutTabs* m_layouts;
    TSelection* m_selection = nullptr; ///< owned by the panel
    TSourceDock* m_source = nullptr;
    TProgramDock* m_program = nullptr;
    TContentsDock* m_contents = nullptr;
    TMessagesDock* m_messages = nullptr;
    TFileWatch* m_watch;
    TPlayback* m_playback = nullptr;
    TStockMenu* m_stock = nullptr;
    TLoadBar* m_loadBar;
    QLabel* m_status;
    QLabel* m_size;
    QToolBar* m_bar;
    QMenu* m_recent = nullptr;
    QAction* m_reloads = nullptr; ///< files that change on disk are read again
    TViewOptions* m_viewOptions = nullptr;
    std::optional<TRequest> m_next; ///< to be done when the present load has ended
    bool m_plain;
    bool m_closed = false;
};

} // namespace ZEP
