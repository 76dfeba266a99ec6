#pragma once

#include <QFile>

#include <string_view>

namespace ZEP {

/// The trace that a reader writes beside the file that it reads: lines that end with CR LF, in a
/// file of the same name with the extension ".dmp".
class TDumpFile {
public:
    /// Raises `Exception` when it cannot be written, or would replace the file itself.
    /// \param fileName  that is read
    /// \param method    what the messages begin with: "TRS274DConverter.Dump"
    TDumpFile(const QString& fileName, const QString& method);

    void Write(std::string_view line);
    /// Text as it is, at once on its way to the disk.
    void Append(std::string_view text);
    /// Raises `Exception` when not all of it could be written.
    void Finish();

private:
    [[noreturn]] void Refuse(const QString& reason) const;

    QFile m_file;
    QString m_method;
};

} // namespace ZEP
