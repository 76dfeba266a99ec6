#include <zep/framework/Watch.h>
#include <zep/scene/ChildList.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Object.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/XForm.h>

namespace ZEP {

namespace {

bool IsBox(const TGLArrayd3& min, const TGLArrayd3& max) {
    return min[0] <= max[0] && min[1] <= max[1] && min[2] <= max[2]; // not so where one is NaN
}

} // namespace

TZEPFrame& TZEPObject::DrawFrame() const {
    return m_scene ? m_scene->Frame() : TZEPFrame::OfNoScene();
}

void TZEPObject::ForgetBox() {
    if (m_parent) Siblings().ForgetBox(this);
}

bool TZEPObject::HasKeptBox() const {
    return m_parent && (Siblings().KnowsBox(this) || Siblings().IsWatched());
}

void TZEPObject::Extend(TZEPBlockBox& box) const {
    if (m_visible) box.Passes |= GetItemsCount() > 0 ? AllPasses : Passes();
    ExtendBox(box);
}

void TZEPObject::ExtendBox(TZEPBlockBox& box) const {
    // Whether it is visible or not: a deselection passes over bounded blocks.
    if (GetItemsCount() > 0 || m_selected) box.Bounded = false;
    if (!m_visible || !box.Bounded) return;
    box.Bounded = StaysInSize() && IsOfKnownClass();
    if (!box.Bounded) return;
    TGLArrayd3 min;
    TGLArrayd3 max;
    GetSize(min, max);
    if (m_xform && m_xform->IsActive()) XformBoxd(m_xform->GetMatrix(), min, max);
    box.Bounded = IsBox(min, max);
    MinBoundsd(box.Min, min);
    MaxBoundsd(box.Max, max);
}

bool TZEPObject::IsInView() const {
    TZEPBlockBox box;
    ExtendBox(box);
    return !box.Bounded || TZEPViewFrame::Shows(DrawFrame(), box) != TZEPSeen::Nothing;
}

// A block of children does not tell about one that has children itself: those are walked.
bool TZEPObject::IsOutOfView() const {
    if (!Children() || m_selected || !TZEPViewFrame::Bounds(DrawFrame()) || !StaysInSize() ||
        !IsOfKnownClass())
        return false;
    TZEPBlockBox box;
    GetSize(box.Min, box.Max);
    return IsBox(box.Min, box.Max) && TZEPViewFrame::Shows(DrawFrame(), box) == TZEPSeen::Nothing;
}

void TZEPObject::DeselectChildren() {
    TZEPChildList<TZEPObject>* const children = Children();
    if (!children) return;
    children->ForEachBlock([children](std::size_t block) {
        if (children->IsBounded(block)) return;
        children->ForEachIn(block, [](TZEPObject* child) {
            const TZEPWatch alive(child);
            child->SetSelected(false);
            if (alive) child->DeselectChildren();
        });
    });
}

} // namespace ZEP
