#pragma once

#include <cstddef>
#include <vector>

namespace ZEP {

/// How many items stand in each of a row of blocks, as a tree of sums (P. Fenwick, "A new data
/// structure for cumulative frequency tables", 1994): changes, sums and searches take a step for
/// each binary digit of the number of blocks.
class TZEPBlockCounts {
public:
    [[nodiscard]] bool IsEmpty() const { return m_sums.empty(); }
    void Clear() { m_sums.clear(); }
    /// Adds to a block; blocks up to it come into being.
    void Add(std::size_t block, int change);
    /// Items before the block.
    [[nodiscard]] int Before(std::size_t block) const;
    /// The block of item `index`, which becomes its place within the block.
    [[nodiscard]] std::size_t Find(int& index) const;

private:
    std::vector<int>
        m_sums; // of the last 2^n blocks up to this one, 2^n the last digit of its number
};

} // namespace ZEP
