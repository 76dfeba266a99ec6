#include <zep/Version.h>

namespace ZEP {

QString LibraryVersion() {
    return QStringLiteral(ZEP_VERSION_STR);
}

} // namespace ZEP
