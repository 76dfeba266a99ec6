#pragma once

#include "viewer/window/ShownDock.h"

class QToolButton;
class QTreeView;

namespace ZEP {

class TDocument;
class TMessagesModel;

/// What was passed over in the files, below the view. It appears by itself when the picture
/// is not as the files have it, unless the user has closed it; a button for the status bar sums up
/// all that there is to tell.
class TMessagesDock : public TShownDock {
    Q_OBJECT
public:
    TMessagesDock(QWidget* parent, TDocument& document);

    /// Of a file that could not be read again: it stands here, and the dock appears.
    void SetNote(const QString& file, const QString& text, qint64 line);
    /// Hidden where there is nothing to tell; a click opens the dock.
    [[nodiscard]] QToolButton* Badge() const { return m_badge; }
    /// The messages that are selected, else all, to the clipboard.
    void Copy();

private:
    void MakeList();
    void Update();

    TMessagesModel* m_model;
    QTreeView* m_list;
    QToolButton* m_badge;
};

} // namespace ZEP
