#include <zep/converters/assimp/Materials.h>

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/appearance/materials/Texture.h>
#include <zep/converters/ReadReport.h>
#include <zep/framework/Exception.h>
#include <zep/framework/ReadBudget.h>

#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ZEP {

namespace {

constexpr float Grey = 0.8F;
constexpr float MostShininess = 128; // that OpenGL has

const aiTexture* EmbeddedOf(const aiScene& model, const aiString& name) {
    if (name.C_Str()[0] == '*') {
        const auto index = static_cast<unsigned>(std::strtoul(name.C_Str() + 1, nullptr, 10));
        return index < model.mNumTextures ? model.mTextures[index] : nullptr;
    }
    for (unsigned i = 0; i < model.mNumTextures; ++i)
        if (model.mTextures[i]->mFilename.length > 0 && model.mTextures[i]->mFilename == name)
            return model.mTextures[i];
    return nullptr;
}

/// As Assimp has it in memory, where it is not as it stands in a file.
QImage PixelsOf(const aiTexture& texture) {
    QImage image(static_cast<int>(texture.mWidth), static_cast<int>(texture.mHeight),
                 QImage::Format_ARGB32);
    for (unsigned y = 0; y < texture.mHeight; ++y)
        for (unsigned x = 0; x < texture.mWidth; ++x) {
            const aiTexel& texel = texture.pcData[std::size_t(y) * texture.mWidth + x];
            image.setPixel(static_cast<int>(x), static_cast<int>(y),
                           qRgba(texel.r, texel.g, texel.b, texel.a));
        }
    return image;
}

} // namespace

TAssimpMaterials::TAssimpMaterials(const TAssimpLibrary& assimp, const aiScene& model,
                                   const QString& fileName, TReadBudget& budget,
                                   TReadReport& report)
    : m_assimp(assimp), m_model(model), m_budget(budget), m_report(report),
      m_textures(fileName, budget) {}

TColor TAssimpMaterials::ColorOf(const aiColor4D& color) {
    const auto byte = [](float share) {
        const float inRange = share > 0 ? std::min(share, 1.0F) : 0; // also where it is none
        return static_cast<std::uint32_t>(std::lround(255 * inRange));
    };
    return byte(color.r) | byte(color.g) << 8 | byte(color.b) << 16;
}

void TAssimpMaterials::Read(TZEPMaterialLibrary& library) {
    for (unsigned i = 0; i < m_model.mNumMaterials; ++i) {
        const aiMaterial& from = *m_model.mMaterials[i];
        TZEPMaterialCI& item = *library.Materials()->Add();
        aiString name;
        if (m_assimp.String(&from, AI_MATKEY_NAME, &name) == aiReturn_SUCCESS)
            item.SetIdent(QString::fromUtf8(name.C_Str()));
        Read(from, *item.Material());
    }
}

aiColor4D TAssimpMaterials::Diffuse(const aiMaterial& material) const {
    aiColor4D color{Grey, Grey, Grey, 1};
    if (m_assimp.Color(&material, AI_MATKEY_COLOR_DIFFUSE, &color) != aiReturn_SUCCESS)
        m_assimp.Color(&material, AI_MATKEY_BASE_COLOR, &color);
    return color;
}

float TAssimpMaterials::Number(const aiMaterial& from, const char* key, float otherwise) const {
    float value = otherwise;
    unsigned count = 1;
    m_assimp.Numbers(&from, key, 0, 0, &value, &count);
    return std::isfinite(value) ? value : otherwise;
}

void TAssimpMaterials::Read(const aiMaterial& from, TZEPMaterial& to) {
    const TColor diffuse = ColorOf(Diffuse(from));
    aiColor4D specular{0, 0, 0, 1};
    aiColor4D emission{0, 0, 0, 1};
    m_assimp.Color(&from, AI_MATKEY_COLOR_SPECULAR, &specular);
    m_assimp.Color(&from, AI_MATKEY_COLOR_EMISSIVE, &emission);
    const float shininess = Number(from, "$mat.shininess", 0);
    for (TZEPFaceMaterial* face : {to.FrontFace(), to.BackFace()}) {
        face->SetAmbient(diffuse); // what files call ambient few programs show
        face->SetDiffuse(diffuse);
        // A highlight without sharpness is all over the surface.
        face->SetSpecular(shininess > 0 ? ColorOf(specular) : clBlack);
        face->SetShininess(std::clamp(shininess, 0.0F, MostShininess));
        face->SetEmission(ColorOf(emission));
    }
    to.SetTransparency(1 - std::clamp(Number(from, "$mat.opacity", 1), 0.0F, 1.0F));
    ReadTexture(from, to);
}

void TAssimpMaterials::ReadTexture(const aiMaterial& from, TZEPMaterial& to) {
    aiString name;
    const auto has = [&](aiTextureType type) {
        return m_assimp.Texture(&from, type, 0, &name, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr) == aiReturn_SUCCESS;
    };
    if (!has(aiTextureType_DIFFUSE) && !has(aiTextureType_BASE_COLOR)) return;
    const QString file = QString::fromUtf8(name.C_Str());
    TZEPTexture picture;
    const bool isLoaded = EmbeddedOf(m_model, name) ? LoadEmbedded(name, picture)
                                                    : m_textures.Load(picture, file).Outcome ==
                                                          TModelTextures::TOutcome::Loaded;
    if (!isLoaded) return m_report.Add(QStringLiteral("textures that cannot be loaded"));
    to.Texture()->SetTexturePic(picture.Image());
    for (TZEPFaceMaterial* face : {to.FrontFace(), to.BackFace()}) {
        face->SetAmbient(clWhite); // the picture has the colour
        face->SetDiffuse(clWhite);
    }
}

bool TAssimpMaterials::LoadEmbedded(const aiString& name, TZEPTexture& texture) {
    const aiTexture& from = *EmbeddedOf(m_model, name);
    const auto [place, isNew] = m_embedded.try_emplace(&from);
    if (isNew) {
        auto picture = std::make_unique<TZEPTexture>();
        try {
            if (from.mHeight == 0)
                picture->Image()->SetData(
                    QByteArray(reinterpret_cast<const char*>(from.pcData), from.mWidth), &m_budget);
            else if (m_budget.Take(8 * qint64(from.mWidth) * qint64(from.mHeight)))
                picture->Image()->SetImage(PixelsOf(from));
        } catch (const Exception&) {
            // it stays empty
        }
        if (!picture->Image()->Empty()) place->second = std::move(picture);
    }
    if (place->second) texture.SetTexturePic(place->second->Image());
    return place->second != nullptr;
}

} // namespace ZEP
