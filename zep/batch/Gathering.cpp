#include <zep/batch/Gathering.h>

#include <zep/appearance/effects/ReflexedObject.h>
#include <zep/batch/GatheredClass.h>
#include <zep/batch/PathBatch.h>
#include <zep/batch/Spots.h>
#include <zep/objects/Label.h>
#include <zep/objects/LineSet.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>

#include <algorithm>

namespace ZEP {

namespace {

constexpr std::size_t BlockWeight = 2048; // vertexes, about: a block is made anew as a whole
constexpr std::size_t LargeGroup = BlockWeight / 2; // objects

/// A colour is all that its material tells. One that was asked for its material has one that may
/// change without a word.
bool HasPlainMaterial(const TZEPObject& object) {
    return object.MaterialIndex() < 0 && !object.HasOwnMaterial();
}

bool IsPlainFace(TZEPPolygon& polygon) {
    const int count = polygon.Vertexes()->Count();
    return count >= 3 && (count <= 4 || polygon.Concave()) && polygon.AutoNormal() &&
           !polygon.ColorVertexes() && HasPlainMaterial(polygon);
}

bool IsPlainText(TZEPLabel& label) {
    return !label.BitmapFont() && label.DrawType() == dtFill && HasPlainMaterial(label);
}

/// Shadows and mirrors ask each object, and a class that is not known draws anything.
bool StandsAlone(const TZEPObject& object) {
    if (object.GetItemsCount() > 0 || object.CastsShadows() || object.ReceivesShadows() ||
        TZEPGatheredClass::Of(object) != TZEPGathered::Shape)
        return true;
    const auto* mirror = qobject_cast<const TZEPReflexedObject*>(&object);
    return mirror && mirror->Reflection() != 0;
}

/// It is drawn from arrays.
bool Gathers(TZEPObject& object) {
    if (StandsAlone(object)) return false;
    if (auto* label = qobject_cast<TZEPLabel*>(&object)) return IsPlainText(*label);
    if (auto* polygon = qobject_cast<TZEPPolygon*>(&object)) return IsPlainFace(*polygon);
    return HasPlainMaterial(object) && TPathBatch::Takes(object);
}

std::size_t WeightOf(TZEPObject& object) {
    int count = 0;
    if (auto* chain = qobject_cast<TZEPPolyline*>(&object)) count = chain->Vertexes()->Count();
    if (auto* lines = qobject_cast<TZEPLineSet*>(&object)) count = lines->Vertexes()->Count();
    if (auto* polygon = qobject_cast<TZEPPolygon*>(&object))
        count = std::max(polygon->Vertexes()->Count() - 4, 0);
    return 2 + static_cast<std::size_t>(count);
}

/// Objects in a group, up to `enough`.
std::size_t CountIn(const TZEPObject& group, std::size_t enough) {
    auto count = static_cast<std::size_t>(group.GetItemsCount());
    for (int i = 0; i < group.GetItemsCount() && count < enough; ++i)
        if (const TZEPObject& child = *group.GetItem(i);
            child.GetItemsCount() > 0 && IsGroup(child) && child.Visible())
            count += CountIn(child, enough - count);
    return count;
}

void AddSelected(const TZEPObject& parent, int first, int end, TBatchObjects& selected) {
    for (int i = first; i < end; ++i)
        if (TZEPObject* object = parent.GetItem(i); object->Selected())
            selected.emplace_back(object);
}

} // namespace

TGLMatrixd4 Product(const TGLMatrixd4& a, const TGLMatrixd4& b) {
    TGLMatrixd4 product;
    MultMatrixd(a, b, product);
    return product;
}

TGLMatrixd4 MatrixOf(const TZEPObject& object, const TGLMatrixd4& frame) {
    const TGLMatrixd4 own = object.GetMatrix();
    return IsIdentityd(frame) ? own : IsIdentityd(own) ? frame : Product(frame, own);
}

// --- parts -------------------------------------------------------------------------------------

void TPart::ListParents(TIsBatch isBatch) {
    Parents.clear();
    const auto note = [&](const auto& self, TZEPObject& object) -> void {
        if (object.GetItemsCount() == 0 || isBatch(object)) return;
        static_cast<void>(object.TakeChildNews());
        Parents.emplace_back(&object);
        for (int i = 0, count = object.GetItemsCount(); i < count; ++i)
            self(self, *object.GetItem(i));
    };
    for (const QPointer<TZEPObject>& object : Separates)
        if (object) note(note, *object);
}

void TPart::ListSelected(const TZEPObject& group, int first) {
    Selected.clear();
    AddSelected(group, first, first + Children, Selected);
    for (const TBatchObjects* others : {&Groups, &Parents})
        for (const QPointer<TZEPObject>& other : *others)
            if (other) AddSelected(*other, 0, other->GetItemsCount(), Selected);
}

std::size_t TPart::BlockCount() const {
    return Group ? Group->BlockCount() : Marks.IsNew ? 0 : 1;
}

bool TGroupParts::IsUnchanged() const {
    return Group && Group->Visible() && Group->GetMatrix() == Matrix;
}

std::size_t TGroupParts::BlockCount() const {
    std::size_t count = 0;
    for (const TPart& part : Parts) count += part.BlockCount();
    return count;
}

// --- gathering ---------------------------------------------------------------------------------

TParts TGathering::Collect(TZEPObject& group, const TGLMatrixd4& frame, int first, int count) {
    TParts parts;
    const std::uint32_t own = AddFrame(frame);
    TPart* part = nullptr;
    for (int i = first; i < first + count; ++i) {
        TZEPObject& object = *group.GetItem(i);
        const bool hides = Hides(group, i);
        if (!hides && IsLarge(object)) {
            parts.push_back(Open(object, frame));
            part = nullptr;
            continue;
        }
        if (!part) part = &StartPart(parts);
        ++part->Children;
        if (!hides) Look(object, own, *part);
        // What is left does not make a block by itself, where it is little.
        const int left = first + count - i - 1;
        if (m_weight >= BlockWeight && left > part->Children / 2) part = nullptr;
    }
    if (parts.empty()) StartPart(parts);
    for (TPart& each : parts) each.ListParents(m_isBatch);
    int child = first;
    for (TPart& each : parts) {
        if (!each.Parents.empty() || each.Group) each.ListSelected(group, child);
        child += each.Children;
    }
    return parts;
}

bool TGathering::Hides(const TZEPObject& group, int child) const {
    const auto number = static_cast<std::size_t>(child);
    return m_hidden && &group == m_of && number < m_hidden->size() && (*m_hidden)[number];
}

bool TGathering::IsLarge(const TZEPObject& object) const {
    return m_groups && object.GetItemsCount() > 0 && object.Visible() && IsGroup(object) &&
           CountIn(object, LargeGroup) >= LargeGroup;
}

TPart TGathering::Open(TZEPObject& group, const TGLMatrixd4& frame) {
    static_cast<void>(group.TakeChildNews());
    auto parts = std::make_unique<TGroupParts>();
    parts->Group = &group;
    parts->Matrix = group.GetMatrix();
    parts->Frame = Product(frame, parts->Matrix);
    parts->Parts = Collect(group, parts->Frame, 0, group.GetItemsCount());
    TPart part;
    part.Children = 1;
    part.Group = std::move(parts);
    return part;
}

TPart& TGathering::StartPart(TParts& parts) {
    Blocks.emplace_back();
    m_weight = 0;
    return parts.emplace_back();
}

std::uint32_t TGathering::AddFrame(const TGLMatrixd4& frame) {
    Frames.push_back(frame);
    return static_cast<std::uint32_t>(Frames.size() - 1);
}

void TGathering::Look(TZEPObject& object, std::uint32_t frame, TPart& part) {
    if (object.Selected()) part.Selected.emplace_back(&object);
    const bool group = IsGroup(object);
    if (group && !m_groups) part.Layers.emplace_back(&object);
    if (!object.Visible() || (group && !m_groups)) return;
    if (group)
        LookInto(object, MatrixOf(object, Frames[frame]), part);
    else
        Note(object, frame, part);
}

void TGathering::LookInto(TZEPObject& group, const TGLMatrixd4& frame, TPart& part) {
    part.Groups.emplace_back(&group);
    static_cast<void>(group.TakeChildNews());
    const std::uint32_t own = AddFrame(frame);
    for (int i = 0, count = group.GetItemsCount(); i < count; ++i)
        Look(*group.GetItem(i), own, part);
}

void TGathering::Note(TZEPObject& object, std::uint32_t frame, TPart& part) {
    if (m_steps) m_steps->Take();
    TBlock& block = Blocks.back();
    m_weight += WeightOf(object);
    if (Gathers(object)) {
        ++block.Gathered;
        Found.push_back({&object, frame, static_cast<std::uint32_t>(Blocks.size() - 1), 0});
        Boxes.push_back(BoxOf(object, MatrixOf(object, Frames[frame])));
        return;
    }
    (qobject_cast<TZEPShape*>(&object) ? block.Shapes : block.Others).Add(Frames[frame], object);
    if (object.GetItemsCount() > 0) part.Separates.emplace_back(&object);
}

} // namespace ZEP
