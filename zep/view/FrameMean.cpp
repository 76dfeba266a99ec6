#include <zep/view/FrameMean.h>

#include <algorithm>

namespace ZEP {

std::span<const TZEPJitter> SmoothSamples(int count) {
    std::span<const TZEPJitter> largest;
    for (const auto& table : {j2, j3, j4, j8, j15, j24, j66})
        if (static_cast<int>(table.size()) <= count) largest = table;
    return largest;
}

void TZEPFrameMean::Add(const QImage& frame) {
    if (m_count == 0) {
        m_size = frame.size();
        m_format = frame.format();
        m_sums.assign(static_cast<std::size_t>(m_size.width()) * 4 *
                          static_cast<std::size_t>(m_size.height()),
                      0);
    }
    const auto length = static_cast<std::size_t>(m_size.width()) * 4;
    auto* sum = m_sums.data();
    for (int y = 0; y < m_size.height(); ++y, sum += length) {
        const uchar* row = frame.constScanLine(y);
        for (std::size_t i = 0; i < length; ++i)
            sum[i] = static_cast<std::uint16_t>(sum[i] + row[i]);
    }
    ++m_count;
}

QImage TZEPFrameMean::Mean() const {
    QImage mean(m_size, m_format);
    const auto length = static_cast<std::size_t>(m_size.width()) * 4;
    const auto* sum = m_sums.data();
    const int half = m_count / 2;
    for (int y = 0; y < m_size.height(); ++y, sum += length) {
        uchar* row = mean.scanLine(y);
        std::transform(sum, sum + length, row,
                       [&](int value) { return static_cast<uchar>((value + half) / m_count); });
    }
    return mean;
}

} // namespace ZEP
