#pragma once

#include <QAction>

namespace ZEP {

/// \param tip  what the status line says while the pointer is over it
inline QAction* Explained(QAction* action, const QString& tip) {
    action->setStatusTip(tip);
    return action;
}

} // namespace ZEP
