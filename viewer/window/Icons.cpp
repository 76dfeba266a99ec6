#include "viewer/window/Icons.h"

#include <zep/widgets/ObjectLook.h>

#include <QIcon>

/// A static library's resources are left out unless something asks for them.
static void UseResources() {
    Q_INIT_RESOURCE(zepview);
}

namespace ZEP {

QIcon Icon(const char* name) {
    UseResources();
    const QColor amber(0xc8, 0x7a, 0x00); // tells on bright and dark
    const bool isWarning = qstrcmp(name, "warning") == 0;
    return SymbolIcon(QStringLiteral(":/zepview/icons/%1.svg").arg(QLatin1String(name)),
                      isWarning ? amber : QColor());
}

} // namespace ZEP
