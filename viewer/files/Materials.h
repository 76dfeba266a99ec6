#pragma once

namespace ZEP {

class TZEPMaterialLibrary;
class TZEPObject;

/// Objects of several files share the one library of a scene: each file has a range of its numbers.

/// Adds to all numbers from `first` on that objects and faces below `root` refer to.
void RenumberMaterials(TZEPObject& root, int first, int by);

/// Appends copies of the materials, to which what is below `root` refers, and makes it refer to the
/// copies. \return number of the first of them
int AppendMaterials(TZEPMaterialLibrary& to, TZEPMaterialLibrary& from, TZEPObject& root);

/// Has every face drawn, also where the scene has a library and the face no number in it: a mesh
/// without any such number is drawn in its own material; other faces get a material that is added
/// to `library` for them.
void ShowFacesWithoutMaterial(TZEPObject& root, TZEPMaterialLibrary& library);

} // namespace ZEP
