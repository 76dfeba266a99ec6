#pragma once

#include <zep/Export.h>

#include <QList>
#include <QMetaProperty>
#include <QVariant>

namespace ZEP {

class TPersistent;

/// Stores `value` in `field` and tells whether that changed it. Comparison is exact. Every setter
/// is one line over it: `if (Change(m_width, value)) Invalidate(this);`
template <class T>
bool Change(T& field, const T& value) {
    if (field == value) return false;
    field = value;
    return true;
}

/// \name Published properties
/// A published property is a `Q_PROPERTY`, in published order. Its declared default stands beside
/// it as `Q_CLASSINFO("PropertyName", "value")`: a number, `true`/`false`, a name of the
/// enumeration, names joined by commas for a set, `0x00BBGGRR` or a name such as `clRed` for a
/// colour. A property without such a line has no declared default. A descendant that starts with
/// another value repeats the line.
/// @{

/// The published properties of a class, inherited ones first, each name once at the place where
/// it was first declared.
[[nodiscard]] ZEP_CORE_EXPORT QList<QMetaProperty> PublishedProperties(const QMetaObject& type);

/// The declared default of a property in its own type; an invalid variant where none is declared.
[[nodiscard]] ZEP_CORE_EXPORT QVariant DeclaredDefault(const QMetaObject& type,
                                                       const QMetaProperty& property);

/// The sub-object behind a property whose type is a pointer to a persistent; null for any other.
/// `instance` is a `QObject` or a `TPersistent`, as its meta-object says.
[[nodiscard]] ZEP_CORE_EXPORT TPersistent* SubObject(const QMetaProperty& property,
                                                     const QObject* instance);
[[nodiscard]] ZEP_CORE_EXPORT TPersistent* SubObject(const QMetaProperty& property,
                                                     const TPersistent* instance);
/// @}

} // namespace ZEP
