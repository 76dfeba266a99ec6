#pragma once

#include <QTreeView>

namespace ZEP {

/// A tree whose boxes can also be clicked with Shift or Alt, and which keeps its keys from the
/// shortcuts of the window while it has the focus.
class TContentsView : public QTreeView {
    Q_OBJECT
public:
    explicit TContentsView(QWidget* parent = nullptr);

Q_SIGNALS:
    /// A box was clicked with Shift or Alt.
    void OnlyWanted(const QModelIndex& index);
    /// Space was pressed.
    void ToggleWanted();
    /// A row was clicked twice, or Enter was pressed.
    void FitWanted();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace ZEP
