#include <zep/batch/BlockEdit.h>

#include <gtest/gtest.h>

#include <random>

namespace ZEP {
namespace {

struct TPiece {
    std::size_t Block, Count;
    bool operator==(const TPiece&) const = default;
};

/// Blocks of pieces, and their items one behind the other.
struct TRow {
    std::vector<TPiece> Pieces;
    std::vector<int> Items;

    void Add(std::mt19937& random, std::size_t blocks) {
        for (std::size_t block = 0; block < blocks; ++block)
            for (auto pieces = random() % 3; pieces > 0; --pieces) {
                Pieces.push_back({block, random() % 4});
                for (std::size_t i = 0; i < Pieces.back().Count; ++i)
                    Items.push_back(static_cast<int>(random() % 1000));
            }
    }
    /// With other numbers of blocks, from `first` on.
    void Copy(const TRow& from, std::size_t begin, std::size_t end, std::size_t first) {
        std::size_t item = 0;
        for (const TPiece& piece : from.Pieces) {
            const auto at = from.Items.begin() + static_cast<std::ptrdiff_t>(item);
            item += piece.Count;
            if (piece.Block < begin || piece.Block >= end) continue;
            Pieces.push_back({piece.Block - begin + first, piece.Count});
            Items.insert(Items.end(), at, at + static_cast<std::ptrdiff_t>(piece.Count));
        }
    }
};

TEST(BlockEdit, ReplacesAndRenumbersBlocks) {
    std::mt19937 random(7);
    for (int turn = 0; turn < 500; ++turn) {
        constexpr std::size_t Blocks = 12;
        TRow row, by, wanted;
        row.Add(random, Blocks);
        TBlockEdits edits;
        std::size_t coming = 0;
        std::size_t kept = 0;
        std::size_t number = 0;
        for (std::size_t block = random() % 4; block <= Blocks; block += 1 + random() % 4) {
            const std::size_t end = std::min(Blocks, block + random() % 3);
            edits.push_back({block, end, random() % 3});
            coming += edits.back().Count;
            block = end;
        }
        by.Add(random, coming);
        coming = 0;
        for (const TBlockEdit& edit : edits) {
            wanted.Copy(row, kept, edit.First, number);
            number += edit.First - kept;
            wanted.Copy(by, coming, coming + edit.Count, number);
            number += edit.Count;
            coming += edit.Count;
            kept = edit.End;
        }
        wanted.Copy(row, kept, Blocks, number);
        const auto items =
            ItemsOf(PiecesOf(edits, row.Pieces, by.Pieces), row.Pieces, by.Pieces, &TPiece::Count);
        Replace(row.Items, items, by.Items);
        ReplacePieces(edits, row.Pieces, by.Pieces);
        ASSERT_EQ(row.Items, wanted.Items) << turn;
        ASSERT_EQ(row.Pieces, wanted.Pieces) << turn;
    }
}

} // namespace
} // namespace ZEP
