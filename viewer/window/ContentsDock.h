#pragma once

#include "viewer/window/ShownDock.h"
#include <zep/scene/Object.h>

#include <QBasicTimer>

#include <vector>

class QLabel;
class QLineEdit;
class QPoint;

namespace ZEP {

class TContentsModel;
class TContentsView;
class TDocument;

/// What is in the files, as a tree beside the view: boxes show and hide, a line searches by name.
/// Rows and objects are selected together. It appears by itself for files with layers or separate
/// objects, unless the user has closed it.
class TContentsDock : public TShownDock {
    Q_OBJECT
public:
    TContentsDock(QWidget* parent, TDocument& document);

    [[nodiscard]] TContentsModel* Model() const { return m_model; }
    /// Opens it, and gives it the keys.
    void Focus();
    /// Opens it, to type what is to be found.
    void Find();

Q_SIGNALS:
    void FitWanted(const std::vector<ZEP::TZEPObject*>& objects);
    void CloseWanted(const QString& file);
    void ReloadWanted(const QString& file);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void MakeTree();
    void FilesChanged();
    void KeepExpanded();
    void Expand();
    void ShowFound();
    void Toggle();
    void AskWhatToDo(const QPoint& place);
    [[nodiscard]] std::vector<TZEPObject*> SelectedRows() const;

    TDocument& m_document;
    TContentsModel* m_model;
    TContentsView* m_tree;
    QLineEdit* m_search;
    QLabel* m_found;
    QBasicTimer m_typing;
    QStringList m_expanded; ///< names of files, and of what is right below them
};

} // namespace ZEP
