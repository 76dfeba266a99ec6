#pragma once

#include <QStringList>

namespace ZEP {

/// The files opened last, the latest first, as the user's settings keep them.
[[nodiscard]] QStringList RecentFiles();
/// These were opened: they move to the front.
void RememberFiles(const QStringList& files);
/// It could not be opened.
void ForgetFile(const QString& file);
/// Of the file opened last; empty where there was none.
[[nodiscard]] QString RecentFolder();

} // namespace ZEP
