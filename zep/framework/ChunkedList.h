#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ZEP {

/// A growing list of default-constructible values whose addresses stay the same while it grows,
/// with access by index in constant time. Chunks hold 4, 8, ... 512 values and then 1024 each: a
/// short list costs little, a long one allocates seldom and wastes at most one chunk.
template <class T>
class TChunkedList {
public:
    TChunkedList() = default;
    TChunkedList(const TChunkedList&) = delete;
    TChunkedList& operator=(const TChunkedList&) = delete;

    [[nodiscard]] std::size_t Size() const { return m_size; }

    /// Value `index`; a constant list hands out its values to change as well.
    [[nodiscard]] T& operator[](std::size_t index) const {
        const Place place = At(index);
        return m_chunks[place.Chunk][place.Offset];
    }

    T& Append() {
        const Place place = At(m_size);
        if (place.Chunk == m_chunks.size())
            m_chunks.push_back(std::make_unique<T[]>(Capacity(place.Chunk)));
        ++m_size;
        return m_chunks[place.Chunk][place.Offset];
    }

    /// Appends `count` values and calls `fill` with each and its number of `count`.
    template <class Fill>
    void AppendEach(std::size_t count, Fill&& fill) {
        for (std::size_t i = 0; i < count;) {
            T* value = &Append();
            const Place place = At(m_size - 1);
            const std::size_t room = Capacity(place.Chunk) - place.Offset;
            const std::size_t end = std::min(count, i + room);
            m_size += end - i - 1;
            for (; i < end; ++i) fill(*value++, i);
        }
    }

    /// Moves the values behind `index` one place down.
    void Remove(std::size_t index) {
        for (; index + 1 < m_size; ++index) (*this)[index] = std::move((*this)[index + 1]);
        (*this)[--m_size] = T();
    }

    void Clear() {
        m_chunks.clear();
        m_size = 0;
    }

private:
    static constexpr std::size_t First = 4;
    static constexpr std::size_t Largest = 1024;
    static constexpr std::size_t SmallChunks = 8; // of 4, 8, ... 512

    struct Place {
        std::size_t Chunk;
        std::size_t Offset;
    };

    static Place At(std::size_t index) {
        const std::size_t shifted = index + First;
        if (shifted >= Largest) return {SmallChunks - 1 + shifted / Largest, shifted % Largest};
        const std::size_t start = std::bit_floor(shifted);
        return {static_cast<std::size_t>(std::countr_zero(start / First)), shifted - start};
    }
    static std::size_t Capacity(std::size_t chunk) {
        return chunk < SmallChunks ? First << chunk : Largest;
    }

    std::vector<std::unique_ptr<T[]>> m_chunks;
    std::size_t m_size = 0;
};

} // namespace ZEP
