#pragma once

#include <zep/converters/Placing.h>
#include <zep/converters/dxf/Drawing.h>

namespace ZEP {

/// Reads the entities of the plain reading, up to the end of the section whose name was taken last.
void read_entities(TDXFDrawing& drawing);

/// \name For the readers of entities
/// @{
/// A new object for an entity that was read: owned by the root, with ident and colour. The caller
/// fills it and gives it its parent last of all, so that what is set before has nobody to tell.
template <class T>
T* MakeOfEntity(TDXFDrawing& drawing, const TEntity& entity, TColor color) {
    auto* object = new T(&drawing.Root);
    if (!entity.Name.empty()) object->SetIdent(drawing.Text.Decode(entity.Name));
    object->SetColor(color);
    return object;
}

/// Calls `read` for each entity of the kind `follower`, up to a value "SEQEND", and passes over the
/// pair behind that, whatever it is: drawings have its layer there.
/// \param read  answers whether the text goes on
/// \return false where the text ends before the "SEQEND"
template <class Read>
bool ReadFollowers(TDXFTags& tags, std::string_view follower, Read&& read) {
    while (tags.NextGroupCode() >= 0 && tags.ValStr() != "SEQEND")
        if (tags.Code() == 0 && tags.ValStr() == follower && !read()) return false;
    if (tags.Code() < 0) return false;
    tags.NextGroupCode();
    return true;
}

/// A chain of vertexes, or a mesh of faces between them.
void read_polyline(TDXFDrawing& drawing);
/// @}

} // namespace ZEP
