#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ZEP {

/// Blocks of a row that others take the place of: those come from a row of their own, in which they
/// stand one behind the other, edit after edit.
struct TBlockEdit {
    std::size_t First, End; ///< that go
    std::size_t Count;      ///< that come
};

/// In order, and apart.
using TBlockEdits = std::vector<TBlockEdit>;

/// A range of an array that a range of another one takes the place of.
struct TReplaced {
    std::size_t First, End;
    std::size_t ByFirst, ByEnd;
};

/// Replaces ranges in place, which are in order and apart: the rest is moved once.
template <class T>
void Replace(std::vector<T>& all, const std::vector<TReplaced>& ranges, const std::vector<T>& by) {
    struct TKept {
        std::size_t First, End, To;
    };
    std::vector<TKept> kept;
    std::size_t size = ranges.empty() ? all.size() : ranges.front().First;
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        const std::size_t end = i + 1 < ranges.size() ? ranges[i + 1].First : all.size();
        size += ranges[i].ByEnd - ranges[i].ByFirst;
        kept.push_back({ranges[i].End, end, size});
        size += end - ranges[i].End;
    }
    if (size > all.capacity()) all.reserve(size + size / 16);
    if (size > all.size()) all.resize(size);
    const auto at = [&all](std::size_t i) { return all.begin() + static_cast<std::ptrdiff_t>(i); };
    for (const TKept& part : kept)
        if (part.To < part.First) std::move(at(part.First), at(part.End), at(part.To));
    for (auto part = kept.rbegin(); part != kept.rend(); ++part)
        if (part->To > part->First)
            std::move_backward(at(part->First), at(part->End),
                               at(part->To + part->End - part->First));
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        const auto from = by.begin() + static_cast<std::ptrdiff_t>(ranges[i].ByFirst);
        const std::size_t count = ranges[i].ByEnd - ranges[i].ByFirst;
        std::copy_n(from, count, at(kept[i].To - count));
    }
    all.resize(size);
}

/// Where the pieces of edited blocks stand. A piece tells its `Block`; they are in that order.
template <class Piece>
std::vector<TReplaced> PiecesOf(const TBlockEdits& edits, const std::vector<Piece>& all,
                                const std::vector<Piece>& by) {
    const auto before = [](const std::vector<Piece>& pieces, std::size_t block) {
        return static_cast<std::size_t>(std::ranges::lower_bound(pieces, block, {}, &Piece::Block) -
                                        pieces.begin());
    };
    std::vector<TReplaced> pieces;
    std::size_t first = 0;
    for (const TBlockEdit& edit : edits) {
        const std::size_t end = first + edit.Count;
        pieces.push_back(
            {before(all, edit.First), before(all, edit.End), before(by, first), before(by, end)});
        first = end;
    }
    return pieces;
}

/// Where the items of pieces stand. \param count  of the items of a piece
template <class Piece, class Count>
std::vector<TReplaced> ItemsOf(std::vector<TReplaced> pieces, const std::vector<Piece>& all,
                               const std::vector<Piece>& by, Count count) {
    const auto sums = [&](const std::vector<Piece>& some) {
        std::vector<std::size_t> before{0};
        for (const Piece& piece : some) before.push_back(before.back() + piece.*count);
        return before;
    };
    const std::vector<std::size_t> own = sums(all);
    const std::vector<std::size_t> others = sums(by);
    for (TReplaced& range : pieces)
        range = {own[range.First], own[range.End], others[range.ByFirst], others[range.ByEnd]};
    return pieces;
}

/// Replaces pieces and gives those that come, and those behind, their new numbers.
template <class Piece>
void ReplacePieces(const TBlockEdits& edits, std::vector<Piece>& all, std::vector<Piece> by) {
    const std::vector<TReplaced> pieces = PiecesOf(edits, all, by);
    std::size_t grown = 0; // modulo: it may have shrunk
    std::size_t first = 0;
    for (std::size_t i = 0; i < edits.size(); ++i) {
        for (std::size_t k = pieces[i].ByFirst; k < pieces[i].ByEnd; ++k)
            by[k].Block += edits[i].First + grown - first;
        first += edits[i].Count;
        grown += edits[i].Count - (edits[i].End - edits[i].First);
        const std::size_t end = i + 1 < edits.size() ? pieces[i + 1].First : all.size();
        for (std::size_t k = pieces[i].End; k < end; ++k) all[k].Block += grown;
    }
    Replace(all, pieces, by);
}

} // namespace ZEP
