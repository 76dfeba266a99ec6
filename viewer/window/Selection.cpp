#include "viewer/window/Selection.h"

#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>
#include <zep/view/Gizmo.h>
#include <zep/view/Hover.h>
#include <zep/view/MeasureTool.h>
#include <zep/view/Panel.h>
#include <zep/view/SectionHandles.h>

#include <QScopeGuard>
#include <QTimerEvent>

#include <limits>
#include <unordered_set>

namespace ZEP {

namespace {

constexpr int Still = 4;     // pixels that a click may move
constexpr int Exact = 4;     // pixels about the pointer
constexpr int Generous = 12; // where there is nothing so near
constexpr int AnyLevel = std::numeric_limits<int>::max();

} // namespace

TSelection::TSelection(TZEPPanel* panel, TZEPScene* scene)
    : QObject(panel), m_panel(panel), m_scene(scene) {
    connect(scene, &TZEPScene::AfterSelect, this, &TSelection::Note);
    connect(panel, &TZEPPanel::BeforeMouseDown, this,
            [this](TZEPPanel*, TMouseButton button, TShiftState, int x, int y) {
                if (button == mbLeft) m_press = {x, y};
            });
    connect(panel, &TZEPPanel::AfterMouseUp, this,
            [this](TZEPPanel*, TMouseButton button, TShiftState shift, int x, int y) {
                const bool moved = (QPoint(x, y) - m_press).manhattanLength() > Still;
                if (button != mbLeft || moved ||
                    m_panel->PanelControl()->Mode(mbLeft, shift) == mmSelect)
                    return;
                Click({x, y}, shift.testFlag(ssCtrl));
            });
    (new TZEPHover(panel))->SetFind([this](const QPoint& place) -> TZEPObject* {
        const auto* gizmo = m_panel->findChild<TZEPGizmo*>();
        const auto* handles = m_panel->findChild<TZEPSectionHandles*>();
        const auto* tool = m_panel->findChild<TZEPMeasureTool*>();
        const bool isTaken = (gizmo && gizmo->At(place)) || (handles && handles->At(place)) ||
                             (tool && tool->Kind());
        return isTaken ? nullptr : ObjectAt(place);
    });
}

void TSelection::Note(TZEPObject* object) {
    if (object->Selected())
        m_objects.insert_or_assign(object, object);
    else
        m_objects.erase(object);
    m_telling.start(0, this);
}

void TSelection::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_telling.timerId()) return QObject::timerEvent(event);
    m_telling.stop();
    Q_EMIT Changed();
}

void TSelection::Click(const QPoint& place, bool add) {
    TZEPObject* object = ObjectAt(place);
    if (!add) return SelectOnly(object);
    if (object) object->SetSelected(!object->Selected());
}

TZEPObject* TSelection::ObjectAt(const QPoint& place) const {
    const auto done = qScopeGuard([this] { m_panel->DoneCurrent(); });
    const int width = m_panel->Width();
    const int height = m_panel->Height();
    for (const int size : {Exact, Generous}) {
        if (!m_panel->MakeCurrent()) return nullptr;
        if (TZEPObject* object = m_scene->Pick(m_panel->Camera(), width, height, place.x(),
                                               height - place.y(), size, size, AnyLevel))
            return object;
    }
    return nullptr;
}

std::vector<TZEPObject*> TSelection::Objects() const {
    std::vector<TZEPObject*> objects;
    for (const auto& [known, object] : m_objects)
        if (object) objects.push_back(object);
    return objects;
}

TZEPObject* TSelection::Only() const {
    if (m_objects.size() == 1) return m_objects.begin()->second;
    const std::vector<TZEPObject*> objects = Objects();
    return objects.size() == 1 ? objects.front() : nullptr;
}

void TSelection::SelectOnly(TZEPObject* object) {
    Select(object ? std::vector{object} : std::vector<TZEPObject*>());
}

void TSelection::Select(const std::vector<TZEPObject*>& objects) {
    const std::unordered_set<TZEPObject*> wanted(objects.begin(), objects.end());
    for (TZEPObject* other : Objects())
        if (!wanted.contains(other)) other->SetSelected(false);
    for (TZEPObject* object : objects) object->SetSelected(true);
}

void TSelection::Forget() {
    m_objects.clear();
    m_telling.start(0, this);
}

} // namespace ZEP
