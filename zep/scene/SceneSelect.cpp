#include <zep/framework/DebugLog.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SelectHits.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <GL/gl.h>

#include <QScopeGuard>

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
    const std::size_t size = std::max(m_selectBuffer.size() + 1, needed);
    m_selectBuffer.resize((size + BufferStep - 1) / BufferStep * BufferStep);
}

int TZEPScene::DrawInSelectMode() {
    for (int overflows = 1;; ++overflows) {
        glSelectBuffer(static_cast<GLsizei>(m_selectBuffer.size()), m_selectBuffer.data());
        glRenderMode(GL_SELECT);
        auto leave = qScopeGuard([] { glRenderMode(GL_RENDER); });
        glInitNames();
        Draw(*this, dsAllObjects, dkSelect);
        leave.dismiss();
        const int hits = glRenderMode(GL_RENDER);
        if (hits >= 0) return hits;
        GrowSelectBuffer(overflows);
    }
}

TZEPSelectHits TZEPScene::FindHits(TZEPSceneCamera& camera, const TZEPPickRegion& region) {
    const TZEPMatricesScope matrices;
    camera.Pick(region.ViewWidth, region.ViewHeight, region.X, region.Y, region.Width,
                region.Height);
    m_selectsNear = true;
    const auto done = qScopeGuard([this] { m_selectsNear = false; });
    return {DrawInSelectMode(), m_selectBuffer, m_selectNames};
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
    const TZEPPickRegion region{
        viewWidth, viewHeight, x, y, std::max(pickWidth, 1), std::max(pickHeight, 1)};
    return BestOf(FindHits(*camera, region), camera, level);
}

int TZEPScene::Select(TZEPSceneCamera* camera, int viewWidth, int viewHeight, int x, int y,
                      int pickWidth, int pickHeight, bool processHits, bool toggle,
                      bool clearFirst) {
    if (!SelectionEnabled()) {
        DeselectAll();
        return 0;
    }
    if (!camera) return 0;
    const TZEPPickRegion region{
        viewWidth, viewHeight, x, y, std::max(pickWidth, 1), std::max(pickHeight, 1)};
    TZEPSelectHits hits = FindHits(*camera, region);
    hits.SetBest(processHits ? BestOf(hits, camera, {}) : nullptr);
    // From here on handlers of the events may do as they like with the tree.
    const TZEPSelectHits::Watch watch(hits, *this);
    if (clearFirst) DeselectAll();
    if (region.Width == PointSize && region.Height == PointSize)
        SelectBest(hits, toggle, clearFirst);
    else if (processHits)
        hits.SelectAll();
    Invalidate(this);
    return hits.RecordCount();
}

void TZEPScene::SelectBest(const TZEPSelectHits& hits, bool toggle, bool clearFirst) {
    if (clearFirst) DeselectAll();
    if (TZEPObject* best = hits.Best()) best->SetSelected(!toggle || !best->Selected());
}

void TZEPScene::DeselectAll() {
    SetSelected(false);
    DeselectChildren();
}

} // namespace ZEP
