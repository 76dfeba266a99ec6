#pragma once

#include <zep/batch/LayerContent.h>

namespace ZEP {

/// What is selected below a batch, drawn over all that it draws: lines as they are, of anything
/// else the edges of its box.
class TBatchMarks {
public:
    explicit TBatchMarks(TIsBatch isBatch) : m_isBatch(isBatch) {}
    /// All of the batch is marked: it is selected, or belongs to a group or a batch that is.
    [[nodiscard]] bool AreOfAll(const TZEPObject& batch) const;
    void MarkStale() { m_stale = true; }
    [[nodiscard]] bool IsStale() const { return m_stale; }
    /// All that stands below a group among them is marked.
    /// \param whole  what stands below any of them, too
    void Build(const TZEPObject& batch, const TBatchObjects& selected, bool whole,
               TBatchRules rules);
    void Draw(TZEPFrame& frame, const TLayerView& view) const;

private:
    /// An object, and what leads from its frame to that of the batch.
    struct TMarked {
        TZEPObject* Object;
        TGLMatrixd4 Matrix;
    };
    struct TSpot {
        TGLArrayd3 Origin{};
        TPathBatch Paths{};
    };

    void List(TZEPObject& object, const TGLMatrixd4& frame, bool whole,
              std::vector<TMarked>& marked) const;

    TIsBatch m_isBatch;
    std::vector<TSpot> m_spots;
    bool m_stale = true;
};

} // namespace ZEP
