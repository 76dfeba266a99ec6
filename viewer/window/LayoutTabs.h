#pragma once

#include <QPointer>
#include <QTabBar>

#include <functional>
#include <vector>

class QMenu;

namespace ZEP {

class TDocument;
class TZEPLayout;

/// Below the view: a tab for the model and one for each sheet of the files. It is not there where
/// there are no sheets.
class TLayoutTabs : public QTabBar {
    Q_OBJECT
public:
    /// \param aspect  of the view
    TLayoutTabs(TDocument& document, std::function<double()> aspect);

    /// Entries for the next sheet and the one before.
    void AddTo(QMenu* menu);

private:
    void List();
    void Follow();
    void Show(int tab);
    void Step(int way);

    TDocument& m_document;
    std::function<double()> m_aspect;
    std::vector<QPointer<TZEPLayout>> m_layouts; ///< by tab; null for the model
    std::vector<QAction*> m_steps;
};

} // namespace ZEP
