#pragma once

#include <zep/scene/Object.h>

#include <QObject>
#include <QPoint>

#include <functional>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;

namespace ZEP {

class TContentsModel;
class TSelection;
class TZEPPanel;

/// The menu "&Edit" of the window, and the same as the context menu of the view: what can be done
/// with what is selected. Escape deselects.
class TEditMenu : public QObject {
    Q_OBJECT
public:
    /// \param window  owns this
    TEditMenu(QMainWindow* window, TZEPPanel* panel, TSelection* selection,
              TContentsModel* contents);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void FitWanted(const std::vector<ZEP::TZEPObject*>& objects);
    /// Of the context menu.
    void FitAllWanted();

private:
    void AddActions(QMenu* menu);
    void Follow();
    void AskWhatToDo(const QPoint& place);

    TZEPPanel* m_panel;
    TSelection* m_selection;
    TContentsModel* m_contents;
    std::vector<QAction*> m_ofSelected; ///< need something that is selected
    QMenu* m_context;
    QPoint m_press;
};

} // namespace ZEP
