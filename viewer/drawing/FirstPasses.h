#pragma once

#include <zep/scene/Scene.h>

namespace ZEP {

/// What a view draws before its objects, at `TZEPScene::AfterCamera`, when what lies behind them is
/// there: the shadow volumes of the last frame go, and mirrors get what they show.
inline void DrawFirstPasses(TZEPScene& scene) {
    for (const TZEPDrawState state : {dsPre, dsReflections}) scene.Draw(scene, state, dkFull);
}

} // namespace ZEP
