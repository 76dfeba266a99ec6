#include "viewer/content/Objects.h"

#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/view/Actor.h>

namespace ZEP {

bool IsGroup(const TZEPObject& object) {
    const QMetaObject* kind = object.metaObject();
    return kind == &TZEPObject::staticMetaObject || kind == &TZEPActor::staticMetaObject ||
           kind == &TZEPNode::staticMetaObject;
}

bool Draws(const TZEPObject& object) {
    return qobject_cast<const TZEPColoredObject*>(&object) && !IsGroup(object);
}

TGLArrayd3 MiddleOf(const TZEPObject& object) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    object.GetSize(min, max);
    return {(min[0] + max[0]) / 2, (min[1] + max[1]) / 2, (min[2] + max[2]) / 2};
}

TBox BoxOf(const TZEPObject& object) {
    TBox box{};
    object.GetAbsoluteSize(box.Min, box.Max);
    return box;
}

void AddTo(TExtent& extent, TZEPObject& object) {
    auto* mesh = qobject_cast<TZEPMesh*>(&object);
    if (!mesh || mesh->Vertexes()->Count() < 2) return extent.Add(BoxOf(object));
    const TGLMatrixd4 matrix = mesh->GetAbsoluteMatrix();
    for (int i = 0; i < mesh->Vertexes()->Count(); ++i) {
        TGLArrayd3 place = (*mesh->Vertexes())[i].Data();
        Xformd(matrix, place);
        extent.Add({place, place});
    }
}

TExtent ExtentOf(TZEPObject& root) {
    TExtent extent;
    ForEachObject(root, [&](TZEPObject& object) {
        if (Draws(object)) AddTo(extent, object);
    });
    return extent;
}

} // namespace ZEP
