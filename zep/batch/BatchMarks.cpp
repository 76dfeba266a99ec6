#include <zep/batch/BatchMarks.h>

#include <zep/batch/GatheredClass.h>
#include <zep/scene/Frame.h>

#include <utility>

namespace ZEP {

namespace {

/// From the frame that an object stands in to that of the batch.
TGLMatrixd4 FrameOf(const TZEPObject& object, const TZEPObject& batch) {
    TGLMatrixd4 frame = idd;
    for (const TZEPObject* above = object.Parent(); above && above != &batch;
         above = above->Parent())
        MultMatrixd(above->GetMatrix(), TGLMatrixd4(frame), frame);
    return frame;
}

/// Its middle, and that of the first object where it is a group.
TGLArrayd3 PlaceOf(const TZEPObject& object, const TZEPObject& batch) {
    if (IsGroup(object) && object.GetItemsCount() > 0) return PlaceOf(*object.GetItem(0), batch);
    TGLArrayd3 place = MiddleOf(object);
    Xformd(object.GetMatrix(), place);
    Xformd(FrameOf(object, batch), place);
    return place;
}

/// All above it are seen as well; the batch itself is not asked.
bool IsSeen(const TZEPObject& object, const TZEPObject& batch) {
    const TZEPObject* each = &object;
    while (each && each != &batch && each->Visible()) each = each->Parent();
    return each == &batch;
}

} // namespace

/// What else changed would have been told on its own.
bool TBatchMarks::NoteSelection(TZEPObject& object) {
    const bool changed =
        object.Selected() ? m_selected.insert(&object).second : m_selected.erase(&object) > 0;
    m_stale = m_stale || changed;
    return changed;
}

void TBatchMarks::Forget(const TZEPObject* gone) {
    if (m_selected.empty()) return;
    std::erase_if(m_selected, [gone](const TZEPObject* object) {
        while (object && object != gone) object = object->Parent();
        return object != nullptr;
    });
    m_stale = true;
}

/// \param whole  all of a group is marked, whatever marks its objects make themselves
void TBatchMarks::Add(TZEPObject& object, const TGLMatrixd4& frame, bool whole) {
    if (!object.Visible()) return;
    TGLMatrixd4 matrix;
    MultMatrixd(frame, object.GetMatrix(), matrix);
    if (IsGroup(object)) {
        for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
            Add(*object.GetItem(i), matrix, true);
    } else if (!m_paths.Add(object, matrix) && (whole || TLayerBatch::Gathers(object))) {
        m_boxes.push_back({&object, matrix});
    }
}

void TBatchMarks::Build(const TZEPObject& batch, const TBatchRules& rules) {
    std::erase_if(m_selected, [](const TZEPObject* object) { return !object->Selected(); });
    m_origin = m_selected.empty() ? zero3d : PlaceOf(**m_selected.begin(), batch);
    m_paths.Start(m_origin, rules);
    m_boxes.clear();
    for (TZEPObject* object : m_selected)
        if (IsSeen(*object, batch)) Add(*object, FrameOf(*object, batch), false);
    m_paths.Close();
}

void TBatchMarks::Draw(const TZEPObject& batch, const TBatchRules& rules, TZEPFrame& frame,
                       const TLayerView& view) {
    if (std::exchange(m_stale, false)) Build(batch, rules);
    frame.Run.Enter(false);
    if (!m_paths.IsEmpty()) {
        TGLMatrixd4 origin = idd;
        origin[3] = {m_origin[0], m_origin[1], m_origin[2], 1};
        const TMatrixScope place(frame, origin, view.Exact);
        m_paths.DrawMarks(view.Widths);
    }
    const std::vector<TBox> boxes = m_boxes; // one that draws may change them
    for (const TBox& box : boxes) {
        if (!box.Object) continue;
        const TMatrixScope place(frame, box.Matrix);
        box.Object->DrawSelection();
    }
}

} // namespace ZEP
