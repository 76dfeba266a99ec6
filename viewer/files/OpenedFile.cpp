#include "viewer/files/OpenedFile.h"

#include <zep/framework/UserError.h>

#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace ZEP {

TFileState TFileState::Of(const QString& fileName) {
    const QFileInfo info(fileName);
    if (!info.isFile()) return {};
    return {info.size(), info.lastModified()};
}

TFailure::TFailure(const QString& file, const std::exception& error)
    : File(file), Error(ErrorReport(error, file)), Reason(ErrorReason(error)) {
    if (const auto* raised = dynamic_cast<const Exception*>(&error))
        Line = raised->Origin().Place.Line;
}

QString ReportOf(const std::vector<TFailure>& failures) {
    constexpr std::size_t most = 10;
    QStringList errors;
    for (std::size_t i = 0; i < std::min(failures.size(), most); ++i) errors << failures[i].Error;
    if (failures.size() > most)
        errors << QStringLiteral("%1 more files cannot be opened.").arg(failures.size() - most);
    return errors.join(QLatin1Char('\n'));
}

} // namespace ZEP
