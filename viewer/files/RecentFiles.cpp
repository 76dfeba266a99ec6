#include "viewer/files/RecentFiles.h"

#include <QFileInfo>
#include <QSettings>

namespace ZEP {

namespace {

constexpr int MostFiles = 10;

const QString Key = QStringLiteral("files/recent");

} // namespace

QStringList RecentFiles() {
    return QSettings().value(Key).toStringList();
}

void RememberFiles(const QStringList& files) {
    QStringList recent = RecentFiles();
    for (auto file = files.rbegin(); file != files.rend(); ++file)
        recent.prepend(QFileInfo(*file).absoluteFilePath());
    recent.removeDuplicates();
    QSettings().setValue(Key, recent.mid(0, MostFiles));
}

void ForgetFile(const QString& file) {
    QStringList recent = RecentFiles();
    recent.removeAll(QFileInfo(file).absoluteFilePath());
    QSettings().setValue(Key, recent);
}

QString RecentFolder() {
    const QStringList recent = RecentFiles();
    return recent.isEmpty() ? QString() : QFileInfo(recent.first()).absolutePath();
}

} // namespace ZEP
