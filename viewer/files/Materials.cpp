#include "viewer/files/Materials.h"

#include "viewer/content/Objects.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/objects/Mesh.h>

namespace ZEP {

namespace {

/// Calls `change` for each face whose number is not one of the first `count`.
template <class Change>
void ForOtherFaces(TZEPMesh& mesh, int count, Change&& change) {
    TZEPFaces& faces = *mesh.Faces();
    for (int i = 0; i < faces.Count(); ++i)
        if (faces[i].MaterialIndex() < 0 || faces[i].MaterialIndex() >= count) change(faces[i]);
}

void RenumberFaces(TZEPMesh& mesh, int first, int by) {
    TZEPFaces& faces = *mesh.Faces();
    faces.BeginUpdate();
    for (int i = 0; i < faces.Count(); ++i)
        if (const int index = faces[i].MaterialIndex(); index >= first)
            faces[i].SetMaterialIndex(index + by);
    faces.EndUpdate();
}

} // namespace

void RenumberMaterials(TZEPObject& root, int first, int by) {
    if (by == 0) return;
    ForEachObject(root, [=](TZEPObject& object) {
        if (object.MaterialIndex() >= first) object.SetMaterialIndex(object.MaterialIndex() + by);
        if (auto* mesh = qobject_cast<TZEPMesh*>(&object)) RenumberFaces(*mesh, first, by);
    });
}

int AppendMaterials(TZEPMaterialLibrary& to, TZEPMaterialLibrary& from, TZEPObject& root) {
    const int first = to.Materials()->Count();
    to.Materials()->BeginUpdate();
    for (int i = 0; i < from.Materials()->Count(); ++i) {
        TZEPMaterialCI& copy = *to.Materials()->Add();
        copy.Material()->Assign((*from.Materials())[i].Material());
        copy.SetIdent((*from.Materials())[i].Ident());
    }
    to.Materials()->EndUpdate();
    RenumberMaterials(root, 0, first);
    return first;
}

void ShowFacesWithoutMaterial(TZEPObject& root, TZEPMaterialLibrary& library) {
    const int count = library.Materials()->Count();
    ForEachObject(root, [&](TZEPObject& object) {
        auto* mesh = qobject_cast<TZEPMesh*>(&object);
        if (!mesh || !mesh->ColorFaces()) return;
        int others = 0;
        ForOtherFaces(*mesh, count, [&](TZEPFace3CI&) { ++others; });
        if (others == mesh->Faces()->Count()) return mesh->SetColorFaces(false);
        if (others == 0) return;
        if (library.Materials()->Count() == count) library.Materials()->Add();
        ForOtherFaces(*mesh, count, [&](TZEPFace3CI& face) { face.SetMaterialIndex(count); });
    });
}

} // namespace ZEP
