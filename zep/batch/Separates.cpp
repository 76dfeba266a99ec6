#include <zep/batch/Separates.h>

#include <zep/batch/DrawScopes.h>
#include <zep/batch/MeshLooks.h>
#include <zep/objects/Label.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vectors.h>

#include <cmath>

namespace ZEP {

namespace {

/// What is below it may take part in any pass.
TZEPPassSet PassesOf(const TZEPObject& object) {
    return object.GetItemsCount() > 0 ? AllPasses : object.Passes();
}

bool TakesPart(const TZEPObject& object, TZEPDrawState state) {
    if (object.GetItemsCount() > 0) return true;
    if (state == dsTransparent && object.IsKnownOpaque()) return false;
    return (object.Passes() & PassBit(state)) != 0;
}

/// Of the middle of its box. \param toEye  from what it lies in
double DepthOf(TZEPObject& object, const TGLMatrixd4& toEye) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetSize(min, max);
    TGLArrayd3 middle = (min + max) / 2;
    Xformd(object.GetMatrix(), middle);
    Xformd(toEye, middle);
    return std::isfinite(middle[2]) ? middle[2] : 0;
}

} // namespace

void TSeparates::Add(const TGLMatrixd4& frame, TZEPObject& object) {
    if (m_frames.empty() || m_frames.back().Frame != frame) m_frames.push_back({frame, {}});
    TNeighbours& last = m_frames.back();
    last.Objects.emplace_back(&object);
    last.Passes |= PassesOf(object);
    m_passes |= last.Passes;
}

void TSeparates::Draw(const TPass& pass) const {
    for (const TNeighbours& some : m_frames) {
        if ((some.Passes & PassBit(pass.State)) == 0) continue;
        TZEPFrame& frame = pass.Scene.Frame();
        const TMatrixScope place(frame, some.Frame);
        for (const QPointer<TZEPObject>& object : some.Objects)
            if (object && TakesPart(*object, pass.State)) DrawOne(object, pass);
        frame.Run.End(); // before its matrix goes
        if (frame.SceneIsGone) return;
    }
}

void TSeparates::List(TZEPDrawState state, const TGLMatrixd4& toEye,
                      std::vector<TPlaced>& list) const {
    for (const TNeighbours& some : m_frames) {
        if ((some.Passes & PassBit(state)) == 0) continue;
        TGLMatrixd4 place;
        MultMatrixd(toEye, some.Frame, place);
        for (const QPointer<TZEPObject>& object : some.Objects)
            if (object && TakesPart(*object, state))
                list.push_back({&some.Frame, object, DepthOf(*object, place)});
    }
}

void TSeparates::Draw(const TPlaced& placed, const TPass& pass) {
    if (!placed.Object) return;
    TZEPFrame& frame = pass.Scene.Frame();
    const TMatrixScope place(frame, *placed.Frame);
    DrawOne(placed.Object, pass);
    frame.Run.End(); // before its matrix goes
}

void TSeparates::DrawOne(const QPointer<TZEPObject>& object, const TPass& pass) {
    const bool isText = qobject_cast<TZEPLabel*>(&*object);
    {
        const TDepthOnlyScope faces(pass.Scene.Frame().Run, pass.Look.Hidden && !isText);
        DrawFaces(*object, pass);
    }
    if (pass.Look.Edges && !pass.Look.Hidden && pass.State != dsTransparent && object)
        pass.Meshes->DrawEdges(*object, pass.Scene, pass.State, *pass.Look.Edges);
}

void TSeparates::DrawEdges(const TPass& pass) const {
    for (const TNeighbours& some : m_frames) {
        const TMatrixScope place(pass.Scene.Frame(), some.Frame);
        for (const QPointer<TZEPObject>& object : some.Objects)
            if (object) pass.Meshes->DrawEdges(*object, pass.Scene, pass.State, *pass.Look.Edges);
    }
}

void TSeparates::DrawFaces(TZEPObject& object, const TPass& pass) {
    if (pass.Look.Smooth &&
        pass.Meshes->DrawSmooth(object, pass.Scene, pass.State, pass.Look.Sorted))
        return;
    const bool outlines = pass.Look.Wire && !qobject_cast<TZEPLabel*>(&object);
    pass.Scene.Frame().Run.Next(typeid(object));
    object.Draw(pass.Scene, pass.State, outlines ? dkDraft : pass.Kind);
}

} // namespace ZEP
