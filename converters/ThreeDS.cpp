#include "converters/ThreeDS.h"

#include "appearance/MaterialLibrary.h"
#include "converters/DumpFile.h"
#include "converters/RootUpdate.h"
#include "converters/ThreeDSReader.h"
#include "framework/Exception.h"
#include "framework/MappedFile.h"
#include "framework/Registry.h"

#include <QScopeGuard>

namespace ZEP {

namespace {

const TRegisterClass<TF3DSConverter> Registered;

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

TF3DSConverter::TF3DSConverter(TComponent* owner) : TComponent(owner) {}

TF3DSConverter::~TF3DSConverter() = default;

void TF3DSConverter::SetRoot(TZEPObject* root) {
    if (root == m_root) return;
    if (m_root) m_root->RemoveFreeNotification(this);
    m_root = root;
    if (m_root) m_root->FreeNotification(this);
}

TZEPMaterialLibrary* TF3DSConverter::Materials() const {
    return m_materials;
}

// Not asked to tell when it is removed: a library that only changes its owner stays in use.
void TF3DSConverter::SetMaterials(TZEPMaterialLibrary* materials) {
    m_materials = materials;
}

void TF3DSConverter::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove && component == m_root) m_root = nullptr;
    TComponent::Notification(component, operation);
}

void TF3DSConverter::CheckRoot(const char* method) const {
    if (m_root) return;
    throw Exception(
        QStringLiteral("TF3DSConverter.%1: Can't load into Root=nil.").arg(QLatin1String(method)));
}

void TF3DSConverter::LoadFromFile() {
    const QString method = QStringLiteral("TF3DSConverter.LoadFromFile");
    CheckRoot("LoadFromFile");
    if (m_fileName.isEmpty()) throw Exception(method + QStringLiteral(": No file name defined."));
    if (m_doDump)
        m_dump = std::make_unique<TDumpFile>(m_fileName, QStringLiteral("TF3DSConverter.Dump"));
    const auto closeDump = qScopeGuard([this] { m_dump.reset(); });
    if (m_dump) m_dump->Write(m_fileName.toStdString());
    const TRootUpdate update(m_root);
    const TLibraryUpdate libraryUpdate(m_materials);
    if (m_clearBeforRead) m_root->Clear();
    if (m_materials) m_materials->Materials()->Clear();
    const TMappedFile file(m_fileName, method);
    if (!TF3DSReader::IsF3DS(file.Text()))
        throw Exception(method + QStringLiteral(": main chunk not found."));
    Read(file.Text(), QStringLiteral("%1: Can't read \"%2\"").arg(method, m_fileName));
    if (m_dump) m_dump->Finish();
}

void TF3DSConverter::SaveToFile() {
    throw Exception(QStringLiteral("TF3DSConverter.SaveToFile: Only import is supported."));
}

void TF3DSConverter::Read3DS(std::string_view bytes) {
    const QString method = QStringLiteral("TF3DSConverter.Read3DS");
    CheckRoot("Read3DS");
    if (!TF3DSReader::IsF3DS(bytes))
        throw Exception(method + QStringLiteral(": main chunk not found."));
    Read(bytes, method);
}

void TF3DSConverter::Read(std::string_view bytes, const QString& source) {
    m_report.Clear();
    m_cancelled = false;
    const TRootUpdate update(m_root);
    const TLibraryUpdate libraryUpdate(m_materials);
    TF3DSTarget target{.Root = *m_root,
                       .Materials = m_materials,
                       .FileName = m_fileName,
                       .Report = m_report,
                       .Dump = {},
                       .Progress = GuardedProgress()};
    if (m_dump) target.Dump = [this](std::string_view text) { Dump(text); };
    m_cancelled = !TF3DSReader(bytes, source, std::move(target)).ReadFile();
}

/// The host may free or replace the root and the library while it is asked: then there is nothing
/// to read into.
TProgress TF3DSConverter::GuardedProgress() const {
    if (!m_progress) return {};
    return [this, root = m_root, materials = m_materials.data()](qint64 done, qint64 total) {
        return m_progress(done, total) && m_root == root && m_materials == materials;
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
