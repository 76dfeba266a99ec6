#pragma once

#include "viewer/content/ProgramMoves.h"

#include <QDockWidget>

class QListView;

namespace ZEP {

class TDocument;
class TSelection;
class TSourceModel;
class TZEPObject;
struct TOpenedFile;

/// The text of a program beside the view; hidden where there is none. The line of the selected
/// object is marked, and a line that is picked selects its object. Steps through the moves of the
/// program.
class TSourceDock : public QDockWidget {
    Q_OBJECT
public:
    TSourceDock(QWidget* parent, const TDocument& document, TSelection* selection);

    /// Other files are shown now.
    void FilesChanged();
    /// The moves of the program, in the order of the tool.
    [[nodiscard]] int MoveCount() const;
    /// Which of them is selected; -1 for none.
    [[nodiscard]] int CurrentMove() const;
    /// Selects a move; beyond an end the last one there.
    void GoTo(int move);

signals:
    /// Another move is selected, or the program has changed.
    void Moved();

private:
    void ShowProgram(const TOpenedFile* file);
    void FollowSelection();
    void PickLine(int line);
    [[nodiscard]] const TOpenedFile* ProgramOf(const TZEPObject* root) const;

    const TDocument& m_document;
    TSelection* m_selection;
    TSourceModel* m_model;
    QListView* m_list;
    TProgramMoves m_moves;
    TZEPObject* m_root = nullptr; ///< of the program that is shown
    bool m_following = false;
    bool m_wanted = true; ///< where there is a program
};

} // namespace ZEP
