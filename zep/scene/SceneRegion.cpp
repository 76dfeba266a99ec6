#include <zep/framework/Watch.h>
#include <zep/gl/Scopes.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>
#include <zep/scene/Scene.h>
#include <zep/scene/SectionScopes.h>
#include <zep/scene/SelectHits.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_set>

namespace ZEP {

namespace {

using TFoundObjects = std::vector<QPointer<TZEPObject>>;

constexpr int Surroundings = 100; // widths of a view: no more than that of an object is looked at
constexpr double MostDepth = std::numeric_limits<GLuint>::max();

TGLMatrixd4 Multiplied(const TGLMatrixd4& a, const TGLMatrixd4& b) {
    TGLMatrixd4 product;
    MultMatrixd(a, b, product);
    return product;
}

/// OpenGL counts in floats, which are coarse far from the origin: what the camera can tell exactly
/// stands in for what is loaded.
TGLMatrixd4 ViewOf(const TZEPSceneCamera& camera) {
    const std::optional<TGLMatrixd4> exact = camera.ExactView();
    return exact ? *exact : LoadedMatrix(GL_MODELVIEW_MATRIX);
}

bool Holds(const TGLMatrixd4& toClip, const TGLArrayd3& point) {
    std::array<double, 4> clip{};
    for (std::size_t row = 0; row < 4; ++row)
        clip[row] = toClip[0][row] * point[0] + toClip[1][row] * point[1] +
                    toClip[2][row] * point[2] + toClip[3][row];
    return clip[3] > 0 && std::abs(clip[0]) <= clip[3] && std::abs(clip[1]) <= clip[3];
}

/// All of the object's box is in a view. \param toClip  from the scene to that view
bool HoldsBox(const TGLMatrixd4& toClip, const TZEPObject& object) {
    const TGLMatrixd4 own = Multiplied(toClip, object.GetAbsoluteMatrix());
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetSize(min, max);
    for (unsigned corner = 0; corner < 8; ++corner)
        if (!Holds(own, {(corner & 1U ? max : min)[0], (corner & 2U ? max : min)[1],
                         (corner & 4U ? max : min)[2]}))
            return false;
    return true;
}

/// What lies to the left, to the right, below and above of a region.
std::array<TZEPPickRegion, 4> Around(const TZEPPickRegion& region) {
    const int reach = Surroundings * std::max(region.ViewWidth, region.ViewHeight);
    const auto strip = [&](int x, int y) {
        // The middle of a region is a whole number: widths of odd sum have none.
        const int width = x == 0 ? 2 * reach : reach + (reach + region.Width) % 2;
        const int height = y == 0 ? 2 * reach : reach + (reach + region.Height) % 2;
        return TZEPPickRegion{region.ViewWidth,
                              region.ViewHeight,
                              region.X + x * (width + region.Width) / 2,
                              region.Y + y * (height + region.Height) / 2,
                              width,
                              height};
    };
    return {strip(-1, 0), strip(1, 0), strip(0, -1), strip(0, 1)};
}

bool IsBelow(const TZEPObject& object, const TZEPObject& other) {
    const TZEPObject* above = &object;
    while (above && above != &other) above = above->Parent();
    return above;
}

TFoundObjects SelectableOf(const TZEPSelectHits& hits) {
    TFoundObjects found;
    std::unordered_set<const TZEPObject*> known;
    for (const TZEPSelectHit& hit : hits.List())
        if (hit.Object->Selectable() && known.insert(hit.Object).second)
            found.emplace_back(hit.Object);
    return found;
}

/// What is seen through a viewport of a sheet stands elsewhere, so that nothing tells whether all
/// of it is seen.
void KeepOnSheet(const TZEPSceneCamera& camera, TFoundObjects& objects) {
    const TZEPObject* sheet = camera.Sheet();
    if (sheet)
        std::erase_if(objects, [&](const auto& object) { return !IsBelow(*object, *sheet); });
}

void Remove(TFoundObjects& objects, const TZEPSelectHits& hits) {
    std::unordered_set<const TZEPObject*> hit;
    for (const TZEPSelectHit& each : hits.List()) hit.insert(each.Object);
    std::erase_if(objects, [&hit](const auto& object) { return !object || hit.contains(object); });
}

} // namespace

/// Each where it stands, without what is below it.
void TZEPScene::DrawEach(const std::vector<QPointer<TZEPObject>>& objects,
                         const TGLMatrixd4& view) {
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    const TZEPDrawRun::Walk walk(frame->Run);
    const TZEPSectionScope sections(*frame, view);
    m_selectNames.clear();
    for (const QPointer<TZEPObject>& object : objects) {
        if (!object || frame->SceneIsGone) continue;
        const TZEPMatrixScope place;
        glLoadMatrixd(Multiplied(view, object->GetAbsoluteMatrix())[0].data());
        DrawOwn(*object, *object, *this, dsAllObjects, dkSelect);
    }
}

/// Leaves what no part of is seen around the region. What has its box within needs no second look.
void TZEPScene::KeepInside(TZEPSceneCamera& camera, const TZEPPickRegion& region,
                           TFoundObjects& objects) {
    const std::shared_ptr<TZEPFrame> frame = m_frame;
    const QPointer<TZEPObject> cameraObject(camera.AsObject());
    TGLMatrixd4 view;
    TGLMatrixd4 toClip;
    {
        const TZEPMatricesScope matrices;
        camera.Pick(region.ViewWidth, region.ViewHeight, region.X, region.Y,
                    std::max(region.Width, 1), std::max(region.Height, 1));
        view = ViewOf(camera);
        toClip = Multiplied(LoadedMatrix(GL_PROJECTION_MATRIX), view);
    }
    TFoundObjects doubtful;
    for (const QPointer<TZEPObject>& object : objects)
        if (!HoldsBox(toClip, *object)) doubtful.push_back(object);
    for (const TZEPPickRegion& strip : Around(region)) {
        if (doubtful.empty() || !cameraObject) return;
        const auto hits = FindHits(camera, strip, [&] { DrawEach(doubtful, view); });
        if (frame->SceneIsGone || !hits) return objects.clear();
        Remove(objects, *hits);
        Remove(doubtful, *hits);
    }
}

std::vector<TZEPObject*> TZEPScene::ObjectsIn(TZEPSceneCamera& camera, const TZEPPickRegion& region,
                                              TZEPReach reach) {
    const QPointer<TZEPObject> cameraObject(camera.AsObject());
    const auto hits = FindHits(camera, region);
    if (!hits) return {};
    TFoundObjects found = SelectableOf(*hits);
    if (reach == TZEPReach::Inside && cameraObject) {
        KeepOnSheet(camera, found);
        KeepInside(camera, region, found);
    }
    std::vector<TZEPObject*> objects;
    for (const QPointer<TZEPObject>& object : found)
        if (object) objects.push_back(object);
    return objects;
}

std::optional<double> TZEPScene::DepthIn(TZEPSceneCamera& camera, const TZEPPickRegion& region) {
    const auto hits = FindHits(camera, region);
    if (!hits || hits->List().empty()) return {};
    const auto nearest = std::ranges::min_element(hits->List(), {}, &TZEPSelectHit::MinDepth);
    return nearest->MinDepth / MostDepth;
}

void TZEPScene::SelectObjects(const std::vector<TZEPObject*>& objects, bool clearFirst) {
    const TFoundObjects chosen(objects.begin(), objects.end());
    const TZEPWatch alive(this);
    if (clearFirst) DeselectAll();
    for (const QPointer<TZEPObject>& object : chosen)
        if (alive && object) object->SetSelected(true);
    if (alive) Invalidate(this);
}

} // namespace ZEP
