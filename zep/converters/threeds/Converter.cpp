#include <zep/converters/threeds/Converter.h>

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/converters/DumpFile.h>
#include <zep/converters/RootUpdate.h>
#include <zep/converters/threeds/Reader.h>
#include <zep/framework/FileText.h>
#include <zep/framework/Registry.h>
#include <zep/framework/UserError.h>

#include <QScopeGuard>

namespace ZEP {

namespace {

const TRegisterClass<TF3DSConverter> RegisteredF3DSConverter;

/// An update bracket around filling a library, which the host may free meanwhile.
class TLibraryUpdate {
public:
    explicit TLibraryUpdate(TZEPMaterialLibrary* library) : m_library(library) {
        if (m_library) m_library->Materials()->BeginUpdate();
    }
    ~TLibraryUpdate() {
        if (m_library) m_library->Materials()->EndUpdate();
    }
    Q_DISABLE_COPY_MOVE(TLibraryUpdate)

private:
    QPointer<TZEPMaterialLibrary> m_library;
};

} // namespace

TF3DSConverter::TF3DSConverter(TComponent* owner)
    : TFileConverter(owner, {QStringLiteral("TF3DSConverter"), QStringLiteral(".")}) {}

TF3DSConverter::~TF3DSConverter() = default;

TZEPMaterialLibrary* TF3DSConverter::Materials() const {
    return m_materials;
}

// Not asked to tell when it is removed: a library that only changes its owner stays in use.
void TF3DSConverter::SetMaterials(TZEPMaterialLibrary* materials) {
    m_materials = materials;
}

void TF3DSConverter::LoadFromFile() {
    CheckFile("LoadFromFile");
    if (m_doDump) m_dump = std::make_unique<TDumpFile>(FileName(), Method("Dump"));
    const auto closeDump = qScopeGuard([this] { m_dump.reset(); });
    if (m_dump) m_dump->Write(FileName().toStdString());
    const TRootUpdate update(Root());
    const TLibraryUpdate libraryUpdate(m_materials);
    ClearRoot("LoadFromFile");
    if (m_materials) m_materials->Materials()->Clear();
    CheckRoot("LoadFromFile");
    const TFileText file(FileName(), Method("LoadFromFile"));
    Read(file.Text(), {.Method = Method("LoadFromFile"), .File = FileName()});
    if (m_dump) m_dump->Finish();
}

void TF3DSConverter::SaveToFile() {
    throw Exception(QStringLiteral("Only import is supported."), {.Method = Method("SaveToFile")});
}

void TF3DSConverter::Read3DS(std::string_view bytes) {
    CheckRoot("Read3DS");
    Read(bytes, {.Method = Method("Read3DS")});
}

void TF3DSConverter::Read(std::string_view bytes, const TErrorOrigin& source) {
    if (!TF3DSReader::IsF3DS(bytes))
        throw TUserError(QStringLiteral("main chunk not found."),
                         QStringLiteral("It is no 3DS model: its main chunk is not there."),
                         {.Method = source.Method});
    m_report.Clear();
    SetCancelled(false);
    const TRootUpdate update(Root());
    const TLibraryUpdate libraryUpdate(m_materials);
    TF3DSTarget target{.Root = *Root(),
                       .Materials = m_materials,
                       .FileName = FileName(),
                       .Report = m_report,
                       .Extended = m_extended,
                       .Dump = {},
                       .Progress = ProgressOfBoth()};
    if (m_dump) target.Dump = [this](std::string_view text) { Dump(text); };
    SetCancelled(!Finishes([&] {
        TF3DSReader(bytes, source, std::move(target)).ReadFile();
        return true;
    }));
}

TProgress TF3DSConverter::ProgressOfBoth() const {
    TProgress progress = GuardedProgress();
    if (!progress) return {};
    return [this, progress = std::move(progress), materials = m_materials.data()](qint64 done,
                                                                                  qint64 total) {
        return progress(done, total) && m_materials == materials;
    };
}

int TF3DSConverter::FindMaterialIndex(const QString& name) const {
    if (!m_materials) return -1;
    const auto& items = *m_materials->Materials();
    for (int i = 0; i < items.Count(); ++i)
        if (items[i].Ident() == name) return i;
    return -1;
}

void TF3DSConverter::Dump(std::string_view text) {
    if (m_dump) m_dump->Append(text);
}

} // namespace ZEP
