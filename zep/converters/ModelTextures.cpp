#include <zep/converters/ModelTextures.h>

#include <zep/appearance/materials/Texture.h>
#include <zep/framework/PictureDecoding.h>
#include <zep/framework/ReadBudget.h>

#include <QFileInfo>
#include <QImageReader>

namespace ZEP {

TModelTextures::TModelTextures(const QString& modelFile, TReadBudget& budget)
    : m_folder(modelFile), m_budget(budget) {}

TModelTextures::~TModelTextures() = default;

TModelTextures::TOutcome TModelTextures::LoadInto(TZEPTexture& texture, const QString& path) {
    // Asked first: what is no picture may be of any size.
    if (!QImageReader(path).canRead()) return TOutcome::NoPicture;
    m_budget.AddFile(QFileInfo(path).size());
    try {
        texture.Image()->LoadFromFile(path, &m_budget);
    } catch (const TPictureTooLarge&) {
        return TOutcome::TooMany;
    } catch (const Exception&) {
        return TOutcome::NoPicture; // cut off
    }
    return TOutcome::Loaded;
}

const TModelTextures::TLoaded& TModelTextures::LoadFile(const QString& path) {
    const auto place = m_files.find(path);
    if (place != m_files.end()) return place->second;
    auto texture = std::make_unique<TZEPTexture>();
    const TOutcome outcome = LoadInto(*texture, path);
    return m_files.emplace(path, TLoaded{outcome, std::move(texture)}).first->second;
}

TModelTextures::TResult TModelTextures::Load(TZEPTexture& texture, const QString& name) {
    const QString path = m_folder.Find(name);
    if (path.isEmpty()) return {TOutcome::NotFound, m_folder.PathOf(name)};
    const TLoaded& loaded = LoadFile(path);
    if (loaded.Outcome == TOutcome::Loaded) texture.SetTexturePic(loaded.Texture->Image());
    return {loaded.Outcome, path};
}

} // namespace ZEP
