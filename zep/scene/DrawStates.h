#pragma once

#include <zep/Export.h>

#include <QFlags>
#include <QMetaType>
#include <QObject>

namespace ZEP {
Q_NAMESPACE_EXPORT(ZEP_CORE_EXPORT)

/// The draw passes, in the order of their ordinals.
enum TZEPDrawState {
    dsPre,
    dsCamera,
    dsAllLights,
    dsShadowLights,
    dsAllObjects,
    dsNonShadowObjects,
    dsShadowObjects,
    dsReflections,
    dsBuildShadowVolumes,
    dsDrawShadowVolumes,
    dsShadows,
    dsTransparent,
    dsPost
};
Q_ENUM_NS(TZEPDrawState)

/// Level of detail of a frame.
enum TZEPDrawKind { dkDraft, dkFull, dkSelect };
Q_ENUM_NS(TZEPDrawKind)

/// Outline or fill, chosen for each object.
enum TZEPDrawType { dtLine, dtFill };
Q_ENUM_NS(TZEPDrawType)

/// What a panel sets in OpenGL before it draws.
enum TZEPOption {
    goFlatShadeModel = 1 << 0,
    goDepthTest = 1 << 1,
    goTwoSidedLightModel = 1 << 2,
    goCullFace = 1 << 3,
    goLighting = 1 << 4
};
Q_DECLARE_FLAGS(TZEPOptions, TZEPOption)
Q_FLAG_NS(TZEPOptions)
Q_DECLARE_OPERATORS_FOR_FLAGS(TZEPOptions)

/// What happened to an object of a tree.
enum TZEPObjectAction { saInsert, saMove, saRemove, saRename };
Q_ENUM_NS(TZEPObjectAction)

} // namespace ZEP
