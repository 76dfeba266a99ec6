#pragma once

#include <QAbstractListModel>
#include <QByteArray>

#include <vector>

namespace ZEP {

/// The lines of a text file as a list, each with its number. A million lines take the file itself
/// and four bytes a line; strings are made of what is seen.
class TSourceModel : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    /// Replaces the text. A file that cannot be read, or has 2 gigabytes, is empty. It is read, not
    /// mapped: a mapped file that another program makes shorter ends this one.
    void ReadFile(const QString& fileName);
    void SetText(QByteArray text);
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// \param row  0 for the first. \return without its end, at most some hundred characters
    [[nodiscard]] QString Line(int row) const;

private:
    QByteArray m_text;
    std::vector<qint32> m_starts;
};

} // namespace ZEP
