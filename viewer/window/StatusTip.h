#pragma once

#include <QAction>
#include <QKeySequence>

namespace ZEP {

/// \param tip  what the status line says while the pointer is over it; as a tool tip its keys, too
inline QAction* Explained(QAction* action, const QString& tip) {
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    action->setStatusTip(tip);
    action->setToolTip(keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys));
    return action;
}

} // namespace ZEP
