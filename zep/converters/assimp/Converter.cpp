#include <zep/converters/assimp/Converter.h>

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Registry.h>
#include <zep/framework/UserError.h>

#if __has_include(<assimp/cimport.h>)
#include <zep/converters/Placing.h>
#include <zep/converters/RootUpdate.h>
#include <zep/converters/assimp/Files.h>
#include <zep/converters/assimp/Objects.h>
#include <zep/framework/ReadBudget.h>

#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#endif

#include <QFileInfo>
#include <QScopeGuard>

namespace ZEP {

namespace {

const TRegisterClass<TAssimpConverter> RegisteredAssimpConverter;

} // namespace

TAssimpConverter::TAssimpConverter(TComponent* owner)
    : TFileConverter(owner, {QStringLiteral("TAssimpConverter"), QStringLiteral(".")}) {}

const QStringList& TAssimpConverter::Suffixes() {
    static const QStringList suffixes{
        QStringLiteral("stl"), QStringLiteral("obj"), QStringLiteral("ply"), QStringLiteral("gltf"),
        QStringLiteral("glb"), QStringLiteral("fbx"), QStringLiteral("dae"), QStringLiteral("3mf"),
        QStringLiteral("amf"), QStringLiteral("off"), QStringLiteral("x3d"), QStringLiteral("lwo"),
        QStringLiteral("ac"),  QStringLiteral("ase"), QStringLiteral("x")};
    return suffixes;
}

TZEPMaterialLibrary* TAssimpConverter::Materials() const {
    return m_materials;
}

void TAssimpConverter::SetMaterials(TZEPMaterialLibrary* materials) {
    m_materials = materials;
}

bool TAssimpConverter::IsTurned() const {
    static const QStringList turned{QStringLiteral("gltf"), QStringLiteral("glb"),
                                    QStringLiteral("fbx"),  QStringLiteral("dae"),
                                    QStringLiteral("obj"),  QStringLiteral("x3d")};
    if (m_upAxis != uaOfFormat) return m_upAxis == uaY;
    return turned.contains(QFileInfo(FileName()).suffix().toLower());
}

void TAssimpConverter::LoadFromFile() {
    CheckFile("LoadFromFile");
    if (!IsAvailable())
        throw TUserError(QStringLiteral("Can't read \"%1\": the library Assimp is not installed.")
                             .arg(FileName()),
                         QStringLiteral("Models of this kind need the library Assimp: install it."),
                         {.Method = Method("LoadFromFile"), .File = FileName()});
    Read();
}

#if __has_include(<assimp/cimport.h>)

namespace {

/// Triangles alone, each vertex once, without what is not used.
constexpr unsigned Steps = aiProcess_Triangulate | aiProcess_JoinIdenticalVertices |
                           aiProcess_SortByPType | aiProcess_RemoveComponent |
                           aiProcess_ValidateDataStructure;
constexpr int Unused = aiComponent_NORMALS | aiComponent_TANGENTS_AND_BITANGENTS |
                       aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS;

/// A model in the memory of Assimp; null where it refuses it.
class TImported {
public:
    TImported(const TAssimpLibrary& assimp, TAssimpFiles& files) : m_assimp(assimp) {
        aiPropertyStore* options = assimp.CreateOptions();
        const auto release = qScopeGuard([&] { assimp.ReleaseOptions(options); });
        assimp.SetOption(options, AI_CONFIG_PP_RVC_FLAGS, Unused);
        m_model = assimp.Import(files.ModelName().constData(), Steps, &files.Access(), options);
        // A cloud of points, which is no valid model to it.
        if (!m_model && !files.IsCancelled() && files.ModelName().endsWith(".ply"))
            m_model = assimp.Import(files.ModelName().constData(), 0, &files.Access(), options);
    }
    ~TImported() {
        if (m_model) m_assimp.Release(m_model);
    }
    Q_DISABLE_COPY_MOVE(TImported)

    [[nodiscard]] const aiScene* Model() const { return m_model; }

private:
    const TAssimpLibrary& m_assimp;
    const aiScene* m_model = nullptr;
};

} // namespace

bool TAssimpConverter::IsAvailable() {
    return TAssimpLibrary::Instance() != nullptr;
}

void TAssimpConverter::Read() {
    const TRootUpdate update(Root());
    ClearRoot("LoadFromFile");
    m_report.Clear();
    SetCancelled(false);
    const TFileText text(FileName(), Method("LoadFromFile"));
    const TProgress progress = GuardedProgress();
    const auto fail = [this](const QString& reason) -> void {
        throw TUserError(QStringLiteral("Can't read \"%1\": %2").arg(FileName(), reason), reason,
                         {.Method = Method("LoadFromFile"), .File = FileName()});
    };
    SetCancelled(!Finishes([&] {
        const TAssimpLibrary& assimp = *TAssimpLibrary::Instance();
        TAssimpFiles files(FileName(), text, progress);
        const TImported imported(assimp, files);
        if (files.IsCancelled()) return false;
        const aiScene* model = imported.Model();
        if (!model || !model->mRootNode) {
            const QString reason = QString::fromUtf8(assimp.ErrorString()).simplified();
            fail(reason.isEmpty() ? QStringLiteral("it is no model.") : reason + u'.');
        }
        TReadBudget budget(files.Bytes());
        TAssimpMaterials materials(assimp, *model, FileName(), budget, m_report);
        const int first = m_materials ? m_materials->Materials()->Count() : -1;
        if (m_materials) materials.Read(*m_materials);
        const auto total = static_cast<qint64>(text.Text().size());
        TAssimpTarget target{.Root = RootThere(),
                             .FirstMaterial = first,
                             .Turned = IsTurned(),
                             .Budget = budget,
                             .Report = m_report,
                             .Progress = {}};
        if (progress)
            target.Progress = [&](double share) {
                return progress((total + static_cast<qint64>(share * double(total))) / 2, total);
            };
        try {
            TAssimpObjects(*model, materials, std::move(target)).Make();
        } catch (const Exception& error) {
            fail(error.Text());
        }
        return true;
    }));
}

#else

bool TAssimpConverter::IsAvailable() {
    return false;
}

void TAssimpConverter::Read() {}

#endif

} // namespace ZEP
