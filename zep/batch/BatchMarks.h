#pragma once

#include <zep/batch/LayerBatch.h>

namespace ZEP {

/// What is selected below a batch, drawn over what is gathered. What draws itself shows its own
/// selection, unless all of a group is selected.
class TBatchMarks {
public:
    [[nodiscard]] TLayerBatch::TObjects& Selected() { return m_selected; }
    /// The object may have been selected or deselected. \return whether that is new
    bool NoteSelection(TZEPObject& object);
    /// It goes, maybe with what is below it.
    void Forget(const TZEPObject* gone);
    void MarkStale() { m_stale = true; }

    /// Builds what is out of date, and draws. What draws may free the batch.
    void Draw(const TZEPObject& batch, const TBatchRules& rules, TZEPFrame& frame,
              const TLayerView& view);

private:
    struct TBox {
        QPointer<TZEPObject> Object;
        TGLMatrixd4 Matrix;
    };

    void Build(const TZEPObject& batch, const TBatchRules& rules);
    void Add(TZEPObject& object, const TGLMatrixd4& frame, bool whole);

    TLayerBatch::TObjects m_selected;
    TPathBatch m_paths;
    TGLArrayd3 m_origin{};
    std::vector<TBox> m_boxes; ///< of what is no path
    bool m_stale = true;
};

} // namespace ZEP
