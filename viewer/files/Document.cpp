#include "viewer/files/Document.h"

#include "viewer/content/Seen.h"
#include "viewer/content/Visibility.h"
#include "viewer/drawing/FileRoot.h"
#include "viewer/drawing/FirstPasses.h"
#include "viewer/drawing/Framing.h"
#include "viewer/files/Loading.h"
#include "viewer/files/Materials.h"
#include <zep/scene/Scene.h>

#include <QFileInfo>
#include <QGuiApplication>

#include <algorithm>
#include <memory>

namespace ZEP {

namespace {

constexpr double StandardLens = 45; // mm

double PixelRatio() {
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return application ? application->devicePixelRatio() : 1;
}

/// Of what is seen of the files.
TExtent ExtentSeen(const std::vector<TOpenedFile>& files) {
    TExtent extent;
    for (const TOpenedFile& file : files)
        extent.Add(IsSeenWhole(*file.Root) ? file.Extent : SeenOf({file.Root}));
    return extent;
}

bool IsSameFile(const QString& a, const QString& b) {
    return a == b || QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

} // namespace

TDocument::TDocument() : m_scene(std::make_unique<TZEPScene>()) {
    connect(m_scene.get(), &TZEPScene::AfterCamera, this, [this] {
        m_backdrop.Draw(PixelRatio());
        DrawFirstPasses(*m_scene);
    });
    m_scene->SetMaterialLibrary(&m_materials);
    m_scene->SetSceneAmbientColor(clWhite);
    m_camera = new TViewCamera(m_scene.get());
    m_camera->SetParentComponent(m_scene.get());
    LookFrom(TDirection::Iso, 1);
}

TDocument::~TDocument() = default;

bool TDocument::Open(const QStringList& files, bool plain, const TOpenProgress& progress) {
    TLoading loading(plain);
    if (!loading.Read(files, progress)) return false;
    ChangeFiles([&] {
        while (!m_files.empty()) Remove(m_files.size() - 1);
        while (!loading.IsEmpty()) m_files.push_back(loading.Show(*m_scene));
    });
    return true;
}

bool TDocument::Add(const QStringList& files, bool plain, const TOpenProgress& progress) {
    TLoading loading(plain);
    if (!loading.Read(files, progress)) return false;
    ChangeFiles([&] {
        for (const QString& file : files) {
            const TOpenedFile* shown = Find(file);
            if (shown)
                Replace(static_cast<std::size_t>(shown - m_files.data()), loading);
            else
                m_files.push_back(loading.Show(*m_scene));
        }
    });
    return true;
}

void TDocument::Close(const QString& file) {
    if (const TOpenedFile* shown = Find(file))
        ChangeFiles([&] { Remove(static_cast<std::size_t>(shown - m_files.data())); });
}

const TOpenedFile* TDocument::Find(const QString& file) const {
    for (const TOpenedFile& shown : m_files)
        if (IsSameFile(shown.Name, file)) return &shown;
    return nullptr;
}

template <class Change>
void TDocument::ChangeFiles(Change&& change) {
    emit AboutToChange();
    m_scene->BeginUpdate();
    change();
    m_backdrop.SetContent(Bounds());
    ShowColors();
    m_scene->EndUpdate();
    m_scene->Invalidate(m_scene.get());
    emit Changed();
}

void TDocument::Remove(std::size_t index) {
    const TOpenedFile gone = std::move(m_files[index]);
    m_files.erase(m_files.begin() + static_cast<std::ptrdiff_t>(index));
    delete gone.Root;
    const int end = gone.FirstMaterial + gone.SharedMaterials;
    for (int i = end; i > gone.FirstMaterial; --i) m_materials.Materials()->Delete(i - 1);
    for (TOpenedFile& file : m_files) {
        if (file.FirstMaterial < end) continue;
        RenumberMaterials(*file.Root, end, -gone.SharedMaterials);
        file.FirstMaterial -= gone.SharedMaterials;
    }
}

void TDocument::Replace(std::size_t index, TLoading& loading) {
    TFileRoot& old = *m_files[index].Root;
    const bool visible = old.Visible();
    const QSet<QString> hidden = HiddenBelow(old);
    const QSet<QString> hiddenBefore = m_files[index].HiddenInFile;
    Remove(index);
    const TOpenedFile& file = *m_files.insert(m_files.begin() + static_cast<std::ptrdiff_t>(index),
                                              loading.Show(*m_scene));
    RestoreHidden(*file.Root, hiddenBefore, hidden);
    file.Root->SetVisible(visible);
}

std::optional<TBox> TDocument::Bounds() const {
    std::optional<TBox> bounds;
    for (const TOpenedFile& file : m_files) Widen(bounds, file.Extent.Bounds());
    return bounds;
}

void TDocument::SetGuides(bool shown) {
    m_backdrop.SetGuides(shown);
    m_scene->Invalidate(m_scene.get());
}

void TDocument::SetBackground(const std::optional<TColor>& color) {
    m_backdrop.SetBackground(color);
    ShowColors();
    m_scene->Invalidate(m_scene.get());
}

void TDocument::ShowColors() {
    for (const TOpenedFile& file : m_files) file.Root->SetBackground(m_backdrop.MiddleColor());
}

bool TDocument::IsFlat() const {
    const std::optional<TBox> bounds = Bounds();
    return bounds && ZEP::IsFlat(*bounds);
}

TDirection TDocument::BestDirection() const {
    return IsFlat() ? TDirection::Top : TDirection::Iso;
}

void TDocument::LookBest(double aspect) {
    m_camera->SwitchProjection(IsFlat(), aspect);
    emit ProjectionChanged(m_camera->Orthographic());
    LookFrom(BestDirection(), aspect);
}

bool TDocument::IsLarge() const {
    return std::any_of(m_files.begin(), m_files.end(),
                       [](const TOpenedFile& file) { return file.Root->IsLarge(); });
}

void TDocument::SetShare(double share) {
    for (const TOpenedFile& file : m_files) file.Root->SetShare(share);
}

void TDocument::LookFrom(TDirection direction, double aspect) {
    const TGLArrayd3 eye = ToEye(direction);
    m_camera->Target()->SetData(0, 0, 0);
    m_camera->Position()->SetData(eye[0], eye[1], eye[2]);
    m_camera->SetFocalLength(StandardLens);
    m_camera->Reset();
    FitAll(aspect);
}

void TDocument::FitAll(double aspect) {
    const TExtent seen = ExtentSeen(m_files);
    const std::optional<TBox> bounds = seen.Bounds() ? seen.Bounds() : Bounds();
    if (bounds) m_camera->FitTo(bounds->Min, bounds->Max, aspect);
    // The box is larger than what is in it.
    FrameTightly(*m_camera, seen.Corners(), aspect);
}

void TDocument::FitObjects(const std::vector<TZEPObject*>& objects, double aspect) {
    const TExtent extent = SeenOf(objects);
    const std::optional<TBox>& bounds = extent.Bounds();
    if (!bounds) return FitAll(aspect);
    const double farthest = m_camera->FarClipPlane(); // what is not fitted is still seen
    m_camera->FitTo(bounds->Min, bounds->Max, aspect);
    FrameTightly(*m_camera, extent.Corners(), aspect);
    if (farthest <= m_camera->FarClipPlane()) return;
    m_camera->SetFarClipPlane(farthest);
    if (m_camera->Orthographic()) m_camera->SetNearClipPlane(-farthest);
}

} // namespace ZEP
