#include "viewer/window/MessagesModel.h"

#include "viewer/files/Document.h"
#include "viewer/window/Icons.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

QString Counted(qint64 count, const QString& one, const QString& many) {
    return (count == 1 ? one : many).arg(QLocale().toString(count));
}

/// "LWPOLYLINE", and no "code G68".
bool IsEntity(const QString& kind) {
    return kind == kind.toUpper() && !kind.contains(QLatin1Char(' '));
}

} // namespace

QString MessageText(TFileFormat format, const TPassedOver& message) {
    QString text = QStringLiteral("%1: %2").arg(message.Kind, QLocale().toString(message.Count));
    if (IsModel(format)) return text;
    const bool isEntity = format == TFileFormat::DXF && IsEntity(message.Kind);
    return text + (isEntity ? QStringLiteral(" not drawn") : QStringLiteral(" passed over"));
}

TMessagesModel::TMessagesModel(const TDocument& document, QObject* parent)
    : QAbstractTableModel(parent), m_document(document) {
    connect(&document, &TDocument::Changed, this, [this] {
        m_notes.clear();
        Fill();
    });
    Fill();
}

void TMessagesModel::SetNote(const QString& file, const QString& text, qint64 line) {
    m_notes[file] = {QFileInfo(file).fileName(), text, line, true};
    Fill();
}

void TMessagesModel::Fill() {
    beginResetModel();
    m_rows.clear();
    for (const TRow& note : std::as_const(m_notes)) m_rows.push_back(note);
    for (const TOpenedFile& file : m_document.Files())
        for (const TPassedOver& message : file.Messages)
            m_rows.push_back({QFileInfo(file.Name).fileName(), MessageText(file.Format, message),
                              message.FirstLine, false});
    endResetModel();
}

QString TMessagesModel::Summary() const {
    const qint64 notes = m_notes.size();
    const qint64 kinds = static_cast<qint64>(m_rows.size()) - notes;
    QStringList parts;
    if (notes > 0)
        parts << Counted(notes, QStringLiteral("%1 file is not up to date"),
                         QStringLiteral("%1 files are not up to date"));
    if (kinds > 0)
        parts << Counted(kinds, QStringLiteral("%1 kind passed over"),
                         QStringLiteral("%1 kinds passed over"));
    return parts.join(QStringLiteral(", "));
}

bool TMessagesModel::ChangesPicture() const {
    const auto changes = [](const TOpenedFile& file) {
        return !std::ranges::all_of(file.Messages, &TPassedOver::IsMinor);
    };
    return !m_notes.isEmpty() || std::ranges::any_of(m_document.Files(), changes);
}

QString TMessagesModel::ToText(const QModelIndexList& rows) const {
    QString text;
    for (const QModelIndex& index : rows) {
        const TRow& row = m_rows[static_cast<std::size_t>(index.row())];
        text += row.File;
        if (row.Line > 0) text += QStringLiteral(", line %1").arg(row.Line);
        text += QStringLiteral(": ") + row.Text + QLatin1Char('\n');
    }
    return text;
}

int TMessagesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TMessagesModel::columnCount(const QModelIndex&) const {
    return ColumnCount;
}

QVariant TMessagesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const TRow& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::ToolTipRole) return row.Text;
    if (role == Qt::DecorationRole && index.column() == FileColumn)
        return Icon(row.IsNote ? "warning" : "information");
    if (role != Qt::DisplayRole) return {};
    if (index.column() == FileColumn) return row.File;
    if (index.column() == TextColumn) return row.Text;
    return row.Line > 0 ? QVariant(QLocale().toString(row.Line)) : QVariant();
}

QVariant TMessagesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    static const QString Titles[] = {QStringLiteral("File"), QStringLiteral("Message"),
                                     QStringLiteral("First in line")};
    return Titles[section];
}

} // namespace ZEP
