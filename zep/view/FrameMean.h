#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/Jitter.h>

#include <QImage>

#include <cstdint>
#include <span>
#include <vector>

namespace ZEP {

/// The largest of the tables of sub-pixel samples that has no more than `count`; empty below 2.
[[nodiscard]] ZEP_CORE_EXPORT std::span<const TZEPJitter> SmoothSamples(int count);

/// The mean of frames of one size, summed up exactly. The accumulation buffer is left to what draws
/// them: shadows may need it.
class ZEP_CORE_EXPORT TZEPFrameMean {
public:
    /// \param frame  of 32 bits a pixel; up to 257 of them, all of the size of the first
    void Add(const QImage& frame);
    [[nodiscard]] int Count() const { return m_count; }
    /// Of the frames so far, at least one.
    [[nodiscard]] QImage Mean() const;

private:
    std::vector<std::uint16_t> m_sums; ///< of each channel, row by row
    QSize m_size;
    QImage::Format m_format = QImage::Format_Invalid;
    int m_count = 0;
};

} // namespace ZEP
