#pragma once

#include <zep/framework/Color.h>

#include <QIcon>
#include <QString>

#include <optional>

namespace ZEP {

class TZEPObject;

/// What the user takes an object for.
enum class TKind {
    File,
    Layer,
    Group,
    Line,
    Arc,
    Circle,
    Polyline,
    Point,
    Polygon,
    Mesh,
    Text,
    Light,
    Camera,
    Other
};

[[nodiscard]] TKind KindOf(const TZEPObject& object);
/// "Line", "Layer", ...; of others their class.
[[nodiscard]] QString KindText(const TZEPObject& object);
/// The ident of the object, else what a text says, else the kind.
[[nodiscard]] QString NameOf(const TZEPObject& object);
/// A small drawing of such an object, in the colour of the application's text.
[[nodiscard]] QIcon KindIcon(TKind kind);
/// A field of the colour, with a frame that shows it on any background.
[[nodiscard]] QIcon ColorIcon(TColor color);
/// The one that stands for the object in a list: of a mesh that of its first face; none where it
/// has no colour.
[[nodiscard]] std::optional<TColor> ColorOf(TZEPObject& object);

} // namespace ZEP
