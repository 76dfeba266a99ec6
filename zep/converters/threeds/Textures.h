#pragma once

#include <zep/converters/TextureFolder.h>

#include <map>
#include <memory>

namespace ZEP {

class TPicture;
class TZEPTexture;

/// Loads the pictures of a model's textures: each file once, however many textures show it, and
/// not more than fit `MaxBytes`.
class TF3DSTextures {
public:
    /// All textures together, as they are kept for OpenGL.
    static constexpr qint64 MaxBytes = qint64(1) << 30;

    enum class TOutcome { Loaded, NotFound, NoPicture, TooMany };
    struct TResult {
        TOutcome Outcome;
        QString Path; ///< of the file, or where it was expected
    };

    /// \param modelFile  beside which the pictures lie; empty: there are none
    explicit TF3DSTextures(const QString& modelFile);
    ~TF3DSTextures();

    /// Gives the texture its picture; the texture stays as it is where that fails.
    TResult Load(TZEPTexture& texture, const QString& name);

private:
    [[nodiscard]] const TPicture* Picture(const QString& path);

    TTextureFolder m_folder;
    std::map<QString, std::unique_ptr<TPicture>> m_pictures; // null: no picture
    qint64 m_bytes = 0;
};

} // namespace ZEP
