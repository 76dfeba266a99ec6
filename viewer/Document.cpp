#include "viewer/Document.h"

#include "scene/ColoredObject.h"
#include "scene/Scene.h"
#include "viewer/FileRoot.h"
#include "viewer/Framing.h"
#include "viewer/Look.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <algorithm>
#include <memory>

namespace ZEP {

namespace {

double PixelRatio() {
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return application ? application->devicePixelRatio() : 1;
}

void Widen(std::optional<TBox>& bounds, const std::optional<TBox>& box) {
    if (!box) return;
    if (!bounds) bounds = box;
    MinBoundsd(bounds->Min, box->Min);
    MaxBoundsd(bounds->Max, box->Max);
}

/// What one of the files tells, in terms of all. The end, 1, is not reached.
TLoadProgress PartOf(const TOpenProgress& progress, const QStringList& files, std::size_t index) {
    return [&progress, name = files.at(static_cast<qsizetype>(index)), index,
            count = static_cast<double>(files.size())](qint64 done, qint64 total) {
        const double part =
            static_cast<double>(done) / static_cast<double>(std::max<qint64>(total, 1));
        const double whole = (static_cast<double>(index) + part) / count;
        return !progress || progress(name, std::min(whole, 0.999));
    };
}

TBox BoxOf(const TZEPObject& object) {
    TBox box{};
    object.GetAbsoluteSize(box.Min, box.Max);
    return box;
}

void AddCorners(const TBox& box, std::vector<TGLArrayd3>& corners) {
    for (unsigned corner = 0; corner < 8; ++corner)
        corners.push_back({(corner & 1U ? box.Max : box.Min)[0],
                           (corner & 2U ? box.Max : box.Min)[1],
                           (corner & 4U ? box.Max : box.Min)[2]});
}

/// Corners of what draws, some ten thousand of them at most.
void SampleCorners(TZEPObject& root, std::vector<TGLArrayd3>& corners) {
    constexpr int MostSamples = 2000;
    const int stride = root.GetItemsCount() / MostSamples + 1;
    for (int i = 0, count = root.GetItemsCount(); i < count; i += stride)
        AddCorners(BoxOf(*root.GetItem(i)), corners);
}

bool IsFlat(const TBox& box) {
    return box.Max[2] - box.Min[2] <= 1e-9 * DiagonalOf(box);
}

void PrepareRoot(TFileRoot& root, const TBox& bounds) {
    root.SetEven(IsFlat(bounds));
    root.Prepare(DiagonalOf(bounds));
}

/// Files that are read but not yet shown.
class TLoading {
public:
    TLoading() = default;
    ~TLoading() {
        for (const TOpenedFile& file : Files) delete file.Root;
    }
    Q_DISABLE_COPY_MOVE(TLoading)

    /// \return false when `progress` cancelled it
    bool Read(const QString& name, bool plain, const TLoadProgress& progress) {
        TOpenedFile& file = Files.emplace_back();
        file.Name = name;
        file.Format = FormatOf(name);
        file.Root = new TFileRoot;
        QElapsedTimer timer;
        timer.start();
        bool cancelled = false;
        const TLoadProgress watched = [&](qint64 done, qint64 total) {
            cancelled = cancelled || !progress(done, total);
            return !cancelled;
        };
        file.Messages = ReadFile(*file.Root, name, file.Format, plain, watched);
        file.Seconds = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
        return !cancelled;
    }

    void Prepare() {
        for (TOpenedFile& file : Files) {
            const bool isProgram = file.Format == TFileFormat::RS274D;
            if (isProgram) ApplyLook(*file.Root, PixelRatio());
            file.Bounds = BoundsOf(*file.Root);
            if (file.Bounds) PrepareRoot(*file.Root, *file.Bounds);
        }
    }

    std::vector<TOpenedFile> Files;
};

} // namespace

TDocument::TDocument() : m_scene(std::make_unique<TZEPScene>()) {
    QObject::connect(m_scene.get(), &TZEPScene::AfterCamera,
                     [this] { m_backdrop.Draw(PixelRatio()); });
    m_scene->SetSceneAmbientColor(clWhite);
    m_camera = new TViewCamera(m_scene.get());
    m_camera->SetParentComponent(m_scene.get());
    LookFrom(TDirection::Iso, 1);
}

TDocument::~TDocument() = default;

bool TDocument::Open(const QStringList& files, bool plain, const TOpenProgress& progress) {
    TLoading loading;
    for (const QString& file : files)
        if (!loading.Read(file, plain, PartOf(progress, files, loading.Files.size()))) return false;
    if (progress && !progress(files.last(), 1)) return false;
    loading.Prepare();
    m_scene->BeginUpdate();
    std::swap(m_files, loading.Files);
    for (const TOpenedFile& file : loading.Files) file.Root->SetParentComponent(nullptr);
    for (const TOpenedFile& file : m_files) file.Root->SetParentComponent(m_scene.get());
    m_backdrop.SetContent(Bounds());
    ShowColors();
    m_scene->EndUpdate();
    m_scene->Invalidate(m_scene.get());
    return true;
}

std::optional<TBox> TDocument::Bounds() const {
    std::optional<TBox> bounds;
    for (const TOpenedFile& file : m_files) Widen(bounds, file.Bounds);
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
    m_camera->Reset();
    FitAll(aspect);
}

void TDocument::FitAll(double aspect) {
    if (const std::optional<TBox> bounds = Bounds())
        m_camera->FitTo(bounds->Min, bounds->Max, aspect);
    // The box is larger than what is in it.
    std::vector<TGLArrayd3> corners;
    for (const TOpenedFile& file : m_files) SampleCorners(*file.Root, corners);
    FrameTightly(*m_camera, corners, aspect);
}

void TDocument::FitObjects(const std::vector<TZEPObject*>& objects, double aspect) {
    std::optional<TBox> bounds;
    std::vector<TGLArrayd3> corners;
    for (TZEPObject* object : objects) {
        const TBox box = BoxOf(*object);
        Widen(bounds, box);
        AddCorners(box, corners);
    }
    if (!bounds) return FitAll(aspect);
    const double farthest = m_camera->FarClipPlane(); // what is not fitted is still seen
    m_camera->FitTo(bounds->Min, bounds->Max, aspect);
    FrameTightly(*m_camera, corners, aspect);
    if (farthest <= m_camera->FarClipPlane()) return;
    m_camera->SetFarClipPlane(farthest);
    if (m_camera->Orthographic()) m_camera->SetNearClipPlane(-farthest);
}

void ForEachObject(TZEPObject& root, const TObjectVisitor& visit) {
    for (int i = 0, count = root.GetItemsCount(); i < count; ++i) {
        TZEPObject& child = *root.GetItem(i);
        visit(child);
        ForEachObject(child, visit);
    }
}

std::optional<TBox> BoundsOf(TZEPObject& root) {
    std::optional<TBox> bounds;
    ForEachObject(root, [&](const TZEPObject& object) {
        if (!qobject_cast<const TZEPColoredObject*>(&object)) return;
        Widen(bounds, BoxOf(object));
    });
    return bounds;
}

} // namespace ZEP
