#pragma once

#include <zep/Export.h>
#include <zep/framework/FileText.h>
#include <zep/framework/stream/Token.h>

#include <functional>
#include <memory>
#include <optional>

class QIODevice;

namespace ZEP {

enum class TStreamForm { Binary, Text };

/// The form of a stream by how it begins; none where that is no component stream.
/// \param head  its first bytes
[[nodiscard]] ZEP_CORE_EXPORT std::optional<TStreamForm> StreamFormOf(std::string_view head);

/// Reads data that outlives the source.
[[nodiscard]] ZEP_CORE_EXPORT std::unique_ptr<TTokenSource> MakeSource(TStreamForm form,
                                                                       std::string_view data);
/// Writes to a device that outlives the sink.
[[nodiscard]] ZEP_CORE_EXPORT std::unique_ptr<TTokenSink> MakeSink(TStreamForm form,
                                                                   QIODevice& device);

/// A file that holds a component stream, read as it is when it is opened.
class ZEP_CORE_EXPORT TStreamFile {
public:
    /// In whatever form it is. Raises `Exception` naming the file where it cannot be read or holds
    /// no component stream.
    explicit TStreamFile(const QString& fileName);
    /// In this form, whatever it begins with.
    TStreamFile(const QString& fileName, TStreamForm form);

    [[nodiscard]] TStreamForm Form() const { return m_form; }
    [[nodiscard]] TTokenSource& Source() { return *m_source; }
    /// Calls `read` with the source; the message of an error then begins with the file's name.
    void Read(const std::function<void(TTokenSource&)>& read);

private:
    QString m_fileName;
    TFileText m_file;
    TStreamForm m_form;
    std::unique_ptr<TTokenSource> m_source;
};

/// Saves what `write` puts into the sink, as `SaveFile` does.
ZEP_CORE_EXPORT void SaveStreamFile(const QString& fileName, TStreamForm form,
                                    const std::function<void(TTokenSink&)>& write);

} // namespace ZEP
