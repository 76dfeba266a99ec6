#pragma once

#include <zep/framework/ReadBudget.h>

#include <cstddef>

namespace ZEP {

/// What inserted blocks and curves may cost: a small file can name a block a million times, and
/// blocks in it, and a curve has many points for one that is written down.
class TDXFLimits {
public:
    /// That are read again for blocks, which takes time.
    static constexpr qint64 MaxBytes = 1LL << 30;
    /// Drawings in other files, and what they have in all.
    static constexpr int MaxFiles = 100;
    static constexpr qint64 MaxFileBytes = 1LL << 28;
    /// Memory of an object with its transform, and of a point of a curve.
    static constexpr qint64 ObjectBytes = 896;
    static constexpr qint64 PointBytes = 56;

    /// \param budget  outlives this
    explicit TDXFLimits(TReadBudget& budget) : m_budget(budget) {}

    /// \name False where the limit is exceeded
    /// @{
    /// An object of a block, and then no more of blocks.
    bool TakeObject(std::size_t points) {
        m_reached = m_reached || !Take(ObjectBytes, points);
        return !m_reached;
    }
    /// \param bytes  that are read for it
    bool TakeInsertion(std::size_t bytes) {
        m_bytes -= static_cast<qint64>(bytes);
        m_reached = m_reached || m_bytes < 0;
        return TakeObject(0);
    }
    /// Another file, which is read once.
    bool TakeFile(qint64 bytes) {
        m_fileBytes += bytes;
        return ++m_files <= MaxFiles && m_fileBytes <= MaxFileBytes;
    }
    /// One of the objects that an entity outside of blocks shows.
    bool TakePart(std::size_t points) { return Take(ObjectBytes, points); }
    /// The points of a curve outside of blocks.
    bool TakePoints(std::size_t points) { return Take(0, points); }
    /// @}
    [[nodiscard]] bool AreReached() const { return m_reached; }
    /// Points that a curve can still have.
    [[nodiscard]] std::size_t PointsLeft() const {
        return static_cast<std::size_t>(m_budget.Left() / PointBytes);
    }

private:
    [[nodiscard]] bool Take(qint64 bytes, std::size_t points) {
        return m_budget.Take(bytes + PointBytes * static_cast<qint64>(points));
    }

    TReadBudget& m_budget;
    qint64 m_bytes = MaxBytes;
    qint64 m_fileBytes = 0;
    int m_files = 0;
    bool m_reached = false;
};

} // namespace ZEP
