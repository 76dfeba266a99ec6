#include "viewer/files/Reader.h"

#include "viewer/files/OpenedFile.h"
#include "viewer/files/SceneFile.h"
#include "viewer/files/StoredScene.h"
#include <zep/batch/Batch.h>
#include <zep/converters/assimp/Converter.h>
#include <zep/converters/dxf/Converter.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/converters/rs274d/DialectGuess.h>
#include <zep/converters/rs274d/ToolPath.h>
#include <zep/converters/threeds/Converter.h>

#include <QFile>
#include <QVariant>

namespace ZEP {

namespace {

template <class Converter>
void Convert(Converter& converter, TOpenedFile& file, const TLoadProgress& progress) {
    converter.SetRoot(file.Root);
    converter.SetFileName(file.Name);
    converter.SetProgress(progress);
    converter.LoadFromFile();
    for (const auto& entry : converter.Report().Entries())
        file.Messages.push_back({entry.Kind, entry.Count, entry.FirstLine, entry.IsMinor});
}

/// As its first part tells.
TRS274DDialect DialectOf(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return TRS274DDialect::NGC; // the converter says why
    const QByteArray head = file.read(static_cast<qint64>(RS274DGuessSize));
    return GuessRS274DDialect({head.data(), static_cast<std::size_t>(head.size())});
}

void ConvertProgram(TOpenedFile& file, bool plain, const TLoadProgress& progress) {
    TRS274DConverter converter;
    converter.SetExtended(!plain);
    if (!plain) {
        converter.SetDialect(DialectOf(file.Name));
        file.Dialect = QVariant::fromValue(converter.Dialect()).toString();
    }
    file.Path = std::make_shared<TToolPath>();
    converter.SetSink(file.Path.get());
    Convert(converter, file, progress);
}

void ConvertModel(TOpenedFile& file, TZEPMaterialLibrary& materials, bool plain,
                  const TLoadProgress& progress) {
    TF3DSConverter converter;
    converter.SetExtended(!plain);
    converter.SetMaterials(&materials);
    file.Root->SetParentComponent(file.Scene.get()); // which gets the colours of the model's scene
    Convert(converter, file, progress);
    file.Root->SetParentComponent(nullptr);
}

} // namespace

void ReadFile(TOpenedFile& file, TZEPMaterialLibrary& materials, bool plain,
              const TLoadProgress& progress) {
    if (file.Format == TFileFormat::Scene) return ReadScene(file, materials);
    file.Root = new TZEPBatch;
    file.Scene = std::make_shared<TStoredScene>();
    if (file.Format == TFileFormat::F3DS) return ConvertModel(file, materials, plain, progress);
    if (file.Format == TFileFormat::Model) {
        TAssimpConverter converter;
        converter.SetMaterials(&materials);
        return Convert(converter, file, progress);
    }
    if (file.Format == TFileFormat::DXF) {
        TDXFConverter converter;
        converter.SetExtended(!plain);
        return Convert(converter, file, progress);
    }
    ConvertProgram(file, plain, progress);
}

} // namespace ZEP
