#include <zep/scene/BlockCounts.h>

#include <bit>

namespace ZEP {

namespace {

/// The last digit that is set, as a number.
std::size_t LastDigit(std::size_t number) {
    return number & (~number + 1);
}

} // namespace

void TZEPBlockCounts::Add(std::size_t block, int change) {
    while (m_sums.size() <= block) {
        const std::size_t number = m_sums.size() + 1;
        m_sums.push_back(Before(number - 1) - Before(number - LastDigit(number)));
    }
    for (std::size_t number = block + 1; number <= m_sums.size(); number += LastDigit(number))
        m_sums[number - 1] += change;
}

int TZEPBlockCounts::Before(std::size_t block) const {
    int sum = 0;
    for (std::size_t number = block; number > 0; number -= LastDigit(number))
        sum += m_sums[number - 1];
    return sum;
}

std::size_t TZEPBlockCounts::Find(int& index) const {
    std::size_t block = 0;
    for (std::size_t step = std::bit_floor(m_sums.size()); step > 0; step /= 2) {
        if (block + step > m_sums.size() || m_sums[block + step - 1] > index) continue;
        block += step;
        index -= m_sums[block - 1];
    }
    return block;
}

} // namespace ZEP
