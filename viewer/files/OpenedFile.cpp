#include "viewer/files/OpenedFile.h"

#include <QFileInfo>

namespace ZEP {

TFileState TFileState::Of(const QString& fileName) {
    const QFileInfo info(fileName);
    if (!info.isFile()) return {};
    return {info.size(), info.lastModified()};
}

} // namespace ZEP
