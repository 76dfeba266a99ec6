#include "viewer/window/ContentsDock.h"

#include "viewer/files/Document.h"
#include "viewer/window/ContentsModel.h"
#include "viewer/window/ContentsView.h"
#include <zep/scene/Object.h>
#include <zep/widgets/SceneSelection.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QShortcut>
#include <QTimerEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int TypingTime = 200;     // ms
constexpr int ExpandedAtOnce = 200; // rows of a search that are opened
constexpr int LargestOpened = 500;  // layers or objects of a file that is opened

QString PathOf(const QModelIndex& index) {
    const QString name = index.data().toString();
    return index.parent().isValid() ? PathOf(index.parent()) + QLatin1Char('\n') + name : name;
}

bool HasParts(const TOpenedFile& file) {
    return file.Format != TFileFormat::RS274D;
}

} // namespace

TContentsDock::TContentsDock(QWidget* parent, TDocument& document)
    : TShownDock(QStringLiteral("Contents"), QStringLiteral("ContentsDock"), parent),
      m_document(document), m_model(new TContentsModel(document, this)), m_tree(new TContentsView),
      m_search(new QLineEdit), m_found(new QLabel) {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    m_search->setPlaceholderText(QStringLiteral("Find by name or kind"));
    m_search->setClearButtonEnabled(true);
    layout->addWidget(m_search);
    layout->addWidget(m_tree);
    layout->addWidget(m_found);
    m_found->hide();
    setWidget(page);
    MakeTree();
    auto* leave = new QShortcut(Qt::Key_Escape, m_search, nullptr, nullptr, Qt::WidgetShortcut);
    connect(leave, &QShortcut::activated, this, [this] {
        m_search->clear();
        m_tree->setFocus();
    });
    connect(m_search, &QLineEdit::textChanged, this, [this] { m_typing.start(TypingTime, this); });
    connect(&document, &TDocument::Changed, this, &TContentsDock::FilesChanged);
}

void TContentsDock::MakeTree() {
    m_tree->setModel(m_model);
    connect(m_model, &TContentsModel::modelAboutToBeReset, this, &TContentsDock::KeepExpanded);
    QHeaderView* header = m_tree->header();
    header->setSectionResizeMode(TContentsModel::NameColumn, QHeaderView::Stretch);
    header->setMinimumSectionSize(20);
    header->setSectionResizeMode(TContentsModel::ColorColumn, QHeaderView::Fixed);
    header->resizeSection(TContentsModel::ColorColumn, 28);
    header->setSectionResizeMode(TContentsModel::CountColumn, QHeaderView::Interactive);
    header->resizeSection(TContentsModel::CountColumn, 78);
    connect(m_tree, &TContentsView::OnlyWanted, this, [this](const QModelIndex& index) {
        m_model->ShowOnly({TContentsModel::ObjectAt(index)});
    });
    connect(m_tree, &TContentsView::ToggleWanted, this, &TContentsDock::Toggle);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &TContentsDock::AskWhatToDo);
    connect(m_tree, &TContentsView::FitWanted, this, [this] { Q_EMIT FitWanted(SelectedRows()); });
    auto* selection = new TZEPSceneSelection(m_model, m_tree->selectionModel(), this);
    selection->SetRowsMeanLeaves(true); // a layer does not show that it is selected
    connect(selection, &TZEPSceneSelection::Followed, this, [this](const QModelIndex& first) {
        if (isVisible()) m_tree->scrollTo(first);
    });
}

void TContentsDock::Focus() {
    show();
    m_tree->setFocus();
}

void TContentsDock::Find() {
    show();
    m_search->setFocus();
    m_search->selectAll();
}

// --- files -------------------------------------------------------------------------------------

void TContentsDock::FilesChanged() {
    const auto& files = m_document.Files();
    Offer(files.size() > 1 || std::ranges::any_of(files, HasParts));
    Expand();
}

/// What is open stays open when a file is read again, and comes back after a search.
void TContentsDock::KeepExpanded() {
    if (m_model->rowCount() == 0 || m_model->IsFiltered()) return;
    m_expanded.clear();
    for (int i = 0; i < m_model->rowCount(); ++i) {
        const QModelIndex file = m_model->index(i, 0);
        m_expanded << PathOf(file) + (m_tree->isExpanded(file) ? QString() : QStringLiteral("\n"));
        const int count = m_tree->isExpanded(file) ? m_model->rowCount(file) : 0;
        for (int k = 0; k < std::min(count, LargestOpened); ++k)
            if (const QModelIndex child = m_model->index(k, 0, file); m_tree->isExpanded(child))
                m_expanded << PathOf(child);
    }
}

