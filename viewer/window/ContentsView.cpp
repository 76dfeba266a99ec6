#include "viewer/window/ContentsView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

namespace ZEP {

namespace {

class TBoxDelegate : public QStyledItemDelegate {
public:
    explicit TBoxDelegate(TContentsView* view) : QStyledItemDelegate(view), m_view(view) {}

protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override {
        const bool isRelease = event->type() == QEvent::MouseButtonRelease;
        auto* mouse = isRelease ? static_cast<QMouseEvent*>(event) : nullptr;
        if (!mouse || !(mouse->modifiers() & (Qt::ShiftModifier | Qt::AltModifier)))
            return QStyledItemDelegate::editorEvent(event, model, option, index);
        QStyleOptionViewItem item(option);
        initStyleOption(&item, index);
        const QRect box =
            m_view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, m_view);
        if (!(item.features & QStyleOptionViewItem::HasCheckIndicator) ||
            !box.contains(mouse->position().toPoint()))
            return false;
        Q_EMIT m_view->OnlyWanted(index);
        return true;
    }

private:
    TContentsView* m_view;
};

bool IsTreeKey(const QKeyEvent& event) {
    if (event.modifiers() & ~(Qt::ShiftModifier | Qt::ControlModifier | Qt::KeypadModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Plus:
    case Qt::Key_Minus:
    case Qt::Key_Asterisk:
        return true;
    default:
        return false;
    }
}

} // namespace

TContentsView::TContentsView(QWidget* parent) : QTreeView(parent) {
    setItemDelegate(new TBoxDelegate(this));
    setUniformRowHeights(true); // a million rows are not measured one by one
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(false);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setFocusPolicy(Qt::ClickFocus); // else the keys of the window would be its own from the start
    header()->setStretchLastSection(false);
    connect(this, &QTreeView::doubleClicked, this, &TContentsView::FitWanted);
}

bool TContentsView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsTreeKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QTreeView::event(event);
}

void TContentsView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier)
        return Q_EMIT ToggleWanted();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return Q_EMIT FitWanted();
    QTreeView::keyPressEvent(event);
}

} // namespace ZEP
