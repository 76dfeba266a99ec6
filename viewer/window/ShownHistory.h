#pragma once

#include <QObject>
#include <QUndoStack>

#include <functional>

namespace ZEP {

class TDocument;

/// What was shown and hidden in the files, to be undone. It begins anew with other files.
class TShownHistory : public QObject {
    Q_OBJECT
public:
    explicit TShownHistory(TDocument& document, QObject* parent = nullptr);

    /// Calls `change`, which shows and hides objects; nothing is noted where it does neither.
    /// \param text  what it does, in the menu: "hide"
    void Record(const QString& text, const std::function<void()>& change);
    [[nodiscard]] QUndoStack& Stack() { return m_stack; }

private:
    TDocument& m_document;
    QUndoStack m_stack;
};

} // namespace ZEP
