#pragma once

#include <QtGlobal>

namespace ZEP {

/// What may be made of one file: 64 times its bytes and 256 megabytes. Readers take what they are
/// about to make before they decode it or reserve memory for it, and pass over what does not fit,
/// so that a small file never takes all the memory there is.
class TReadBudget {
public:
    static constexpr qint64 BytesOfEach = 64;
    static constexpr qint64 FreeBytes = qint64(1) << 28;

    /// \param fileBytes  size of the file
    /// \param freeBytes  that a file of any size may make
    explicit TReadBudget(qint64 fileBytes, qint64 freeBytes = FreeBytes) : m_left(freeBytes) {
        AddFile(fileBytes);
    }

    /// A further file is read for it: a picture beside a model.
    void AddFile(qint64 fileBytes) { m_left += BytesOfEach * fileBytes; }
    /// Takes what something will need. False where so much is not left; then nothing is taken, so
    /// that smaller things still fit.
    [[nodiscard]] bool Take(qint64 bytes) {
        if (bytes > m_left) return false;
        m_left -= bytes;
        return true;
    }
    [[nodiscard]] qint64 Left() const { return m_left; }

private:
    qint64 m_left;
};

} // namespace ZEP
