#include <zep/batch/BatchMarks.h>

#include <zep/batch/GatheredClass.h>
#include <zep/batch/Gathering.h>
#include <zep/batch/PixelScale.h>
#include <zep/batch/Spots.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Vectors.h>

namespace ZEP {

namespace {

/// From the frame that an object stands in to that of the batch.
TGLMatrixd4 FrameOf(const TZEPObject& object, const TZEPObject& batch) {
    TGLMatrixd4 frame = idd;
    for (const TZEPObject* above = object.Parent(); above && above != &batch;
         above = above->Parent())
        frame = Product(above->GetMatrix(), frame);
    return frame;
}

/// All above it are seen as well; the batch itself is not asked.
bool IsSeen(const TZEPObject& object, const TZEPObject& batch) {
    const TZEPObject* each = &object;
    while (each && each != &batch && each->Visible()) each = each->Parent();
    return each == &batch;
}

} // namespace

bool TBatchMarks::AreOfAll(const TZEPObject& batch) const {
    bool selected = batch.Selected();
    for (const TZEPObject* above = batch.Parent(); above; above = above->Parent()) {
        if (m_isBatch(*above)) return selected || AreOfAll(*above);
        if (!IsGroup(*above)) break;
        selected = selected || above->Selected();
    }
    return batch.Selected();
}

/// \param whole  what is below it, too
void TBatchMarks::List(TZEPObject& object, const TGLMatrixd4& frame, bool whole,
                       std::vector<TMarked>& marked) const {
    if (!object.Visible() || m_isBatch(object)) return;
    const TGLMatrixd4 matrix = MatrixOf(object, frame);
    const bool group = IsGroup(object);
    if (!group) marked.push_back({&object, matrix});
    if (!group && !whole) return;
    for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
        List(*object.GetItem(i), matrix, true, marked);
}

void TBatchMarks::Build(const TZEPObject& batch, const TBatchObjects& selected, bool whole,
                        TBatchRules rules) {
    m_stale = false;
    std::vector<TMarked> marked;
    for (const QPointer<TZEPObject>& object : selected)
        if (object && IsSeen(*object, batch)) List(*object, FrameOf(*object, batch), whole, marked);
    std::vector<TZEPBlockBox> boxes;
    for (const TMarked& mark : marked) boxes.push_back(BoxOf(*mark.Object, mark.Matrix));
    TSpots spots(boxes);
    std::vector<std::size_t> spotOf;
    for (const TZEPBlockBox& box : boxes) spotOf.push_back(spots.Place(box));
    m_spots.assign(spots.Count(), {});
    for (std::size_t i = 0; i < m_spots.size(); ++i) {
        rules.Error = spots.Error(i);
        m_spots[i].Origin = spots.Origin(i);
        m_spots[i].Paths.Start(m_spots[i].Origin, rules);
    }
    for (std::size_t i = 0; i < marked.size(); ++i)
        m_spots[spotOf[i]].Paths.AddMark(*marked[i].Object, marked[i].Matrix);
    for (TSpot& spot : m_spots) spot.Paths.Close();
}

void TBatchMarks::Draw(TZEPFrame& frame, const TLayerView& view) const {
    frame.Run.End();
    for (const TSpot& spot : m_spots) {
        const TMatrixScope place(frame, TranslationTo(spot.Origin), view.Exact);
        const TZEPViewVolume volume = TZEPViewVolume::OfContext(WidestCulled / 2);
        const TPixelScale pixels = TPixelScale::OfContext();
        spot.Paths.DrawMarks({1, &volume, &pixels}, view.Widths);
    }
}

} // namespace ZEP
