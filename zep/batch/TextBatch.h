#pragma once

#include <zep/batch/VertexArray.h>
#include <zep/framework/Color.h>

#include <memory>

namespace ZEP {

class TZEPLabel;

/// The text of drawings, each in its own colour whatever lights there are. What is too small to be
/// read is drawn as a line, and what is out of view not at all: letters are what costs most.
class TTextBatch {
public:
    /// \param origin  is subtracted from all places
    void Start(const TGLArrayd3& origin) { m_origin = origin; }
    /// As in `TVertexArray`.
    void StartBlock(std::size_t block) { m_block = block; }
    void Replace(const TBlockEdits& edits, const TTextBatch& by) {
        ReplacePieces(edits, m_texts, by.m_texts);
    }
    /// \param frame  that the label lies in: leads to the frame of the batch
    void Add(TZEPLabel& label, const TGLMatrixd4& frame, TColor color);

    /// After what is opaque. \param least  height in pixels from which on letters are drawn
    void Draw(double least) const;

private:
    struct TText {
        std::size_t Block;
        TZEPLabel* Label;
        std::array<float, 3> Base, Along, Up; ///< where it begins; the text's extents from there
        float Lines;
        std::shared_ptr<const TGLMatrixd4> Frame; ///< neighbours share it
        TVertexColor Color;
    };
    /// Where a text is in the view, in pixels.
    struct TSeenText {
        bool InView;
        double Height, Length;
    };

    class TView;
    static void SendLine(const TText& text);
    void DrawLetters(const TText& text) const;

    std::vector<TText> m_texts;
    TGLArrayd3 m_origin{};
    std::size_t m_block = 0;
};

} // namespace ZEP
