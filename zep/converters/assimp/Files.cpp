#include <zep/converters/assimp/Files.h>

#include <zep/framework/Exception.h>

#include <QFileInfo>

#include <algorithm>
#include <cstring>

namespace ZEP {

TAssimpFiles::TAssimpFiles(const QString& modelFile, const TFileText& text, TProgress progress)
    : m_access{&Open, &Close, reinterpret_cast<char*>(this)},
      m_modelName("model." + QFileInfo(modelFile).suffix().toLower().toUtf8()), m_model(text),
      m_progress(std::move(progress)), m_folder(modelFile),
      m_bytes(static_cast<qint64>(text.Text().size())) {}

bool TAssimpFiles::IsCancelled() const {
    if (m_thrown) std::rethrow_exception(m_thrown);
    return m_cancelled;
}

TAssimpFiles::TOpen& TAssimpFiles::OpenOf(aiFile* file) {
    return *reinterpret_cast<TOpen*>(file->UserData);
}

/// Empty where there is none.
std::string_view TAssimpFiles::TextOf(const QString& name) {
    if (name.toUtf8() == m_modelName) return m_model.Text();
    const QString path = m_folder.Find(name);
    if (path.isEmpty() || m_others.size() >= MaxFiles) return {};
    std::unique_ptr<TFileText>& text = m_others[path];
    if (!text) {
        text = std::make_unique<TFileText>(path);
        m_bytes += static_cast<qint64>(text->Text().size());
    }
    return text->Text();
}

// Nothing may be thrown through Assimp.
aiFile* TAssimpFiles::Open(aiFileIO* access, const char* name, const char* mode) noexcept {
    auto* files = reinterpret_cast<TAssimpFiles*>(access->UserData);
    if (std::strchr(mode, 'w') || files->m_cancelled) return nullptr;
    try {
        const std::string_view text = files->TextOf(QString::fromUtf8(name));
        if (text.empty()) return nullptr;
        TOpen& open = files->m_open.emplace_back();
        open.Files = files;
        open.Bytes = text;
        open.File.ReadProc = &Read;
        open.File.WriteProc = [](aiFile*, const char*, std::size_t, std::size_t) {
            return std::size_t(0);
        };
        open.File.TellProc = [](aiFile* file) { return OpenOf(file).Position; };
        open.File.FileSizeProc = [](aiFile* file) { return OpenOf(file).Bytes.size(); };
        open.File.SeekProc = &Seek;
        open.File.FlushProc = [](aiFile*) {};
        open.File.UserData = reinterpret_cast<char*>(&open);
        return &open.File;
    } catch (const std::exception&) {
        return nullptr;
    }
}

void TAssimpFiles::Close(aiFileIO* access, aiFile* file) noexcept {
    auto* files = reinterpret_cast<TAssimpFiles*>(access->UserData);
    files->m_open.remove_if([file](const TOpen& open) { return &open.File == file; });
}

std::size_t TAssimpFiles::Read(aiFile* file, char* to, std::size_t size,
                               std::size_t count) noexcept {
    TOpen& open = OpenOf(file);
    if (size == 0 || open.Files->m_cancelled) return 0;
    const std::size_t items = std::min(count, (open.Bytes.size() - open.Position) / size);
    std::memcpy(to, open.Bytes.data() + open.Position, items * size);
    open.Position += items * size;
    if (open.Bytes.data() == open.Files->m_model.Text().data())
        open.Files->TellProgress(open.Position);
    return open.Files->m_cancelled ? 0 : items;
}

aiReturn TAssimpFiles::Seek(aiFile* file, std::size_t offset, aiOrigin origin) noexcept {
    TOpen& open = OpenOf(file);
    const std::size_t from = origin == aiOrigin_SET   ? 0
                             : origin == aiOrigin_CUR ? open.Position
                                                      : open.Bytes.size();
    const std::size_t position = from + offset; // negative ones wrap around
    if (position > open.Bytes.size()) return aiReturn_FAILURE;
    open.Position = position;
    return aiReturn_SUCCESS;
}

// Half of the work is to make objects of what was read.
void TAssimpFiles::TellProgress(std::size_t position) noexcept {
    if (!m_progress) return;
    try {
        const auto total = static_cast<qint64>(m_model.Text().size());
        m_cancelled = !m_progress(static_cast<qint64>(position) / 2, total);
    } catch (...) {
        m_thrown = std::current_exception();
        m_cancelled = true;
    }
}

} // namespace ZEP
