#include "viewer/window/ShownHistory.h"

#include "viewer/files/Document.h"
#include <zep/batch/Batch.h>
#include <zep/scene/ForEach.h>
#include <zep/scene/Scene.h>

#include <QPointer>

#include <utility>
#include <vector>

namespace ZEP {

namespace {

/// Of all that stands in the files, in the order of a walk.
std::vector<bool> FlagsOf(const TDocument& document) {
    std::vector<bool> flags;
    for (const TOpenedFile& file : document.Files()) {
        flags.push_back(file.Root->Visible());
        ForEachObject(*file.Root,
                      [&flags](const TZEPObject& object) { flags.push_back(object.Visible()); });
    }
    return flags;
}

using TObjects = std::vector<QPointer<TZEPObject>>;

/// What differs from those flags.
TObjects ChangedSince(const std::vector<bool>& flags, const TDocument& document) {
    TObjects changed;
    std::size_t at = 0;
    const auto look = [&](TZEPObject& object) {
        if (at < flags.size() && flags[at] != object.Visible()) changed.emplace_back(&object);
        ++at;
    };
    for (const TOpenedFile& file : document.Files()) {
        look(*file.Root);
        ForEachObject(*file.Root, look);
    }
    return changed;
}

/// Objects whose flags it turns: back and forth are the same.
class TTurn : public QUndoCommand {
public:
    TTurn(const QString& text, TObjects objects)
        : QUndoCommand(text), m_objects(std::move(objects)) {}

    void undo() override { Turn(); }
    void redo() override {
        if (!std::exchange(m_isNew, false)) Turn();
    }

private:
    void Turn() {
        for (const QPointer<TZEPObject>& object : m_objects)
            if (object) object->SetVisible(!object->Visible());
    }

    TObjects m_objects;
    bool m_isNew = true; ///< what it tells of has just been done
};

} // namespace

TShownHistory::TShownHistory(TDocument& document, QObject* parent)
    : QObject(parent), m_document(document) {
    connect(&document, &TDocument::AboutToChange, &m_stack, &QUndoStack::clear);
}

void TShownHistory::Record(const QString& text, const std::function<void()>& change) {
    const std::vector<bool> before = FlagsOf(m_document);
    change();
    TObjects changed = ChangedSince(before, m_document);
    if (!changed.empty()) m_stack.push(new TTurn(text, std::move(changed)));
}

} // namespace ZEP
