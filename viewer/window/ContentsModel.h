#pragma once

#include "viewer/content/Visibility.h"
#include "viewer/window/ContentsFilter.h"

#include <QAbstractItemModel>

namespace ZEP {

class TDocument;
class TZEPObject;

/// The files of a document as a tree of their objects: name with a box that shows and hides,
/// colour, number of objects below. A row has no data of its own: a million of them cost nothing
/// until they are looked at.
class TContentsModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum TColumn { NameColumn, ColorColumn, CountColumn, ColumnCount };

    explicit TContentsModel(TDocument& document, QObject* parent = nullptr);

    [[nodiscard]] static TZEPObject* ObjectAt(const QModelIndex& index);
    /// Invalid for what is not in the tree, or not found by the search.
    [[nodiscard]] QModelIndex IndexOf(const TZEPObject& object) const;
    /// Name of the file that the row stands in.
    [[nodiscard]] QString FileOf(const QModelIndex& index) const;

    /// Leaves what has the text in its name or kind; empty: all.
    void SetFilter(const QString& text);
    [[nodiscard]] bool IsFiltered() const { return !m_text.isEmpty(); }
    [[nodiscard]] qint64 Found() const { return m_filter.Found(); }

    void SetShown(const std::vector<TZEPObject*>& objects, bool shown);
    void ShowOnly(const std::vector<TZEPObject*>& objects);
    void ShowAll();

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    /// Something is shown or hidden.
    void VisibilityChanged();

private:
    void Fill();
    template <class Change>
    void ChangeVisibility(Change&& change);
    [[nodiscard]] QVariant NameData(TZEPObject& object, int role) const;
    [[nodiscard]] QString TipOf(TZEPObject& object) const;

    TDocument& m_document;
    TContentsFilter m_filter;
    TVisibility m_visibility;
    std::vector<TZEPObject*> m_roots; ///< of all files
    std::vector<TZEPObject*> m_shown; ///< those that the search leaves
    QString m_text;
};

} // namespace ZEP
