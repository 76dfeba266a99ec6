#pragma once

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

namespace ZEP {

/// How far a load is, and a button to cancel it. Keeps the program alive meanwhile: all its windows
/// stay in use. It shows itself when a load takes longer than a moment.
class TLoadBar : public QWidget {
    Q_OBJECT
public:
    explicit TLoadBar(QWidget* parent = nullptr);

    /// A load begins; between this and `Finish` no other one does.
    void Start();
    /// Handles what the user has done. \param fraction  0 to 1
    /// \return false when the load is to be cancelled
    [[nodiscard]] bool Progress(const QString& file, double fraction);
    void Finish();
    void Cancel() { m_cancelled = true; }
    [[nodiscard]] bool IsLoading() const { return m_loading; }

private:
    QLabel* m_label;
    QProgressBar* m_bar;
    QElapsedTimer m_sinceStart, m_sinceEvents;
    bool m_loading = false;
    bool m_cancelled = false;
};

} // namespace ZEP
