#pragma once

#include <zep/converters/threeds/Textures.h>

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
    TF3DSMaterials(TF3DSStream& stream, TZEPMaterialLibrary& library, const QString& fileName,
                   TReadBudget& budget);

    void ReadMaterialChunk(const TF3DSChunk& chunk);
    /// The first material of the file with that name; -1 without one.
    [[nodiscard]] int FindMaterialIndex(const QString& name) const;

private:
    void ReadPart(const TF3DSChunk& chunk, TZEPMaterial& material);
    /// \param index  a `TZEPFaceMaterial::ColorIndex`
    void ReadFaceColor(const TF3DSChunk& chunk, TZEPMaterial& material, int index);
    void ReadShininess(const TF3DSChunk& chunk, TZEPMaterial& material);
    void ReadTransparency(const TF3DSChunk& chunk, TZEPMaterial& material);
    void ReadBitmapChunk(const TF3DSChunk& chunk, TZEPTexture& texture);
    void LoadTexture(const TF3DSChunk& chunk, TZEPTexture& texture);
    void ReportTexture(const QString& name, TF3DSTextures::TOutcome outcome);

    TF3DSStream& m_stream;
    TZEPMaterialLibrary& m_library;
    TF3DSTextures m_textures;
    QHash<QString, int> m_indexes; // the first of each name
    QSet<QString> m_textureKinds;
};

} // namespace ZEP
