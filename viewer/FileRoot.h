#pragma once

#include "scene/Object.h"
#include "viewer/PathBatch.h"

#include <unordered_set>

namespace ZEP {

/// The parent of all that was read from one file. It draws a tool path as a batch, anew after each
/// change of a child; picking reaches each child, and those that are selected stand out from the
/// rest.
class TFileRoot : public TZEPObject {
    Q_OBJECT
public:
    explicit TFileRoot(TComponent* owner = nullptr);
    ~TFileRoot() override;

    /// Makes the batch ready, which the first frame would do otherwise.
    /// \param size  of what was read: its diagonal
    void Prepare(double size);
    /// How much of a large path is drawn; see `TPathBatch::Draw`. No repaint.
    void SetShare(double share) { m_share = share; }
    [[nodiscard]] bool IsLarge() const;
    /// All is drawn in its own colour, as of a flat drawing, whatever lights the scene has.
    [[nodiscard]] bool IsEven() const { return m_even; }
    void SetEven(bool even) { m_even = even; }

    void Invalidate(TObject* sender) override;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;

private:
    [[nodiscard]] TZEPObjectNotify Listener();
    void Update();
    bool NotesSelection(TObject* sender);
    void DrawMarks();

    TPathBatch m_batch;
    TPathBatch m_marks; ///< what is selected, over the batch
    std::unordered_set<TZEPObject*> m_selected;
    std::vector<TZEPObject*> m_separate; ///< children that are not in the batch
    double m_size = 1;
    double m_share = 1;
    bool m_even = false;
    bool m_stale = true;
    bool m_marksStale = true;
};

} // namespace ZEP
