#pragma once

#include <zep/batch/Batch.h>
#include <zep/scene/Scene.h>

namespace ZEP {

/// Changes how the batches of a scene are shown: those that are its children; what is below them
/// follows. \param change  called with each batch and its rules
template <class Change>
void ChangeShown(TZEPScene& scene, const Change& change) {
    for (int i = 0, count = scene.GetItemsCount(); i < count; ++i) {
        auto* batch = qobject_cast<TZEPBatch*>(scene.GetItem(i));
        if (!batch) continue;
        TZEPShown shown = batch->Shown();
        change(*batch, shown);
        batch->SetShown(shown);
    }
}

} // namespace ZEP
