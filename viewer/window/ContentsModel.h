#pragma once

#include <zep/widgets/SceneModel.h>

namespace ZEP {

class TDocument;
class TShownHistory;

/// The files of a document as a tree of their objects, in the words of the viewer.
class TContentsModel : public TZEPSceneModel {
    Q_OBJECT
public:
    explicit TContentsModel(TDocument& document, QObject* parent = nullptr);

    /// Name of the file that the row stands in.
    [[nodiscard]] QString FileOf(const QModelIndex& index) const;
    /// Leaves what has the text in its name or kind, without case; empty: all.
    void Search(const QString& text);

    /// \name What is shown and hidden here can be undone
    /// @{
    void SetShown(const std::vector<TZEPObject*>& objects, bool shown);
    void ShowOnly(const std::vector<TZEPObject*>& objects);
    void ShowAll();
    [[nodiscard]] TShownHistory& History() { return *m_history; }
    /// @}

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    void Fill();
    [[nodiscard]] QVariant FileData(const QModelIndex& index, int role) const;

    TDocument& m_document;
    TShownHistory* m_history;
};

} // namespace ZEP
