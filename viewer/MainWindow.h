#pragma once

#include "viewer/Document.h"

#include <QMainWindow>

class QLabel;
class QMenu;

namespace ZEP {

class TZEPPanel;

/// The window of the viewer: a view of the document, menus, and a status line. Size, place and the
/// files opened last are remembered.
class TMainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// \param plain  read programs by the bare rules of their format
    explicit TMainWindow(bool plain);
    ~TMainWindow() override;

    /// Shows these files in place of what is shown, from the `Iso` direction. What goes wrong is
    /// told in a dialog, and what was shown stays.
    void OpenFiles(const QStringList& files);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void AddFileMenu();
    void AddViewMenu();
    void AddHelpMenu();
    void AskForFiles();
    void ListRecentFiles();
    void Remember(const QStringList& files);
    void LookFrom(TDirection direction);
    void ShowInfo();
    void ShowHelp();
    void ShowStatus();
    bool Load(const QStringList& files);
    [[nodiscard]] double Aspect() const;

    TDocument m_document;
    TZEPPanel* m_panel;
    QLabel* m_status;
    QMenu* m_recent = nullptr;
    bool m_plain;
};

} // namespace ZEP
