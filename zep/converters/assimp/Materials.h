#pragma once

#include <zep/converters/ModelTextures.h>
#include <zep/converters/assimp/Library.h>
#include <zep/framework/Color.h>

#include <map>
#include <memory>

struct aiScene;
struct aiTexture;

namespace ZEP {

class TReadReport;
class TZEPMaterial;
class TZEPMaterialLibrary;

/// Reads the materials of a model into a library, behind those that are there.
class TAssimpMaterials {
public:
    /// \param budget  outlives this, as all others do
    TAssimpMaterials(const TAssimpLibrary& assimp, const aiScene& model, const QString& fileName,
                     TReadBudget& budget, TReadReport& report);

    void Read(TZEPMaterialLibrary& library);
    [[nodiscard]] aiColor4D Diffuse(const aiMaterial& material) const;
    /// Each part is taken within 0..1.
    [[nodiscard]] static TColor ColorOf(const aiColor4D& color);

private:
    void Read(const aiMaterial& from, TZEPMaterial& to);
    void ReadTexture(const aiMaterial& from, TZEPMaterial& to);
    /// A picture that the model's file holds.
    [[nodiscard]] bool LoadEmbedded(const aiString& name, TZEPTexture& texture);
    [[nodiscard]] float Number(const aiMaterial& from, const char* key, float otherwise) const;

    const TAssimpLibrary& m_assimp;
    const aiScene& m_model;
    TReadBudget& m_budget;
    TReadReport& m_report;
    TModelTextures m_textures;
    std::map<const aiTexture*, std::unique_ptr<TZEPTexture>> m_embedded; ///< null: no picture
};

} // namespace ZEP
