#include <zep/framework/stream/StreamFile.h>

#include <zep/framework/FileSaving.h>
#include <zep/framework/stream/BinarySink.h>
#include <zep/framework/stream/BinarySource.h>
#include <zep/framework/stream/Tags.h>
#include <zep/framework/stream/TextSink.h>
#include <zep/framework/stream/TextSource.h>

namespace ZEP {

namespace {

TStreamForm FormOfFile(const QString& fileName, std::string_view head) {
    if (const auto form = StreamFormOf(head)) return *form;
    const QString reason =
        QStringLiteral("expected a component stream, which begins with \"TPF0\" or \"object\"");
    throw TStreamError(fileName + QStringLiteral(": ") + reason, reason, {.File = fileName});
}

} // namespace

std::optional<TStreamForm> StreamFormOf(std::string_view head) {
    if (head.starts_with(StreamSignature)) return TStreamForm::Binary;
    TTextLexer lexer(head);
    try {
        lexer.Next();
    } catch (const TStreamError&) {
        return {};
    }
    for (const char* word : {"object", "inherited", "inline"})
        if (lexer.IsName(word)) return TStreamForm::Text;
    return {};
}

std::unique_ptr<TTokenSource> MakeSource(TStreamForm form, std::string_view data) {
    if (form == TStreamForm::Binary) return std::make_unique<TBinarySource>(data);
    return std::make_unique<TTextSource>(data);
}

std::unique_ptr<TTokenSink> MakeSink(TStreamForm form, QIODevice& device) {
    if (form == TStreamForm::Binary) return std::make_unique<TBinarySink>(device);
    return std::make_unique<TTextSink>(device);
}

TStreamFile::TStreamFile(const QString& fileName)
    : m_fileName(fileName), m_file(fileName), m_form(FormOfFile(fileName, m_file.Text())),
      m_source(MakeSource(m_form, m_file.Text())) {}

TStreamFile::TStreamFile(const QString& fileName, TStreamForm form)
    : m_fileName(fileName), m_file(fileName), m_form(form),
      m_source(MakeSource(form, m_file.Text())) {}

void TStreamFile::Read(const std::function<void(TTokenSource&)>& read) {
    try {
        read(*m_source);
    } catch (const TStreamError& error) {
        throw TStreamError(m_fileName + QStringLiteral(": ") + error.Text(), error.Reason(),
                           {.File = m_fileName, .Place = error.Origin().Place});
    }
}

void SaveStreamFile(const QString& fileName, TStreamForm form,
                    const std::function<void(TTokenSink&)>& write) {
    SaveFile(fileName, [&](QIODevice& device) { write(*MakeSink(form, device)); });
}

} // namespace ZEP
