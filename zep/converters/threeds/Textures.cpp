#include <zep/converters/threeds/Textures.h>

#include <zep/appearance/materials/Texture.h>
#include <zep/framework/Exception.h>
#include <zep/framework/Picture.h>

#include <QImageReader>

namespace ZEP {

namespace {

std::unique_ptr<TPicture> LoadPicture(const QString& path) {
    // Asked first: what is no picture may be of any size.
    if (!QImageReader(path).canRead()) return nullptr;
    auto picture = std::make_unique<TPicture>();
    try {
        picture->LoadFromFile(path);
    } catch (const Exception&) {
        return nullptr; // cut off, or of too many pixels
    }
    return picture;
}

} // namespace

TF3DSTextures::TF3DSTextures(const QString& modelFile) : m_folder(modelFile) {}

TF3DSTextures::~TF3DSTextures() = default;

const TPicture* TF3DSTextures::Picture(const QString& path) {
    const auto place = m_pictures.find(path);
    if (place != m_pictures.end()) return place->second.get();
    return m_pictures.emplace(path, LoadPicture(path)).first->second.get();
}

TF3DSTextures::TResult TF3DSTextures::Load(TZEPTexture& texture, const QString& name) {
    const QString path = m_folder.Find(name);
    if (path.isEmpty()) return {TOutcome::NotFound, m_folder.PathOf(name)};
    if (m_bytes >= MaxBytes) return {TOutcome::TooMany, path};
    const TPicture* picture = Picture(path);
    if (!picture) return {TOutcome::NoPicture, path};
    texture.SetTexturePic(picture);
    m_bytes += static_cast<qint64>(texture.Pixels().size() * sizeof(std::uint32_t));
    return {TOutcome::Loaded, path};
}

} // namespace ZEP
