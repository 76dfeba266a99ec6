#pragma once

#include <zep/converters/ModelTextures.h>

#include <QHash>
#include <QSet>

namespace ZEP {

struct TF3DSChunk;
class TF3DSStream;
class TZEPMaterial;
class TZEPMaterialLibrary;

/// Reads the materials of a 3DS file into a library, behind those that are there.
class TF3DSMaterials {
public:
    /// Far more than a model has, far less than a memory.
    static constexpr int MaxMaterials = 65'536;

    /// \param fileName  beside which pictures lie; empty: there are none
    /// \param budget    outlives this
    /// \param extended  highlights of the stated strength, pictures in their own colours
    TF3DSMaterials(TF3DSStream& stream, TZEPMaterialLibrary& library, const QString& fileName,
                   TReadBudget& budget, bool extended);

    void ReadMaterialChunk(const TF3DSChunk& chunk);
    /// The first material of the file with that name; -1 without one.
    [[nodiscard]] int FindMaterialIndex(const QString& name) const;

private:
    /// What a material says in several chunks, whose order is free.
    struct TStated {
        float Highlight = 1; ///< strength of it
        float Glow = 0;      ///< share of the colour that shines by itself
        bool Picture = false;
    };

    void ReadPart(const TF3DSChunk& chunk, TZEPMaterial& material);
    /// \param index  a `TZEPFaceMaterial::ColorIndex`
    void ReadFaceColor(const TF3DSChunk& chunk, TZEPMaterial& material, int index);
    void ReadShininess(const TF3DSChunk& chunk, TZEPMaterial& material);
    bool ReadExtendedPart(const TF3DSChunk& chunk, TZEPMaterial& material);
    void ApplyStated(TZEPMaterial& material) const;
    void ReadTransparency(const TF3DSChunk& chunk, TZEPMaterial& material);
    void ReadBitmapChunk(const TF3DSChunk& chunk, TZEPTexture& texture);
    void LoadTexture(const TF3DSChunk& chunk, TZEPTexture& texture);
    void ReportTexture(const QString& name, TModelTextures::TOutcome outcome);

    TF3DSStream& m_stream;
    TZEPMaterialLibrary& m_library;
    TModelTextures m_textures;
    QHash<QString, int> m_indexes; // the first of each name
    QSet<QString> m_textureKinds;
    TStated m_stated;
    bool m_extended;
};

} // namespace ZEP
