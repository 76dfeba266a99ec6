#include "tests/converters/threeds/ThreeDSBytes.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/converters/threeds/Converter.h>
#include <zep/scene/Scene.h>

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace ZEP {
namespace {

/// A model of one material with the picture that lies beside it.
class TModel {
public:
    TModel() { Put("model.3ds", QByteArray::fromStdString(F3DS::File(F3DS::Textured("picture")))); }
    void Put(const char* name, const QByteArray& bytes) const {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) std::abort();
    }
    void Read() const {
        TZEPScene scene;
        TZEPMaterialLibrary library;
        TF3DSConverter converter;
        converter.SetRoot(&scene);
        converter.SetMaterials(&library);
        converter.SetFileName(m_folder.filePath(QStringLiteral("model.3ds")));
        converter.LoadFromFile();
        if (library.Materials()->Count() != 1) std::abort();
        const bool isThere = library.Materials()->Item(0)->Material()->HasTexture();
        if (isThere != converter.Report().Entries().empty()) std::abort();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace
} // namespace ZEP

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

/// Reads any bytes as a picture beside a model.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ZEP::TModel model;
    model.Put("picture", {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
    model.Read();
    return 0;
}
