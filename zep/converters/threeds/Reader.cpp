#include <zep/converters/threeds/Reader.h>

#include <zep/appearance/effects/Light.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/converters/Placing.h>
#include <zep/converters/ReadReport.h>
#include <zep/converters/threeds/Ids.h>
#include <zep/converters/threeds/LightCamera.h>
#include <zep/objects/Mesh.h>
#include <zep/scene/SceneOf.h>
#include <zep/view/Camera.h>

#include <QScopeGuard>

namespace ZEP {

TF3DSReader::TF3DSReader(std::string_view bytes, const TErrorOrigin& source, TF3DSTarget target)
    : m_target(std::move(target)), m_budget(static_cast<qint64>(bytes.size())),
      m_stream(bytes, source, m_target.Report, m_target.Dump),
      m_materials(m_target.Materials ? std::make_optional<TF3DSMaterials>(
                                           m_stream, *m_target.Materials, m_target.FileName,
                                           m_budget, m_target.Extended)
                                     : std::nullopt),
      m_meshes(m_stream, m_materials ? &*m_materials : nullptr,
               m_target.Extended ? &m_placement : nullptr) {}

bool TF3DSReader::IsF3DS(std::string_view bytes) {
    return bytes.size() >= 2 && qFromLittleEndian<std::uint16_t>(bytes.data()) == idMain;
}

void TF3DSReader::ReadFile() {
    const auto report = qScopeGuard([this] { ReportStrays(); });
    // A file that is cut off shows what it has where it belongs.
    const auto place = qScopeGuard([this] { m_placement.Apply(m_nodes); });
    ReadMainChunk(m_stream.ReadMainHeader());
}

// --- structure ---------------------------------------------------------------------------------

void TF3DSReader::ReadMainChunk(const TF3DSChunk& chunk) {
    m_stream.Dump(" <MainChunk> \r\n");
    m_stream.ReadChildren(chunk, [this](const TF3DSChunk& child) {
        TellProgress();
        switch (child.Id) {
        case idVersion:
            return ReadVersionChunk(child);
        case idEditor:
            return ReadEditChunk(child);
        case idKeyframer:
            return ReadKfrmChunk(child);
        default:
            return m_stream.SkipChunk(child, idMain);
        }
    });
}

void TF3DSReader::ReadEditChunk(const TF3DSChunk& chunk) {
    m_stream.Dump(" <EditChunk> \r\n");
    if (m_target.Extended && m_materials) ReadMaterials(chunk);
    m_stream.ReadChildren(chunk, [this](const TF3DSChunk& child) {
        TellProgress();
        ReadEditPart(child);
    });
}

void TF3DSReader::ReadEditPart(const TF3DSChunk& chunk) {
    switch (chunk.Id) {
    case idMeshVersion:
        return ReadVersionChunk(chunk);
    case idMasterScale:
        return ReadMasterScale(chunk);
    case idBackgroundColor:
        return ReadSceneBackgroundColor(chunk);
    case idAmbientColor:
        return ReadSceneAmbientColor(chunk);
    case idObject:
        return ReadObjectChunk(chunk);
    case idMaterial:
        // The extended reading has read it before all else.
        return m_materials && !m_target.Extended ? m_materials->ReadMaterialChunk(chunk)
                                                 : m_stream.SkipChunk(chunk, idEditor);
    default:
        return m_stream.SkipChunk(chunk, idEditor);
    }
}

// Some programs write materials behind the meshes that name them.
void TF3DSReader::ReadMaterials(const TF3DSChunk& editor) {
    const std::size_t start = m_stream.Position();
    m_stream.ReadChildren(editor, [this](const TF3DSChunk& child) {
        if (child.Id == idMaterial) m_materials->ReadMaterialChunk(child);
    });
    m_stream.GoBack(start);
}

void TF3DSReader::ReadKfrmChunk(const TF3DSChunk& chunk) {
    m_stream.Dump(" <KfrmChunk> \r\n");
    m_stream.ReadChildren(chunk, [this](const TF3DSChunk& child) {
        if (m_target.Extended && child.Id >= idObjectNode && child.Id <= idSpotTargetNode)
            return ReadNode(child);
        m_stream.SkipChunk(child, idKeyframer);
    });
    if (!m_target.Extended || m_nodes.IsAnimated()) m_stream.ReportMissed(chunk, idMain);
}

void TF3DSReader::ReadNode(const TF3DSChunk& chunk) {
    m_stream.Dump(" <NodeChunk> \r\n");
    try {
        m_nodes.ReadNode(m_stream, chunk);
    } catch (const Exception&) { // the models are there all the same
        m_target.Report.Add(QStringLiteral("nodes of the animation that cannot be read"));
    }
}

void TF3DSReader::ReadVersionChunk(const TF3DSChunk& chunk) {
    m_stream.Dump(" <VersionChunk> \r\n");
    m_stream.DumpValues("Ver: %u\r\n", m_stream.Read<std::uint32_t>(chunk));
}

// The scale is of the program that wrote the file: who wants another size scales the root.
void TF3DSReader::ReadMasterScale(const TF3DSChunk& chunk) {
    m_stream.Dump(" <ScaleChunk> \r\n");
    m_stream.SkipChunk(chunk, idEditor);
}

void TF3DSReader::ReadSceneBackgroundColor(const TF3DSChunk& chunk) {
    m_stream.Dump(" <BackgroundColorChunk> \r\n");
    const auto color = m_stream.ReadMaterialColorChunk(chunk);
    TZEPScene* scene = SceneOf(&m_target.Root);
    if (color && scene) scene->SetBackgroundColor(*color);
}

void TF3DSReader::ReadSceneAmbientColor(const TF3DSChunk& chunk) {
    m_stream.Dump(" <AmbientColorChunk> \r\n");
    const auto color = m_stream.ReadMaterialColorChunk(chunk);
    TZEPScene* scene = SceneOf(&m_target.Root);
    if (color && scene) scene->SetSceneAmbientColor(*color);
}

void TF3DSReader::ReadObjectChunk(const TF3DSChunk& chunk) {
    m_stream.Dump(" <ObjectChunk> \r\n");
    const QString name = m_stream.ReadName(chunk);
    QPointer<TZEPMesh> mesh;
    bool isHidden = false;
    m_stream.ReadChildren(chunk, [&](const TF3DSChunk& child) {
        switch (child.Id) {
        case idMesh:
            mesh = AddMesh(child, name);
            return;
        case idHidden:
            if (!m_target.Extended) return m_stream.SkipChunk(child, idObject);
            isHidden = true;
            return m_stream.Dump(" <HiddenChunk> \r\n");
        case idLight:
            return AddLight(child, name);
        case idCamera:
            return AddCamera(child, name);
        default:
            return m_stream.SkipChunk(child, idObject);
        }
    });
    if (mesh && isHidden) mesh->SetVisible(false);
}

// --- objects -----------------------------------------------------------------------------------

template <class T>
T* TF3DSReader::AddObject(const TF3DSChunk& chunk, const QString& name) {
    if (!m_budget.Take(qint64(sizeof(T)) + BytesBesideObject))
        m_stream.Refuse(QStringLiteral("more objects than its size allows"), chunk.Offset);
    auto* object = new T(&m_target.Root);
    object->SetIdent(name);
    object = Place(object, &m_target.Root, m_target.Root);
    if (m_materials && !m_target.Materials) throw TReadingEnd();
    if (!object) m_stream.SkipChunk(chunk, idObject);
    return object;
}

TZEPMesh* TF3DSReader::AddMesh(const TF3DSChunk& chunk, const QString& name) {
    auto* mesh = AddObject<TZEPMesh>(chunk, name);
    if (mesh) m_meshes.ReadMeshChunk(chunk, *mesh);
    return mesh;
}

void TF3DSReader::AddLight(const TF3DSChunk& chunk, const QString& name) {
    if (m_lightCount++ >= MaxLights) return m_stream.SkipChunk(chunk, idObject);
    if (auto* light = AddObject<TZEPLight>(chunk, name)) ReadLightChunk(m_stream, chunk, *light);
}

void TF3DSReader::AddCamera(const TF3DSChunk& chunk, const QString& name) {
    if (auto* camera = AddObject<TZEPCamera>(chunk, name))
        ReadCameraChunk(m_stream, chunk, *camera);
}

// --- telling -----------------------------------------------------------------------------------

void TF3DSReader::TellProgress() {
    if (!m_target.Progress || m_stream.Position() - m_toldPosition < ProgressStep) return;
    m_toldPosition = m_stream.Position();
    if (!m_target.Progress(static_cast<qint64>(m_toldPosition),
                           static_cast<qint64>(m_stream.Size())))
        throw TReadingEnd();
}

void TF3DSReader::ReportStrays() {
    m_meshes.ReportStrays();
    if (m_stream.StrayNumbers() > 0)
        m_target.Report.Add(QStringLiteral("numbers that are none (taken as 0)"), 0,
                            m_stream.StrayNumbers());
    if (m_lightCount > MaxLights)
        m_target.Report.Add(QStringLiteral("lights after the first %1").arg(MaxLights), 0,
                            m_lightCount - MaxLights);
}

} // namespace ZEP
