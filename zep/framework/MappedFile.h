#pragma once

#include <zep/Export.h>

#include <QByteArray>
#include <QFile>

#include <string_view>

namespace ZEP {

/// A file's bytes without a copy of them: the file is mapped, or read where that is refused. The
/// file must not be cut short while this lives.
class ZEP_CORE_EXPORT TMappedFile {
public:
    /// Raises `Exception` for whatever is not a readable file (missing, a directory, a device).
    /// \param method  that asks for it: "TRS274DConverter.LoadFromFile"; may be empty
    TMappedFile(const QString& fileName, const QString& method = {});

    [[nodiscard]] std::string_view Text() const { return m_text; }

private:
    QFile m_file;
    QByteArray m_bytes;
    std::string_view m_text;
};

} // namespace ZEP
