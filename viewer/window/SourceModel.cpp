#include "viewer/window/SourceModel.h"

#include <zep/converters/LineSource.h>

#include <QFile>

#include <algorithm>
#include <limits>
#include <utility>

namespace ZEP {

namespace {

constexpr qsizetype LongestShown = 300;

} // namespace

void TSourceModel::ReadFile(const QString& fileName) {
    QFile file(fileName);
    const bool readable =
        file.open(QIODevice::ReadOnly) && file.size() < std::numeric_limits<qint32>::max();
    SetText(readable ? file.readAll() : QByteArray());
}

void TSourceModel::SetText(QByteArray text) {
    beginResetModel();
    m_text = std::move(text);
    m_starts.clear();
    const char* begin = m_text.constData();
    TLineSource source({begin, static_cast<std::size_t>(m_text.size())});
    for (std::string_view line; source.Next(line);)
        m_starts.push_back(static_cast<qint32>(line.data() - begin));
    endResetModel();
}

int TSourceModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_starts.size());
}

QVariant TSourceModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::ToolTipRole) return Line(index.row());
    if (role != Qt::DisplayRole) return {};
    const auto width = static_cast<int>(QString::number(m_starts.size()).size());
    return QStringLiteral("%1  %2").arg(index.row() + 1, width).arg(Line(index.row()));
}

QString TSourceModel::Line(int row) const {
    if (row < 0 || row >= rowCount()) return {};
    const char* text = m_text.constData() + m_starts[static_cast<std::size_t>(row)];
    const qsizetype rest = m_text.constData() + m_text.size() - text;
    const char* last = text + std::min(rest, LongestShown);
    const char* end = std::find_if(text, last, [](char c) { return c == '\n' || c == '\r'; });
    return QString::fromUtf8(text, end - text);
}

} // namespace ZEP