void TContentsDock::Expand() {
    for (int i = 0; i < m_model->rowCount(); ++i) {
        const QModelIndex file = m_model->index(i, 0);
        const int count = m_model->rowCount(file);
        const QString path = PathOf(file);
        const bool isNew = !m_expanded.contains(path) && !m_expanded.contains(path + '\n');
        const bool opens = isNew ? count <= LargestOpened : m_expanded.contains(path);
        m_tree->setExpanded(file, opens);
        for (int k = 0; !isNew && opens && k < std::min(count, LargestOpened); ++k)
            if (const QModelIndex child = m_model->index(k, 0, file);
                m_expanded.contains(PathOf(child)))
                m_tree->expand(child);
    }
}

// --- search ------------------------------------------------------------------------------------

void TContentsDock::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_typing.timerId()) return TShownDock::timerEvent(event);
    m_typing.stop();
    m_model->Search(m_search->text().trimmed());
    ShowFound();
}

void TContentsDock::ShowFound() {
    const bool isSearch = !m_search->text().trimmed().isEmpty();
    m_found->setVisible(isSearch);
    m_found->setText(m_model->Found() == 0
                         ? QStringLiteral("Nothing of that name")
                         : QStringLiteral("%1 found").arg(QLocale().toString(m_model->Found())));
    if (!isSearch) return Expand();
    int left = ExpandedAtOnce;
    const auto open = [&](const auto& self, const QModelIndex& index) -> void {
        const int count = m_model->rowCount(index);
        left -= count;
        if (left < 0) return;
        m_tree->expand(index);
        for (int i = 0; i < count; ++i) self(self, m_model->index(i, 0, index));
    };
    for (int i = 0; i < m_model->rowCount(); ++i) open(open, m_model->index(i, 0));
}

// --- selection ---------------------------------------------------------------------------------

std::vector<TZEPObject*> TContentsDock::SelectedRows() const {
    std::vector<TZEPObject*> objects;
    for (const QModelIndex& index : m_tree->selectionModel()->selectedRows())
        objects.push_back(TContentsModel::ObjectAt(index));
    return objects;
}

// --- what is seen ------------------------------------------------------------------------------

void TContentsDock::Toggle() {
    const QModelIndex current = m_tree->currentIndex();
    if (!current.isValid()) return;
    std::vector<TZEPObject*> objects = SelectedRows();
    if (objects.empty()) objects.push_back(TContentsModel::ObjectAt(current));
    const int state = current.siblingAtColumn(0).data(Qt::CheckStateRole).toInt();
    m_model->SetShown(objects, state != Qt::Checked);
}

void TContentsDock::AskWhatToDo(const QPoint& place) {
    const QModelIndex index = m_tree->indexAt(place).siblingAtColumn(0);
    const std::vector<TZEPObject*> objects = SelectedRows();
    QMenu menu;
    if (!objects.empty()) {
        menu.addAction(QStringLiteral("&Show"), this, [&] { m_model->SetShown(objects, true); });
        menu.addAction(QStringLiteral("&Hide"), this, [&] { m_model->SetShown(objects, false); });
        menu.addAction(QStringLiteral("Show &only this"), this,
                       [&] { m_model->ShowOnly(objects); });
    }
    menu.addAction(QStringLiteral("Show &all"), this, [&] { m_model->ShowAll(); });
    if (!objects.empty()) {
        menu.addSeparator();
        menu.addAction(QStringLiteral("&Fit"), this, [&] { Q_EMIT FitWanted(objects); });
    }
    if (index.isValid()) {
        const QString file = m_model->FileOf(index);
        menu.addSeparator();
        menu.addAction(QStringLiteral("&Reload file"), this,
                       [=, this] { Q_EMIT ReloadWanted(file); });
        menu.addAction(QStringLiteral("&Close file"), this,
                       [=, this] { Q_EMIT CloseWanted(file); });
    }
    menu.exec(m_tree->viewport()->mapToGlobal(place));
}

} // namespace ZEP
