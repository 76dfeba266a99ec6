#include "viewer/files/Document.h"

#include "viewer/content/Seen.h"
#include "viewer/content/Visibility.h"
#include "viewer/drawing/ShownBatches.h"
#include "viewer/files/DrawingSaving.h"
#include "viewer/files/FileLayouts.h"
#include "viewer/files/Loading.h"
#include "viewer/files/Materials.h"
#include "viewer/files/Memory.h"
#include "viewer/files/SceneSaving.h"
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/sheets/Layout.h>
#include <zep/view/Dimension.h>
#include <zep/view/Fitting.h>

#include <QFileInfo>
#include <QGuiApplication>
#include <QScopeGuard>

#include <algorithm>
#include <memory>

namespace ZEP {

namespace {

constexpr double StandardLens = 45; // mm
constexpr TColor AroundSheets{0x9A9A9A};
constexpr qint64 ManyObjects = 100'000;

/// Of what is seen of the files.
TZEPExtent ExtentSeen(const std::vector<TOpenedFile>& files) {
    TZEPExtent extent;
    for (const TOpenedFile& file : files)
        extent.Add(IsSeenWhole(*file.Root) ? file.Extent : SeenOf({file.Root}));
    return extent;
}

struct TTakenDimension {
    TZEPObject* Dimension;
    std::optional<QString> Layout; ///< that it stood on
};

/// Takes what was measured in a file out of it. A scene is read with its own.
std::vector<TTakenDimension> TakeDimensions(const TOpenedFile& file) {
    std::vector<TZEPObject*> dimensions;
    if (file.Format != TFileFormat::Scene)
        file.Root->ListChildren(dimensions, {&TZEPDimension::staticMetaObject});
    std::vector<TTakenDimension> taken;
    for (TZEPObject* dimension : dimensions) {
        const auto* layout = qobject_cast<TZEPLayout*>(dimension->Parent());
        taken.push_back({dimension, layout ? std::optional(layout->Ident()) : std::nullopt});
        dimension->SetParentComponent(nullptr);
    }
    return taken;
}

/// The first one of that ident; null where there is none.
TZEPLayout* FindLayout(const TOpenedFile& file, const QString& ident) {
    for (const TFileLayout& each : LayoutsOf({&file, 1}))
        if (each.Layout->Ident() == ident) return each.Layout;
    return nullptr;
}

bool IsIn(const TOpenedFile& file, const TZEPObject& object) {
    const TZEPObject* above = &object;
    while (above && above != file.Root) above = above->Parent();
    return above;
}

double PixelRatio() {
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return application ? application->devicePixelRatio() : 1;
}

bool IsSameName(const QString& a, const QString& b) {
    return a == b || QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

} // namespace

TDocument::TDocument() : m_scene(std::make_unique<TZEPScene>()) {
    m_scene->SetFirstPasses(true);
    m_scene->SetMaterialLibrary(&m_materials);
    m_scene->SetSceneAmbientColor(clWhite);
    m_camera = ZEP::Add<TZEPCamera>(m_scene.get());
    m_camera->SetExtended(true);
    m_backdrop.SetCamera(m_camera);
    LookFrom(TDirection::Iso, 1);
}

TDocument::~TDocument() = default;

bool TDocument::Read(TLoading& loading, const QStringList& files, const TOpenProgress& progress) {
    const auto take = qScopeGuard([&] { m_failures = loading.Failures(); });
    return loading.Read(files, progress);
}

bool TDocument::Open(const QStringList& files, bool plain, const TOpenProgress& progress) {
    TLoading loading(plain, FirstShown());
    if (!Read(loading, files, progress)) return false;
    ChangeFiles([&] {
        while (!m_files.empty()) Remove(m_files.size() - 1);
        while (!loading.IsEmpty()) m_files.push_back(loading.Show(*m_scene));
    });
    return true;
}

bool TDocument::Add(const QStringList& files, bool plain, const TOpenProgress& progress) {
    TLoading loading(plain, FirstShown());
    if (!Read(loading, files, progress)) return false;
    ChangeFiles([&] {
        while (!loading.IsEmpty()) {
            const TOpenedFile* shown = Find(loading.NextName());
            if (shown)
                Replace(static_cast<std::size_t>(shown - m_files.data()), loading);
            else
                m_files.push_back(loading.Show(*m_scene));
        }
    });
    return true;
}

std::vector<TPassedOver> TDocument::Save(const QString& fileName) {
    if (IsDrawingName(fileName)) return SaveDrawing(m_files, fileName);
    SaveScene(m_files, m_materials, fileName);
    for (TOpenedFile& file : m_files)
        if (IsSameName(file.Name, fileName)) file.State = TFileState::Of(file.Name);
    return {};
}

void TDocument::Close(const QString& file) {
    if (const TOpenedFile* shown = Find(file))
        ChangeFiles([&] { Remove(static_cast<std::size_t>(shown - m_files.data())); });
}

const TOpenedFile* TDocument::Find(const QString& file) const {
    for (const TOpenedFile& shown : m_files)
        if (IsSameName(shown.Name, file)) return &shown;
    return nullptr;
}

template <class Change>
void TDocument::ChangeFiles(Change&& change) {
    Q_EMIT AboutToChange();
    m_scene->BeginUpdate();
    m_places.clear();
    change();
    SetLayout(m_layout);
    m_scene->EndUpdate();
    m_scene->Invalidate(m_scene.get());
    Q_EMIT Changed();
}

void TDocument::Remove(std::size_t index) {
    const TOpenedFile gone = std::move(m_files[index]);
    m_files.erase(m_files.begin() + static_cast<std::ptrdiff_t>(index));
    delete gone.Root;
    if (gone.Objects > ManyObjects) GiveBackMemory();
    const int end = gone.FirstMaterial + gone.SharedMaterials;
    for (int i = end; i > gone.FirstMaterial; --i) m_materials.Materials()->Delete(i - 1);
    for (TOpenedFile& file : m_files) {
        if (file.FirstMaterial < end) continue;
        RenumberMaterials(*file.Root, end, -gone.SharedMaterials);
        file.FirstMaterial -= gone.SharedMaterials;
    }
}

void TDocument::Replace(std::size_t index, TLoading& loading) {
    TZEPBatch& old = *m_files[index].Root;
    const bool visible = old.Visible();
    const QSet<QString> hidden = HiddenBelow(old);
    const QSet<QString> hiddenBefore = m_files[index].HiddenInFile;
    const std::vector<TTakenDimension> dimensions = TakeDimensions(m_files[index]);
    const bool isSheet = m_layout && IsIn(m_files[index], *m_layout);
    const QString sheet = isSheet ? m_layout->Ident() : QString();
    Remove(index);
    const TOpenedFile& file = *m_files.insert(m_files.begin() + static_cast<std::ptrdiff_t>(index),
                                              loading.Show(*m_scene));
    for (const auto& [dimension, ident] : dimensions) {
        TZEPObject* layout = ident ? FindLayout(file, *ident) : nullptr;
        dimension->SetParentComponent(layout ? layout : file.Root);
    }
    RestoreHidden(*file.Root, hiddenBefore, hidden);
    file.Root->SetVisible(visible);
    if (isSheet) m_layout = FindLayout(file, sheet);
}

TZEPLayout* TDocument::Layout() const {
    return m_layout;
}

void TDocument::SetLayout(TZEPLayout* layout) {
    m_layout = layout;
    m_camera->SetSheet(layout);
    m_sheet = layout ? VisibleExtent(*layout) : TZEPExtent();
    m_backdrop.SetContent(Bounds());
    m_backdrop.SetGuides(m_guides && !layout);
    ShowColors();
}

void TDocument::ShowLayout(TZEPLayout* layout, double aspect) {
    if (layout == m_layout) return;
    m_places[m_layout] = TCameraPlace::Of(*m_camera);
    SetLayout(layout);
    if (const auto place = m_places.find(layout); place != m_places.end())
        LookAgain(place->second);
    else
        LookBest(aspect);
    Q_EMIT LayoutShown();
}

void TDocument::LookAgain(const TCameraPlace& place) {
    place.Apply(*m_camera);
    Q_EMIT ProjectionChanged(place.Parallel);
    Q_EMIT LookedFrom(place.IsFlatView() ? TDirection::Top : TDirection::Iso);
}

QString TDocument::UnitOf(const TZEPObject& object) const {
    for (const TZEPObject* above = &object; above; above = above->Parent())
        for (const TOpenedFile& file : m_files)
            if (file.Root == above) return file.Unit;
    return TOpenedFile().Unit;
}

std::optional<TZEPBounds> TDocument::Bounds() const {
    if (m_layout) return m_sheet.Bounds();
    std::optional<TZEPBounds> bounds;
    for (const TOpenedFile& file : m_files) Widen(bounds, file.Extent.Bounds());
    return bounds;
}

void TDocument::SetGuides(bool shown) {
    m_guides = shown;
    m_backdrop.SetGuides(shown && !m_layout);
}

void TDocument::SetBackground(const std::optional<TColor>& color) {
    m_background = color;
    ShowColors();
}

void TDocument::ShowColors() {
    using TColors = TZEPBackdrop::TColors;
    const std::optional<TColor> around =
        m_layout && !m_background ? std::optional(AroundSheets) : m_background;
    m_backdrop.SetColors(around ? TColors::Plain(*around) : TColors());
    ChangeShown(*m_scene, [this](const TZEPBatch&, TZEPShown& shown) { GiveColors(shown); });
}

void TDocument::GiveColors(TZEPShown& shown) const {
    shown.Background = m_layout && m_layout->HasPaper() ? clWhite : m_backdrop.MiddleColor();
    shown.Widths = PixelRatio();
}

std::optional<TZEPShown> TDocument::FirstShown() const {
    std::optional<TZEPShown> shown = m_firstShown;
    if (shown) GiveColors(*shown);
    return shown;
}

bool TDocument::IsFlat() const {
    const std::optional<TZEPBounds> bounds = Bounds();
    return bounds && ZEP::IsFlat(*bounds);
}

TDirection TDocument::BestDirection() const {
    return IsFlat() ? TDirection::Top : TDirection::Iso;
}

void TDocument::LookBest(double aspect) {
    SwitchProjection(*m_camera, IsFlat(), aspect);
    Q_EMIT ProjectionChanged(m_camera->Orthographic());
    LookFrom(BestDirection(), aspect);
}

bool TDocument::IsLarge() const {
    return std::any_of(m_files.begin(), m_files.end(),
                       [](const TOpenedFile& file) { return file.Root->IsLarge(); });
}

void TDocument::SetShare(double share) {
    ChangeShown(*m_scene, [share](const TZEPBatch&, TZEPShown& shown) { shown.Share = share; });
}

void TDocument::LookFrom(TDirection direction, double aspect) {
    ZEP::LookFrom(*m_camera, direction);
    m_camera->SetFocalLength(StandardLens);
    FitAll(aspect);
    Q_EMIT LookedFrom(direction);
}

void TDocument::FitAll(double aspect) {
    const TZEPExtent seen = m_layout ? m_sheet : ExtentSeen(m_files);
    if (FitCamera(*m_camera, seen.Corners(), aspect)) return;
    if (const std::optional<TZEPBounds> bounds = Bounds()) FitCamera(*m_camera, *bounds, aspect);
}

void TDocument::FitObjects(const std::vector<TZEPObject*>& objects, double aspect) {
    std::vector<TZEPObject*> seen = objects;
    std::erase_if(seen, [this](TZEPObject* object) { return m_camera->IsOffSheet(*object); });
    if (!FitCamera(*m_camera, SeenOf(seen).Corners(), aspect, {.KeepsDepth = true})) FitAll(aspect);
}

} // namespace ZEP
