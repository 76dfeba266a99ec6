#include "viewer/files/DrawingSaving.h"

#include "viewer/files/OpenedFile.h"
#include <zep/ZEPDXF.h>
#include <zep/batch/Batch.h>
#include <zep/framework/Exception.h>
#include <zep/framework/FileSaving.h>

namespace ZEP {

std::vector<TPassedOver> SaveDrawing(std::span<const TOpenedFile> files, const QString& fileName) {
    std::vector<TZEPObject*> roots;
    for (const TOpenedFile& file : files) {
        if (IsSameFile(file.Name, fileName))
            throw Exception(QStringLiteral("It is shown from this file, of which a part would be "
                                           "lost: choose another name."),
                            {.File = fileName});
        roots.push_back(file.Root);
    }
    TDXFConverter converter;
    SaveFile(fileName, [&](QIODevice& device) { converter.WriteDXF(device, roots); });
    std::vector<TPassedOver> left;
    for (const auto& entry : converter.Report().Entries())
        left.push_back({.Kind = entry.Kind, .Count = entry.Count});
    return left;
}

bool IsDrawingName(const QString& fileName) {
    return fileName.endsWith(QStringLiteral(".dxf"), Qt::CaseInsensitive);
}

} // namespace ZEP
