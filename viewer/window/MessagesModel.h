#pragma once

#include "viewer/files/OpenedFile.h"

#include <QAbstractTableModel>
#include <QMap>

namespace ZEP {

class TDocument;

/// What readers passed over in the files of a document, a row for each kind, and what else is to be
/// told of a file.
class TMessagesModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum TColumn { FileColumn, TextColumn, LineColumn, ColumnCount };

    explicit TMessagesModel(const TDocument& document, QObject* parent = nullptr);

    /// Stands above the others until files are opened, read again or closed.
    /// \param line  of the file; 0: none
    void SetNote(const QString& file, const QString& text, qint64 line = 0);
    /// "3 kinds passed over", "1 kind passed over", "1 file is not up to date"; empty for none.
    [[nodiscard]] QString Summary() const;
    /// Some of them tell of a picture that is not as the files have it.
    [[nodiscard]] bool ChangesPicture() const;
    /// The rows as lines: "a.dxf, line 1204: LWPOLYLINE: 312 not drawn".
    [[nodiscard]] QString ToText(const QModelIndexList& rows) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    struct TRow {
        QString File; ///< without its folder
        QString Text;
        qint64 Line = 0; ///< 0: none
        bool IsNote = false;
    };

    void Fill();

    const TDocument& m_document;
    QMap<QString, TRow> m_notes; ///< by the file's name
    std::vector<TRow> m_rows;
};

/// "LWPOLYLINE: 312 not drawn", without the line.
[[nodiscard]] QString MessageText(TFileFormat format, const TPassedOver& message);

} // namespace ZEP
