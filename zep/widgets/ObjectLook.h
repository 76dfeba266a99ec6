#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>

#include <QIcon>
#include <QString>

#include <optional>

namespace ZEP {

class TZEPObject;

/// \file
/// What stands for an object in lists, trees and menus.

/// "Line", "Mesh", ...: its class as users call it; of a class of the host's its name.
[[nodiscard]] ZEP_EXPORT QString KindOf(const TZEPObject& object);
/// Its ident, else what it says as a text, else its component name, else the kind.
[[nodiscard]] ZEP_EXPORT QString NameOf(const TZEPObject& object);
/// A small drawing of its class, or of the nearest that this inherits, in the colour of text. Null
/// where Qt's SVG plugin is missing.
[[nodiscard]] ZEP_EXPORT QIcon ObjectIcon(const TZEPObject& object);
/// The one that stands for the object: of a mesh that of its first face; none where it has none.
[[nodiscard]] ZEP_EXPORT std::optional<TColor> ColorOf(const TZEPObject& object);

/// A drawing in one colour, from an SVG file or resource of which the opacity counts: in the colour
/// of text, as the palette has it for the state of the item, or in one of its own. Null where Qt's
/// SVG plugin is missing.
[[nodiscard]] ZEP_EXPORT QIcon SymbolIcon(const QString& file, const QColor& color = {});
/// A field of the colour, with a frame that shows it on any background.
[[nodiscard]] ZEP_EXPORT QIcon ColorIcon(TColor color);

} // namespace ZEP
