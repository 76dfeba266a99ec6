#include "viewer/files/FileWatch.h"

#include <QFileInfo>
#include <QTimerEvent>

#include <algorithm>

namespace ZEP {

namespace {

constexpr int Step = 100;   // ms
constexpr int Steady = 300; // ms without a change: whoever writes it has done

} // namespace

TFileWatch::TFileWatch(QObject* parent) : QObject(parent) {
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &TFileWatch::Look);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &TFileWatch::Look);
}

void TFileWatch::Watch(const std::vector<TOpenedFile>& files) {
    const QStringList before = m_watcher.files() + m_watcher.directories();
    if (!before.isEmpty()) m_watcher.removePaths(before);
    m_entries.clear();
    for (const TOpenedFile& file : files) {
        m_entries.push_back({file.Name, file.State, file.State, {}});
        m_entries.back().Since.start();
        // A file that is replaced is no longer watched itself.
        m_watcher.addPath(QFileInfo(file.Name).absolutePath());
    }
    Look();
}

void TFileWatch::Look() {
    for (TEntry& entry : m_entries) {
        if (QFileInfo::exists(entry.File) && !m_watcher.files().contains(entry.File))
            m_watcher.addPath(entry.File);
        const TFileState state = TFileState::Of(entry.File);
        if (state == entry.Last) continue;
        entry.Last = state;
        entry.Since.restart();
    }
    const bool isNews = std::ranges::any_of(
        m_entries, [](const TEntry& entry) { return entry.Last != entry.Told; });
    if (!isNews)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(Step, this);
}

void TFileWatch::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId()) return QObject::timerEvent(event);
    Look();
    Tell();
}

void TFileWatch::Tell() {
    QStringList changed, vanished;
    for (TEntry& entry : m_entries) {
        if (entry.Last == entry.Told || entry.Since.elapsed() < Steady) continue;
        entry.Told = entry.Last;
        (entry.Last.Exists() ? changed : vanished) << entry.File;
    }
    for (const QString& file : vanished) Q_EMIT Vanished(file);
    if (!changed.isEmpty()) Q_EMIT Changed(changed);
}

} // namespace ZEP
