#include "viewer/window/MessagesDock.h"

#include "viewer/files/Document.h"
#include "viewer/window/Icons.h"
#include "viewer/window/MessagesModel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QIcon>
#include <QToolButton>
#include <QTreeView>

namespace ZEP {

TMessagesDock::TMessagesDock(QWidget* parent, TDocument& document)
    : TShownDock(QStringLiteral("Messages"), QStringLiteral("MessagesDock"), parent),
      m_model(new TMessagesModel(document, this)), m_list(new QTreeView),
      m_badge(new QToolButton(this)) {
    MakeList();
    setWidget(m_list);
    m_badge->setAutoRaise(true);
    m_badge->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_badge->setIcon(Icon("warning"));
    m_badge->setToolTip(QStringLiteral("Show what was passed over"));
    m_badge->setFocusPolicy(Qt::NoFocus);
    connect(m_badge, &QToolButton::clicked, this, [this] {
        if (!isVisible()) toggleViewAction()->trigger();
        raise();
    });
    connect(&document, &TDocument::Changed, this, &TMessagesDock::Update);
    Update();
}

void TMessagesDock::MakeList() {
    m_list->setModel(m_model);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setFocusPolicy(Qt::ClickFocus);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(TMessagesModel::FileColumn,
                                           QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(TMessagesModel::TextColumn, QHeaderView::Stretch);
    auto* copy = new QAction(QStringLiteral("&Copy"), m_list);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &TMessagesDock::Copy);
    m_list->addAction(copy);
}

void TMessagesDock::SetNote(const QString& file, const QString& text, qint64 line) {
    m_model->SetNote(file, text, line);
    Update();
}

void TMessagesDock::Update() {
    const QString summary = m_model->Summary();
    m_badge->setText(summary);
    m_badge->setVisible(!summary.isEmpty());
    Offer(m_model->ChangesPicture());
}

void TMessagesDock::Copy() {
    QModelIndexList rows = m_list->selectionModel()->selectedRows();
    for (int i = 0; rows.isEmpty() && i < m_model->rowCount(); ++i) rows << m_model->index(i, 0);
    QApplication::clipboard()->setText(m_model->ToText(rows));
}

} // namespace ZEP
