#include <zep/framework/DebugLog.h>
#include <zep/framework/Watch.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SectionScopes.h>
#include <zep/scene/SelectHits.h>
#include <zep/scene/Vectors.h>

#include <GL/gl.h>

#include <QPointer>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZEP {

namespace {

constexpr int PointSize = 4;
constexpr std::size_t BufferStep = 500;
constexpr std::size_t RecordEntries = 4; // of an object that pushes no names of its own

void LogDistance(const TGLArrayd3& eye, double distance, const TZEPObject& object,
                 const TGLArrayd3& min, const TGLArrayd3& max) {
    DebugLog(QString::asprintf("Camera: %f %f %f", eye[0], eye[1], eye[2]));
    DebugLog(QString::asprintf("Dist: %f Picked: %s Pos: (%f %f %f) -- (%f %f %f)", distance,
                               qPrintable(object.Name()), min[0], min[1], min[2], max[0], max[1],
                               max[2]));
}

} // namespace

GLuint TZEPScene::SelectName(TZEPObject* object) {
    m_selectNames.push_back(object);
    return static_cast<GLuint>(m_selectNames.size() - 1);
}

// At the first overflow one step more will mostly do. What is still too small then holds whatever
// was drawn at the next try, or 100,000 hits would take 800 draws.
void TZEPScene::GrowSelectBuffer(int overflows) {
    const std::size_t needed = overflows == 1 ? 0 : RecordEntries * m_selectNames.size();
    const std::size_t size = std::max(m_selectBuffer->size() + 1, needed);
    m_selectBuffer->resize((size + BufferStep - 1) / BufferStep * BufferStep);
}

// What is drawn may free the scene, while OpenGL still writes into the buffer.
int TZEPScene::DrawInSelectMode(const std::function<void()>& draw) {
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    const std::shared_ptr<std::vector<GLuint>> buffer = m_selectBuffer;
    for (int overflows = 1;; ++overflows) {
        glSelectBuffer(static_cast<GLsizei>(buffer->size()), buffer->data());
        glRenderMode(GL_SELECT);
        auto leave = qScopeGuard([] { glRenderMode(GL_RENDER); });
        glInitNames();
        frame->TreeChanged = false;
        draw ? draw() : Draw(*this, dsAllObjects, dkSelect);
        leave.dismiss();
        const int hits = glRenderMode(GL_RENDER);
        if (frame->SceneIsGone) return 0;
        if (hits >= 0) return hits;
        GrowSelectBuffer(overflows);
    }
}

/// \param draw  none: all that there is
std::optional<TZEPSelectHits> TZEPScene::FindHits(TZEPSceneCamera& camera,
                                                  const TZEPPickRegion& region,
                                                  const std::function<void()>& draw) {
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    const TZEPMatricesScope matrices;
    const TZEPCutScope cut(*frame, camera);
    const QScopedValueRollback sheet(frame->Sheet, QPointer<TComponent>(camera.Sheet()));
    camera.Pick(region.ViewWidth, region.ViewHeight, region.X, region.Y, std::max(region.Width, 1),
                std::max(region.Height, 1));
    const QPointer<TZEPScene> alive(this);
    m_selectsNear = true;
    const auto done = qScopeGuard([&alive] {
        if (alive) alive->m_selectsNear = false;
    });
    const int records = DrawInSelectMode(draw);
    if (frame->SceneIsGone) return {};
    TZEPSelectHits hits(records, *m_selectBuffer, m_selectNames);
    if (frame->TreeChanged) hits.KeepWithin(*this);
    return hits;
}

double TZEPScene::GetObjectDistance(TZEPSceneCamera* camera, TZEPObject* object) const {
    const TGLArrayd3 eye = camera->AsObject()->GetAbsoluteCenter();
    TGLArrayd3 min;
    TGLArrayd3 max;
    object->GetAbsoluteSize(min, max);
    double distance = std::numeric_limits<double>::infinity();
    for (unsigned corner = 0; corner < 8; ++corner)
        distance = std::min(
            distance, Distance(eye, {(corner & 1U ? max : min)[0], (corner & 2U ? max : min)[1],
                                     (corner & 4U ? max : min)[2]}));
    if (DebugLogEnabled()) LogDistance(eye, distance, *object, min, max);
    return distance;
}

TZEPObject* TZEPScene::BestOf(const TZEPSelectHits& hits, TZEPSceneCamera* camera,
                              std::optional<int> level) const {
    TZEPBestHit best(m_manualDepthCheck);
    const bool measured = m_manualDepthCheck || DebugLogEnabled();
    for (const TZEPSelectHit& hit : hits.List()) {
        const double distance = measured ? GetObjectDistance(camera, hit.Object) : 0;
        const bool picked = !level || (hit.Object->Pickable() && hit.Object->PickLevel() <= *level);
        if (hit.Object->Selectable() && picked) best.Offer(hit, distance);
    }
    return best.Object();
}

TZEPObject* TZEPScene::Pick(TZEPSceneCamera* camera, int viewWidth, int viewHeight, int x, int y,
                            int pickWidth, int pickHeight, int level) {
    if (!camera) return nullptr;
    const QPointer<TZEPObject> cameraObject(camera->AsObject());
    const auto hits = FindHits(*camera, {viewWidth, viewHeight, x, y, pickWidth, pickHeight});
    return hits && cameraObject ? BestOf(*hits, camera, level) : nullptr;
}

int TZEPScene::Select(TZEPSceneCamera* camera, int viewWidth, int viewHeight, int x, int y,
                      int pickWidth, int pickHeight, bool processHits, bool toggle,
                      bool clearFirst) {
    if (!SelectionEnabled()) {
        DeselectAll();
        return 0;
    }
    if (!camera) return 0;
    const QPointer<TZEPObject> cameraObject(camera->AsObject());
    const auto hits = FindHits(*camera, {viewWidth, viewHeight, x, y, pickWidth, pickHeight});
    if (!hits) return 0;
    const bool isPoint = pickWidth == PointSize && pickHeight == PointSize;
    // From here on handlers of the events may do as they like with the tree.
    std::vector<QPointer<TZEPObject>> chosen;
    if (processHits && isPoint)
        chosen.emplace_back(cameraObject ? BestOf(*hits, camera, {}) : nullptr);
    else if (processHits)
        for (const TZEPSelectHit& hit : hits->List()) chosen.emplace_back(hit.Object);
    const QPointer<TZEPScene> alive(this);
    if (clearFirst) DeselectAll();
    for (const QPointer<TZEPObject>& object : chosen)
        if (alive && object && object->Scene())
            object->SetSelected(!isPoint || !toggle || !object->Selected());
    if (alive) Invalidate(this);
    return hits->RecordCount();
}

void TZEPScene::DeselectAll() {
    const TZEPWatch alive(this);
    SetSelected(false);
    if (alive) DeselectChildren();
}

} // namespace ZEP
