#include "viewer/files/Loading.h"

#include "viewer/content/Objects.h"
#include "viewer/content/Visibility.h"
#include "viewer/drawing/Look.h"
#include "viewer/files/FileLayouts.h"
#include "viewer/files/Materials.h"
#include "viewer/files/Memory.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/batch/Batch.h>
#include <zep/framework/Exception.h>
#include <zep/scene/Scene.h>
#include <zep/sheets/Layout.h>
#include <zep/view/Actor.h>

#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

constexpr double ReadShare = 0.6; // of the time that opening a file takes, about

/// What one of the files tells, in terms of all. The end, 1, is not reached.
TLoadProgress PartOf(const TOpenProgress& progress, const QStringList& files, qsizetype index) {
    return [&progress, name = files.at(index), index,
            count = static_cast<double>(files.size())](qint64 done, qint64 total) {
        const double part =
            static_cast<double>(done) / static_cast<double>(std::max<qint64>(total, 1));
        const double whole = (static_cast<double>(index) + part) / count;
        return !progress || progress(name, std::min(whole, 0.999));
    };
}

/// Layers and groups left out.
qint64 CountBelow(TZEPObject& root) {
    qint64 count = 0;
    ForEachObject(root, [&](const TZEPObject& object) {
        if (object.GetItemsCount() == 0 && !qobject_cast<const TZEPActor*>(&object)) ++count;
    });
    return count;
}

/// Of a drawing, which are drawn as it is.
void PrepareLayouts(const TOpenedFile& file, bool even) {
    for (const TFileLayout& each : LayoutsOf({&file, 1})) {
        each.Layout->SetEvenLight(even);
        each.Layout->SetRoundArcs(true);
    }
}

} // namespace

TLoading::~TLoading() {
    if (m_loaded.empty()) return;
    for (const TLoaded& loaded : m_loaded) delete loaded.File.Root;
    m_loaded.clear();
    GiveBackMemory();
}

bool TLoading::Read(const QStringList& files, const TOpenProgress& progress) {
    for (qsizetype i = 0; i < files.size(); ++i)
        if (!ReadOrFail(files[i], PartOf(progress, files, i))) return false;
    if (m_loaded.empty() && !m_failures.empty()) throw Exception(ReportOf(m_failures));
    return !progress || progress(files.last(), 1);
}

bool TLoading::ReadOrFail(const QString& name, const TLoadProgress& progress) {
    TLoaded& loaded = m_loaded.emplace_back();
    try {
        return ReadOne(loaded, name, progress);
    } catch (const std::exception& error) {
        Fail(name, error);
    }
    return true;
}

void TLoading::Fail(const QString& name, const std::exception& error) {
    delete m_loaded.back().File.Root;
    m_loaded.pop_back();
    m_failures.emplace_back(name, error);
}

bool TLoading::ReadOne(TLoaded& loaded, const QString& name, const TLoadProgress& progress) const {
    loaded.Library = std::make_unique<TZEPMaterialLibrary>();
    TOpenedFile& file = loaded.File;
    file.Name = name;
    file.State = TFileState::Of(name);
    file.Format = FormatOf(name);
    if (file.Format == TFileFormat::RS274D && !m_plain) file.Unit = QStringLiteral("mm");
    QElapsedTimer timer;
    timer.start();
    bool cancelled = false;
    const auto watched = [&](double share) {
        constexpr qint64 steps = 100'000;
        cancelled = cancelled || !progress(static_cast<qint64>(share * double(steps)), steps);
        return !cancelled;
    };
    ReadFile(file, *loaded.Library, m_plain, [&](qint64 done, qint64 total) {
        return watched(ReadShare * double(done) / double(std::max<qint64>(total, 1)));
    });
    if (cancelled || !watched(ReadShare)) return false;
    file.Seconds = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    if (file.Root->Ident().isEmpty()) file.Root->SetIdent(QFileInfo(name).fileName());
    file.Materials = loaded.Library->Materials()->Count();
    file.HiddenInFile = HiddenBelow(*file.Root);
    file.Objects = CountBelow(*file.Root);
    return Prepare(loaded, [&](double share) {
        return watched(ReadShare + (1 - ReadShare) * std::min(share, 1.0));
    });
}

bool TLoading::Prepare(TLoaded& loaded, const std::function<bool(double)>& progress) const {
    TOpenedFile& file = loaded.File;
    ShowFacesWithoutMaterial(*file.Root, *loaded.Library);
    const bool isProgram = file.Format == TFileFormat::RS274D;
    if (isProgram) ApplyLook(*file.Root);
    if (IsModel(file.Format)) ApplyLook(*loaded.Library);
    file.Extent = ExtentOf(*file.Root);
    if (!progress(0)) return false;
    const std::optional<TZEPBounds>& bounds = file.Extent.Bounds();
    if (file.Format == TFileFormat::DXF) PrepareLayouts(file, !bounds || IsFlat(*bounds));
    if (!bounds) return true;
    if (file.Format != TFileFormat::Scene || !file.StoresRoot) {
        file.Root->SetEvenLight(IsFlat(*bounds));
        file.Root->SetSmoothShading(IsModel(file.Format));
        file.Root->SetRoundArcs(file.Format == TFileFormat::DXF);
    }
    if (!m_shown) return true;
    TZEPShown shown = *m_shown;
    if (file.Root->EvenLight()) shown.Edges = TZEPEdges::None; // as the view has it
    file.Root->SetShown(shown);
    return file.Root->Prepare(progress);
}

TOpenedFile TLoading::Show(TZEPScene& scene) {
    TLoaded loaded = std::move(m_loaded.front());
    m_loaded.erase(m_loaded.begin());
    TOpenedFile& file = loaded.File;
    TZEPMaterialLibrary& shared = *scene.MaterialLibrary();
    file.FirstMaterial = AppendMaterials(shared, *loaded.Library, *file.Root);
    file.SharedMaterials = shared.Materials()->Count() - file.FirstMaterial;
    file.Root->SetParentComponent(&scene);
    return std::move(file);
}

} // namespace ZEP
