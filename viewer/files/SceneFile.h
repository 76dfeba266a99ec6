#pragma once

namespace ZEP {

class TZEPMaterialLibrary;
struct TOpenedFile;

/// Reads a component stream in either form into the file: its root, its scene, and what was passed
/// over. What stands in the stream's scene becomes children of a root, and so does an object that
/// stands alone; a batch that holds all that is in the scene is the root itself. Materials of the
/// scene's library are appended to `materials`.
///
/// Raises `Exception`, which names the file and the place in it.
void ReadScene(TOpenedFile& file, TZEPMaterialLibrary& materials);

} // namespace ZEP
