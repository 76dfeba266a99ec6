#include "viewer/window/SourceDock.h"

#include "viewer/content/Describe.h"
#include "viewer/files/Document.h"
#include "viewer/window/Selection.h"
#include "viewer/window/SourceModel.h"
#include <zep/batch/Batch.h>

#include <QAction>
#include <QFileInfo>
#include <QFontDatabase>
#include <QListView>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

constexpr int NarrowestText = 36; // characters

} // namespace

TSourceDock::TSourceDock(QWidget* parent, const TDocument& document, TSelection* selection)
    : QDockWidget(QStringLiteral("Program"), parent), m_document(document), m_selection(selection),
      m_model(new TSourceModel(this)), m_list(new QListView) {
    setObjectName(QStringLiteral("SourceDock"));
    setWidget(m_list);
    m_list->setModel(m_model);
    m_list->setUniformItemSizes(true);
    m_list->setMinimumWidth(m_list->fontMetrics().averageCharWidth() * NarrowestText);
    m_list->setFocusPolicy(Qt::NoFocus); // the arrow keys step from move to move
    m_list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(toggleViewAction(), &QAction::triggered, this, [this](bool on) { m_wanted = on; });
    connect(m_selection, &TSelection::Changed, this, &TSourceDock::FollowSelection);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) {
                if (!m_following && index.isValid()) PickLine(index.row() + 1);
            });
}

const TProgram* TSourceDock::ProgramOf(const TZEPObject* root) const {
    const auto found = std::ranges::find(m_programs, root, &TProgram::Root);
    return !root || found == m_programs.end() ? nullptr : &*found;
}

void TSourceDock::FilesChanged() {
    m_programs = ProgramsOf(m_document.Files());
    ShowProgram(m_programs.empty() ? nullptr : m_programs.data());
    setVisible(m_wanted && m_model->rowCount() > 0);
}

void TSourceDock::ShowProgram(const TProgram* program) {
    const QScopedValueRollback following(m_following, true);
    const QString text = program ? program->Text : QString();
    m_root = program ? program->Root : nullptr;
    m_moves = program ? TProgramMoves(*program->Root) : TProgramMoves();
    if (text.isEmpty())
        m_model->SetText({});
    else
        m_model->ReadFile(text);
    if (std::exchange(m_shown, text) != text) m_list->scrollToTop();
    setWindowTitle(text.isEmpty() ? QStringLiteral("Program") : QFileInfo(text).fileName());
    Q_EMIT ProgramChanged();
}

void TSourceDock::FollowSelection() {
    const TZEPObject* object = m_selection->Only();
    const TProgram* program = object ? ProgramOf(object->Parent()) : nullptr;
    if (program && program->Root != m_root) ShowProgram(program);
    const QScopedValueRollback following(m_following, true);
    if (program) {
        const QModelIndex index = m_model->index(ProgramLineOf(*object).value_or(0) - 1);
        m_list->setCurrentIndex(index);
        const int across = m_list->horizontalScrollBar()->value();
        m_list->scrollTo(index);
        m_list->horizontalScrollBar()->setValue(across);
    } else if (m_moves.ItemOf(m_list->currentIndex().row() + 1)) {
        m_list->setCurrentIndex({});
        m_list->clearSelection();
    }
    Q_EMIT Moved();
}

void TSourceDock::PickLine(int line) {
    const std::optional<int> item = m_moves.ItemOf(line);
    m_selection->SelectOnly(item && m_root ? m_root->GetItem(*item) : nullptr);
}

int TSourceDock::MoveCount() const {
    return m_root ? m_root->GetItemsCount() : 0;
}

int TSourceDock::CurrentMove() const {
    const TZEPObject* object = m_selection->Only();
    return object && m_root && object->Parent() == m_root ? object->GetItemIndex() : -1;
}

int TSourceDock::CurrentLine() const {
    const int move = CurrentMove();
    return move < 0 ? 1 : ProgramLineOf(*m_root->GetItem(move)).value_or(1);
}

void TSourceDock::GoTo(int move) {
    if (MoveCount() == 0) return;
    m_selection->SelectOnly(m_root->GetItem(std::clamp(move, 0, MoveCount() - 1)));
}

} // namespace ZEP
