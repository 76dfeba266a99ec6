#include "viewer/files/Reader.h"

#include "viewer/files/SceneFile.h"
#include <zep/converters/dxf/Converter.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/converters/threeds/Converter.h>
#include <zep/framework/Exception.h>
#include <zep/scene/Object.h>

#include <QRegularExpression>

namespace ZEP {

namespace {

/// Without the method that raised it, but with the file.
QString ForUser(QString message, const QString& fileName) {
    static const QRegularExpression Method(QStringLiteral("^T\\w+Converter\\.\\w+: "));
    message.remove(Method);
    return message.contains(fileName) ? message : fileName + QStringLiteral(": ") + message;
}

template <class Converter>
std::vector<TPassedOver> Convert(Converter& converter, TZEPObject& root, const QString& fileName,
                                 const TLoadProgress& progress) {
    converter.SetRoot(&root);
    converter.SetFileName(fileName);
    converter.SetProgress(progress);
    try {
        converter.LoadFromFile();
    } catch (const Exception& error) {
        throw Exception(ForUser(error.Message(), fileName));
    }
    std::vector<TPassedOver> passedOver;
    for (const auto& entry : converter.Report().Entries())
        passedOver.push_back({entry.Kind, entry.Count, entry.FirstLine});
    return passedOver;
}

} // namespace

std::vector<TPassedOver> ReadFile(const TReadTarget& target, const QString& fileName,
                                  TFileFormat format, bool plain, const TLoadProgress& progress) {
    switch (format) {
    case TFileFormat::Scene:
        return ReadScene(target, fileName);
    case TFileFormat::DXF: {
        TDXFConverter converter;
        converter.SetExtended(!plain);
        return Convert(converter, *target.Root, fileName, progress);
    }
    case TFileFormat::F3DS: {
        TF3DSConverter converter;
        converter.SetMaterials(target.Materials);
        return Convert(converter, *target.Root, fileName, progress);
    }
    default: {
        TRS274DConverter converter;
        converter.SetExtended(!plain);
        return Convert(converter, *target.Root, fileName, progress);
    }
    }
}

} // namespace ZEP
