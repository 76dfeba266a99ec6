#pragma once

#include <QWidget>

class QVBoxLayout;

namespace ZEP {

/// What the window shows while nothing is open: how to open something, and the files opened last.
class TWelcomePage : public QWidget {
    Q_OBJECT
public:
    explicit TWelcomePage(QWidget* parent = nullptr);

    void SetRecentFiles(const QStringList& files);

signals:
    void OpenWanted();
    void FileWanted(const QString& file);

private:
    QVBoxLayout* m_recent;
};

} // namespace ZEP
