#pragma once

#include <QDockWidget>

namespace ZEP {

/// A dock that appears by itself where there is something in it, unless its user has closed it;
/// that is remembered.
class TShownDock : public QDockWidget {
    Q_OBJECT
public:
    /// \param name  of the object, and in the settings
    TShownDock(const QString& title, const QString& name, QWidget* parent);

    /// There is something to be shown, or there is not.
    void Offer(bool hasContent);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void SetWanted(bool wanted);

    QString m_key;
    bool m_wanted;
};

} // namespace ZEP
