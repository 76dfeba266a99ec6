#include <zep/batch/ObjectMark.h>

#include <zep/batch/Batch.h>
#include <zep/batch/DrawScopes.h>
#include <zep/batch/PathBatch.h>
#include <zep/batch/PixelScale.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

namespace ZEP {

namespace {

constexpr TMarkLook HoverLook{{120, 210, 255}, {10, 30, 50}, 3};
constexpr double ArcError = 1e-4; // of the diagonal of the object

bool HasRoundArcs(const TZEPObject& object) {
    const TZEPObject* above = object.Parent();
    while (above && !qobject_cast<const TZEPBatch*>(above)) above = above->Parent();
    return above && static_cast<const TZEPBatch*>(above)->RoundArcs();
}

} // namespace

TObjectMark::TObjectMark(TZEPObject& object) : m_paths(std::make_unique<TPathBatch>()) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetAbsoluteSize(min, max);
    m_origin = Middle(min, max);
    TBatchRules rules;
    rules.RoundArcs = HasRoundArcs(object);
    rules.Error = ArcError * Distance(min, max);
    m_paths->Start(m_origin, rules);
    m_paths->AddMark(object, object.GetAbsoluteMatrix());
    m_paths->Close();
}

TObjectMark::~TObjectMark() = default;

void TObjectMark::Draw(const TGLMatrixd4& view, float widths) const {
    TGLMatrixd4 place;
    MultMatrixd(view, TranslationTo(m_origin), place);
    glLoadMatrixd(place[0].data());
    const TZEPViewVolume volume = TZEPViewVolume::OfContext(WidestCulled / 2);
    const TPixelScale pixels = TPixelScale::OfContext();
    m_paths->DrawMarks({1, &volume, &pixels}, widths, HoverLook);
}

} // namespace ZEP
