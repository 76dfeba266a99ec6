#include "viewer/Reader.h"

#include "converters/RS274D.h"
#include "framework/Exception.h"
#include "scene/Object.h"
#include "viewer/SceneFile.h"

namespace ZEP {

namespace {

std::vector<TPassedOver> ReadProgram(TZEPObject& root, const QString& fileName, bool plain,
                                     const TLoadProgress& progress) {
    TRS274DConverter converter;
    converter.SetRoot(&root);
    converter.SetFileName(fileName);
    converter.SetExtended(!plain);
    converter.SetProgress(progress);
    try {
        converter.LoadFromFile();
    } catch (const Exception& error) {
        throw Exception(fileName + QStringLiteral(": ") + error.Message());
    }
    std::vector<TPassedOver> passedOver;
    for (const auto& entry : converter.Report().Entries())
        passedOver.push_back({entry.Kind, entry.Count, entry.FirstLine});
    return passedOver;
}

} // namespace

std::vector<TPassedOver> ReadFile(TZEPObject& root, const QString& fileName, TFileFormat format,
                                  bool plain, const TLoadProgress& progress) {
    if (format == TFileFormat::Scene) return ReadScene(root, fileName);
    return ReadProgram(root, fileName, plain, progress);
}

} // namespace ZEP
