#pragma once

#include "viewer/files/OpenedFile.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QFileSystemWatcher>

#include <vector>

namespace ZEP {

/// Watches files on the disk, also those that a program replaces by another of the same name. A
/// change is told once the file has stayed as it is for a moment.
class TFileWatch : public QObject {
    Q_OBJECT
public:
    explicit TFileWatch(QObject* parent = nullptr);

    /// Watches these from now on. What has changed since they were read is told, too.
    void Watch(const std::vector<TOpenedFile>& files);

Q_SIGNALS:
    void Changed(const QStringList& files);
    void Vanished(const QString& file);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct TEntry {
        QString File;
        TFileState Told; ///< as the listener knows it
        TFileState Last;
        QElapsedTimer Since; ///< it has been so
    };

    void Look();
    void Tell();

    QFileSystemWatcher m_watcher;
    QBasicTimer m_timer;
    std::vector<TEntry> m_entries;
};

} // namespace ZEP
