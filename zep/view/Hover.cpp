#include <zep/view/Hover.h>

#include <zep/batch/ObjectMark.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SectionScopes.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <QEvent>
#include <QScopeGuard>
#include <QTimerEvent>

#include <limits>
#include <utility>

namespace ZEP {

namespace {

constexpr int PickSize = 4;
constexpr int AnyLevel = std::numeric_limits<int>::max();
constexpr TShiftState Buttons = ssLeft | ssRight | ssMiddle;

} // namespace

TZEPHover::TZEPHover(TZEPPanel* panel) : QObject(panel), m_panel(panel) {
    panel->installEventFilter(this);
    connect(panel, &TZEPPanel::AfterMouseMove, this,
            [this](TZEPPanel*, TShiftState shift, int x, int y) {
                Follow(shift & Buttons ? std::nullopt : std::optional(QPoint(x, y)));
            });
    connect(panel, &TZEPPanel::AfterMouseDown, this, [this] { Follow({}); });
    // Another scene, or another view of it, is there now.
    connect(panel, &TZEPPanel::AfterDraw, this, [this] {
        m_mark.reset();
        if (m_pointer) m_looking.start(0, this);
    });
    connect(panel, &TZEPPanel::DrawOver, this, &TZEPHover::Draw);
}

TZEPHover::~TZEPHover() = default;

void TZEPHover::SetFind(TFind find) {
    m_find = std::move(find);
}

// --- following ---------------------------------------------------------------------------------

bool TZEPHover::eventFilter(QObject* watched, QEvent* event) {
    const QPointer<QObject> alive(watched); // who hears of it may free the panel, and this
    if (event->type() == QEvent::Leave || event->type() == QEvent::Hide) Follow({});
    return !alive || QObject::eventFilter(watched, event);
}

void TZEPHover::Follow(const std::optional<QPoint>& pointer) {
    m_pointer = pointer;
    if (pointer) return m_looking.start(0, this); // once, after all moves that have come
    m_looking.stop();
    Mark(nullptr);
}

void TZEPHover::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_looking.timerId()) return QObject::timerEvent(event);
    m_looking.stop();
    if (!m_pointer || m_panel->MouseDowned()) return;
    const QPointer<TZEPHover> alive(this); // what is drawn to find it may free the panel
    TZEPObject* found = nullptr;
    m_panel->TryFind([&] { found = Find(*m_pointer); });
    if (alive) Mark(found);
}

TZEPObject* TZEPHover::Find(const QPoint& place) const {
    if (m_find) return m_find(place);
    TZEPCamera* camera = m_panel->Camera();
    if (!camera || !camera->Scene() || !m_panel->MakeCurrent()) return nullptr;
    const QPointer<TZEPPanel> panel(m_panel);
    const auto done = qScopeGuard([&panel] {
        if (panel) panel->DoneCurrent();
    });
    return camera->Scene()->Pick(camera, m_panel->Width(), m_panel->Height(), place.x(),
                                 m_panel->Height() - place.y(), PickSize, PickSize, AnyLevel);
}

void TZEPHover::Mark(TZEPObject* object) {
    if (object == m_object.data() && (object || !m_mark)) return;
    m_object = object;
    m_mark.reset();
    m_panel->InvalidateOver();
    Q_EMIT Changed(object);
}

// --- drawing -----------------------------------------------------------------------------------

void TZEPHover::Draw() {
    if (!m_object || !m_object->Scene() || !m_panel->Camera()) return;
    if (m_panel->Camera()->IsOffSheet(*m_object)) return; // it stands elsewhere
    if (!m_mark) m_mark = std::make_unique<TObjectMark>(*m_object);
    const TGLMatrixd4 view = m_panel->Camera()->GetViewMatrix();
    TZEPFrame& frame = m_object->Scene()->Frame();
    const TZEPCutScope cut(frame, *m_panel->Camera());
    const TZEPSectionScope sections(frame, view);
    m_mark->Draw(view, static_cast<float>(m_panel->devicePixelRatioF()));
}

} // namespace ZEP
