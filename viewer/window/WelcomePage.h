#pragma once

#include "viewer/window/StartScene.h"

#include <QWidget>

class QVBoxLayout;

namespace ZEP {

class TZEPPanel;

/// What the window shows while nothing is open: a scene that moves while it is seen and turns under
/// the mouse, and beside it how to open something, and the files opened last.
class TWelcomePage : public QWidget {
    Q_OBJECT
public:
    explicit TWelcomePage(QWidget* parent = nullptr);
    ~TWelcomePage() override;

    [[nodiscard]] TZEPPanel* View() const { return m_view; }
    [[nodiscard]] TStartScene& Start() { return m_start; }

    /// One colour behind scene and text in place of those of its own; the text stays readable.
    void SetBackground(const std::optional<TColor>& color);
    void SetRecentFiles(const QStringList& files);

Q_SIGNALS:
    void OpenWanted();
    void FileWanted(const QString& file);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QWidget* MakeSide();

    TStartScene m_start;
    TZEPPanel* m_view;
    QVBoxLayout* m_recent;
};

} // namespace ZEP
