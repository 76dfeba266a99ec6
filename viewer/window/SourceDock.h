#pragma once

#include "viewer/content/ProgramMoves.h"
#include "viewer/files/Programs.h"

#include <QDockWidget>
#include <QPointer>

class QListView;

namespace ZEP {

class TDocument;
class TSelection;
class TSourceModel;

/// The text of a program beside the view; hidden where there is none. The line of the selected
/// object is marked, and a line that is picked selects its object. Steps through the moves of the
/// program, also where its text is not there.
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
    /// Of the program, that made it, from 1; 1 for none.
    [[nodiscard]] int CurrentLine() const;
    /// Selects a move; beyond an end the last one there.
    void GoTo(int move);
    /// The first that a line makes, or the next line that makes one; none behind the last.
    [[nodiscard]] std::optional<int> MoveFrom(int line) const { return m_moves.ItemFrom(line); }
    /// The program whose moves these are; null: none.
    [[nodiscard]] const TProgram* Program() const { return ProgramOf(m_root); }
    /// Selects the first move that a line makes, and nothing where it makes none.
    void PickLine(int line);

Q_SIGNALS:
    /// Another program is there, or none, or it was read again. No move is selected yet.
    void ProgramChanged();
    /// Another move is selected.
    void Moved();

private:
    /// \param program  null: none
    void ShowProgram(const TProgram* program);
    void FollowSelection();
    [[nodiscard]] const TProgram* ProgramOf(const TZEPObject* root) const;

    const TDocument& m_document;
    TSelection* m_selection;
    TSourceModel* m_model;
    QListView* m_list;
    std::vector<TProgram> m_programs;
    TProgramMoves m_moves;
    QString m_shown;             ///< the file of the lines
    QPointer<TZEPObject> m_root; ///< of the program that is shown
    bool m_following = false;
    bool m_wanted = true; ///< where there is a program
};

} // namespace ZEP
