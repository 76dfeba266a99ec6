#pragma once

#include "scene/Object.h"
#include "viewer/PathBatch.h"

namespace ZEP {

/// The parent of all that was read from one file. Where its children are too many to be drawn one
/// by one it draws them as a batch; picking still reaches each of them.
class TFileRoot : public TZEPObject {
    Q_OBJECT
public:
    using TZEPObject::TZEPObject;

    /// To be called after the children have changed.
    /// \param size  of what was read: its diagonal
    void Prepare(double size);
    /// In large files only a part of the path is drawn; see `TPathBatch::Draw`. No repaint.
    void SetShare(double share) { m_share = share; }
    [[nodiscard]] bool IsLarge() const { return !m_batch.IsEmpty(); }

    void Clear() override;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;

private:
    TPathBatch m_batch;
    double m_share = 1;
};

} // namespace ZEP
