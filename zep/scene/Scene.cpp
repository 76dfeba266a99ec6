#include <zep/scene/Scene.h>

#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Exception.h>
#include <zep/framework/Property.h>
#include <zep/framework/Watch.h>

#include <QElapsedTimer>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

const TRegisterObject<TZEPScene> RegisteredScene;
constexpr int TickMilliseconds = 40;

double SecondsSinceSystemStart() {
    QElapsedTimer clock;
    clock.start();
    return static_cast<double>(clock.msecsSinceReference()) / 1000.0;
}

} // namespace

TZEPScene* TZEPObject::Scene() const {
    return m_scene ? static_cast<TZEPScene*>(m_scene->AsObject()) : nullptr;
}

TZEPScene::TZEPScene(TComponent* owner) : TZEPScene(owner, std::make_shared<TZEPFrame>()) {}

TZEPScene::TZEPScene(TComponent* owner, std::shared_ptr<TZEPFrame> frame)
    : TZEPObject(owner), TZEPSceneContext(*frame), m_frame(std::move(frame)),
      m_selectBuffer(std::make_shared<std::vector<GLuint>>(500)) {}

TZEPScene::~TZEPScene() {
    BeginDestroying();
    m_frame->SceneIsGone = true;
    while (!m_panels.empty()) { // one that is told may take away others
        TZEPScenePanel* panel = m_panels.front();
        m_panels.erase(m_panels.begin());
        panel->SceneDestroyed();
    }
    SetAnimation(false); // a panel may have let it go on
    SetMaterialLibrary(nullptr);
    FreeChildren();
}

void TZEPScene::Store(bool& flag, bool value) {
    if (Change(flag, value)) Invalidate(this);
}

void TZEPScene::SetBackgroundColor(TColor color) {
    if (Change(m_backgroundColor, color)) Invalidate(this);
}

void TZEPScene::SetSceneAmbientColor(TColor color) {
    if (Change(m_sceneAmbientColor, color)) Invalidate(this);
}

void TZEPScene::SetQuickMouse(bool quick) {
    Store(m_quickMouse, quick);
}
void TZEPScene::SetFShadows(bool shadows) {
    Store(m_shadows, shadows);
}
void TZEPScene::SetAccumShadows(bool accumulate) {
    Store(m_accumShadows, accumulate);
}
void TZEPScene::SetReflections(bool reflections) {
    Store(m_reflections, reflections);
}
void TZEPScene::SetFirstPasses(bool draw) {
    Store(m_firstPasses, draw);
}

void TZEPScene::SetMaterialLibrary(TZEPMaterialLibrary* library) {
    if (library == m_materialLibrary) return;
    if (m_materialLibrary) {
        m_materialLibrary->Materials()->UnregisterObject(this);
        m_materialLibrary->RemoveFreeNotification(this);
    }
    m_materialLibrary = library;
    if (library) {
        library->Materials()->RegisterObject(this);
        library->FreeNotification(this);
    }
    Invalidate(this);
}

void TZEPScene::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove && component == m_materialLibrary) {
        m_materialLibrary = nullptr; // its collection is gone already
        Invalidate(this);
    }
    if (operation == opRemove && component == m_currentCameraObject) SetCurrentCamera(nullptr);
    TZEPObject::Notification(component, operation);
}

TZEPMaterial* TZEPScene::LibraryMaterial(int index) const {
    if (!m_materialLibrary || index < 0) return nullptr;
    const TZEPCollection* materials = m_materialLibrary->Materials();
    if (index >= materials->Count()) return nullptr;
    return static_cast<TZEPMaterialCI*>(materials->GetItem(index))->Material();
}

void TZEPScene::SetCurrentCamera(TZEPSceneCamera* camera) {
    if (camera == m_currentCamera) return;
    m_currentCamera = camera;
    m_currentCameraObject = camera ? camera->AsObject() : nullptr;
    if (m_currentCameraObject) m_currentCameraObject->FreeNotification(this);
}

void TZEPScene::SetAnimation(bool animation) {
    if (!Change(m_animation, animation) || IsDesigning()) return;
    if (!animation) {
        m_timer.stop();
        if (std::exchange(m_tickRepaints, false)) Invalidate(this);
        return;
    }
    m_timer.start(TickMilliseconds, Qt::PreciseTimer, this);
    if (m_timer.isActive()) return;
    m_animation = false; // or what changes would wait for its ticks
    throw Exception(QStringLiteral("No timer is left for the animation"));
}

void TZEPScene::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId()) return TZEPObject::timerEvent(event);
    const TZEPWatch alive(this);
    m_tickRepaints = false;
    Action(SecondsSinceSystemStart());
    if (!alive) return;
    for (std::size_t i = 0; i < m_panels.size(); ++i) m_panels[i]->Invalidate();
}

void TZEPScene::RegisterGLPanel(TZEPScenePanel* panel) {
    if (std::find(m_panels.begin(), m_panels.end(), panel) == m_panels.end())
        m_panels.push_back(panel);
}

void TZEPScene::UnregisterGLPanel(TZEPScenePanel* panel) {
    std::erase(m_panels, panel);
}

void TZEPScene::Invalidate(TObject* sender) {
    if (m_manualUpdate || UpdateLevel() > 0) return;
    for (std::size_t i = 0; i < m_panels.size(); ++i) m_panels[i]->Changed(sender);
    if (m_animation && !IsDesigning()) {
        m_tickRepaints = true;
        return;
    }
    for (std::size_t i = 0; i < m_panels.size(); ++i) m_panels[i]->Invalidate();
}

} // namespace ZEP
