#pragma once

#include <zep/widgets/SceneModel.h>

namespace ZEP {

class TDocument;

/// The files of a document as a tree of their objects, in the words of the viewer.
class TContentsModel : public TZEPSceneModel {
    Q_OBJECT
public:
    explicit TContentsModel(TDocument& document, QObject* parent = nullptr);

    /// Name of the file that the row stands in.
    [[nodiscard]] QString FileOf(const QModelIndex& index) const;
    /// Leaves what has the text in its name or kind, without case; empty: all.
    void Search(const QString& text);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    void Fill();
    [[nodiscard]] QVariant FileData(const QModelIndex& index, int role) const;

    TDocument& m_document;
};

} // namespace ZEP
