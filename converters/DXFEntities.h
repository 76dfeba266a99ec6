#pragma once

#include "converters/DXFDrawing.h"

namespace ZEP {

/// Reads the entity whose code 0 was taken last and puts what is made of it into `place`. The next
/// pair is then the code 0 of the next entity, or the text has ended.
using TDXFReadEntity = void (*)(TDXFDrawing& drawing, TDXFPlace& place);

struct TDXFEntityKind {
    std::string_view Name;
    TDXFReadEntity Read;
};

/// The reader of a kind of entity; null for one that is passed over.
[[nodiscard]] TDXFReadEntity FindEntityReader(std::string_view kind, bool extended);

/// A new object in the place of an entity that was read: owned by the root, with ident and colour.
/// The caller fills it and then hands it to `AddToDrawing`.
template <class T>
T* MakeOfEntity(TDXFDrawing& drawing, const TEntity& entity, TColor color) {
    auto* object = new T(&drawing.Root);
    if (!entity.Name.empty()) object->SetIdent(drawing.Text.Decode(entity.Name));
    object->SetColor(color);
    if (drawing.Options.Extended && entity.Hidden) object->SetVisible(false);
    return object;
}

/// False for an entity that is no part of the model: it is counted.
[[nodiscard]] bool IsInModel(TDXFDrawing& drawing, const TEntity& entity);

/// Reads an entity with a face or a vertex for each entity of the kind `follower` behind it, up to
/// "SEQEND". `read` answers whether the text goes on.
/// \return false where the text ends before the "SEQEND"
template <class Read>
bool ReadFollowers(TDXFDrawing& drawing, std::string_view follower, Read&& read) {
    TDXFTags& tags = drawing.Tags;
    while (tags.NextGroupCode() >= 0 && tags.ValStr() != "SEQEND") {
        if (tags.Code() != 0) continue;
        if (tags.ValStr() == follower) {
            if (!read()) return false;
        } else if (drawing.Options.Extended) {
            tags.go_back_to_last();
            return true;
        }
    }
    if (tags.Code() < 0) return false;
    drawing.PassPairBehindEnd();
    return true;
}

/// A chain of vertexes, or a mesh of faces between them.
void read_polyline(TDXFDrawing& drawing, TDXFPlace& place);

} // namespace ZEP
