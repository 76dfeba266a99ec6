#include "viewer/window/ShownDock.h"

#include <QAction>
#include <QCloseEvent>
#include <QSettings>

namespace ZEP {

TShownDock::TShownDock(const QString& title, const QString& name, QWidget* parent)
    : QDockWidget(title, parent), m_key(QStringLiteral("docks/") + name),
      m_wanted(QSettings().value(m_key, true).toBool()) {
    setObjectName(name);
    connect(toggleViewAction(), &QAction::triggered, this, &TShownDock::SetWanted);
}

void TShownDock::Offer(bool hasContent) {
    setVisible(hasContent && m_wanted);
}

void TShownDock::SetWanted(bool wanted) {
    m_wanted = wanted;
    QSettings().setValue(m_key, wanted);
}

void TShownDock::closeEvent(QCloseEvent* event) {
    SetWanted(false);
    QDockWidget::closeEvent(event);
}

} // namespace ZEP
