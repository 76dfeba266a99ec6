#pragma once

#include <zep/converters/Progress.h>
#include <zep/converters/TextureFolder.h>
#include <zep/framework/FileText.h>

#include <assimp/cfileio.h>

#include <exception>
#include <list>
#include <map>
#include <memory>

namespace ZEP {

/// The files that Assimp sees: the model, and ordinary files of its folder. They are read as a
/// whole, and never written.
class TAssimpFiles {
public:
    /// More are not there.
    static constexpr std::size_t MaxFiles = 100;

    /// \param text      of the model
    /// \param progress  asked as the model is read; where it cancels or throws, no more is read
    TAssimpFiles(const QString& modelFile, const TFileText& text, TProgress progress);
    TAssimpFiles(const TAssimpFiles&) = delete;
    TAssimpFiles& operator=(const TAssimpFiles&) = delete;

    [[nodiscard]] aiFileIO& Access() { return m_access; }
    /// What the model is called there.
    [[nodiscard]] const QByteArray& ModelName() const { return m_modelName; }
    /// Of the model and all that were read beside it.
    [[nodiscard]] qint64 Bytes() const { return m_bytes; }
    /// Whether the progress call has cancelled; raises again what it has thrown.
    [[nodiscard]] bool IsCancelled() const;

private:
    struct TOpen {
        aiFile File;
        TAssimpFiles* Files;
        std::string_view Bytes;
        std::size_t Position = 0;
    };

    [[nodiscard]] static TOpen& OpenOf(aiFile* file);
    static aiFile* Open(aiFileIO* access, const char* name, const char* mode) noexcept;
    static void Close(aiFileIO* access, aiFile* file) noexcept;
    static std::size_t Read(aiFile* file, char* to, std::size_t size, std::size_t count) noexcept;
    static aiReturn Seek(aiFile* file, std::size_t offset, aiOrigin origin) noexcept;
    [[nodiscard]] std::string_view TextOf(const QString& name);
    void TellProgress(std::size_t position) noexcept;

    aiFileIO m_access;
    QByteArray m_modelName;
    const TFileText& m_model;
    TProgress m_progress;
    TTextureFolder m_folder;
    std::map<QString, std::unique_ptr<TFileText>> m_others;
    std::list<TOpen> m_open;
    qint64 m_bytes;
    std::exception_ptr m_thrown;
    bool m_cancelled = false;
};

} // namespace ZEP
