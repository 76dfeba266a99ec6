#pragma once

#include <zep/converters/TextureFolder.h>

#include <map>
#include <memory>

namespace ZEP {

class TReadBudget;
class TZEPTexture;

/// Loads the pictures of a model's textures: each file once, however many textures show it, and
/// not more than fit what may be made of the model.
class TModelTextures {
public:
    enum class TOutcome { Loaded, NotFound, NoPicture, TooMany };
    struct TResult {
        TOutcome Outcome;
        QString Path; ///< of the file, or where it was expected
    };

    /// \param modelFile  beside which the pictures lie; empty: there are none
    /// \param budget     outlives this; each picture's file adds to it
    TModelTextures(const QString& modelFile, TReadBudget& budget);
    ~TModelTextures();

    /// Gives the texture its picture; the texture stays as it is where that fails.
    TResult Load(TZEPTexture& texture, const QString& name);

private:
    /// What came of a file, and the texture that others share the picture of.
    struct TLoaded {
        TOutcome Outcome;
        std::unique_ptr<TZEPTexture> Texture;
    };
    [[nodiscard]] const TLoaded& LoadFile(const QString& path);
    [[nodiscard]] TOutcome LoadInto(TZEPTexture& texture, const QString& path);

    TTextureFolder m_folder;
    TReadBudget& m_budget;
    std::map<QString, TLoaded> m_files;
};

} // namespace ZEP
