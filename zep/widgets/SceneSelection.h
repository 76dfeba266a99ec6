#pragma once

#include <zep/Export.h>

#include <QObject>

#include <memory>
#include <vector>

class QItemSelectionModel;
class QModelIndex;

namespace ZEP {

class TZEPObject;
class TZEPSceneModel;

/// Keeps the rows that are selected in a view of a `TZEPSceneModel` and the objects that are
/// selected in its scene alike. What is selected in the view is selected in the scene at once; the
/// rows follow the scene when the event loop runs next. So they do where the scene's events
/// deselect again what the view has selected.
///
/// Objects outside of the model's tree are left alone. Either side may go away first.
class ZEP_EXPORT TZEPSceneSelection : public QObject {
    Q_OBJECT
public:
    /// \param rows  of a view that shows `model` itself
    TZEPSceneSelection(TZEPSceneModel* model, QItemSelectionModel* rows, QObject* parent = nullptr);
    ~TZEPSceneSelection() override;

    /// A row stands for the objects below it that have none below themselves, not for its own;
    /// off by default. Groups that hold nothing stand for nothing.
    void SetRowsMeanLeaves(bool leaves);
    /// Rows that stand for more objects than that select none; 20,000 by default.
    void SetMostObjects(std::size_t count);

    /// Those of the scene that are selected, in no stated order.
    [[nodiscard]] std::vector<TZEPObject*> Objects() const;

Q_SIGNALS:
    /// Rows have been selected, as their objects were. At most some 500 rows or runs of rows are;
    /// of more objects none. \param first  a row among them
    void Followed(const QModelIndex& first);

private:
    class TSync;

    std::unique_ptr<TSync> m_sync;
};

} // namespace ZEP
