#pragma once

#include <zep/Export.h>

#include <QString>

#include <memory>
#include <string_view>

class QFile;

namespace ZEP {

/// An ordinary file of that folder itself, or a link to such: where a name that comes out of a file
/// may lead, and not out of the folder, nor to a pipe that nobody writes into.
[[nodiscard]] ZEP_CORE_EXPORT bool IsFileIn(const QString& folder, const QString& fileName);

/// Raises `Exception` for a name that is no ordinary file's: missing, a folder, a pipe, a device.
/// It does not open it, which would wait for the writer of a pipe. \param method  that asks for it:
/// "TRS274DConverter.LoadFromFile"; may be empty
ZEP_CORE_EXPORT void CheckIsFile(const QString& fileName, const QString& method = {});

/// The bytes of a file as they are when it is opened. They are read and not mapped: other programs
/// may rewrite a file, cut it short or remove it at any time.
class ZEP_CORE_EXPORT TFileText {
public:
    /// Larger files are refused, rather than taking all the memory there is.
    static constexpr qint64 MaxBytes = qint64(1) << 32;

    /// Raises `Exception` for whatever is not a readable file (missing, a directory, a device). A
    /// file that is cut short meanwhile is taken as far as it goes.
    /// \param method  that asks for it, as of `CheckIsFile`
    TFileText(const QString& fileName, const QString& method = {});

    [[nodiscard]] std::string_view Text() const { return {m_bytes.get(), m_size}; }

private:
    void Read(QFile& file, std::size_t size);

    std::unique_ptr<char[]> m_bytes;
    std::size_t m_size = 0;
};

} // namespace ZEP
