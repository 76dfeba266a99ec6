#include <zep/converters/threeds/Materials.h>

#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/converters/ReadReport.h>
#include <zep/converters/threeds/Ids.h>
#include <zep/converters/threeds/Stream.h>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr float HighestShininess = 128;
constexpr TColor SelfIllumination = 0x808080;
constexpr qsizetype MaxTextureKinds = 100;
constexpr qsizetype LongestName = 100; // in a report

/// \param share  is taken within 0..1
TColor Times(float share, TColor color) {
    const float times = std::clamp(share, 0.0F, 1.0F);
    std::uint32_t result = 0;
    for (const int shift : {0, 8, 16})
        result |= static_cast<std::uint32_t>(
                      std::lround(times * static_cast<float>(color.Value >> shift & 0xFF)))
                  << shift;
    return result;
}

void SetColors(TZEPMaterial& material, int index, TColor color) {
    material.FrontFace()->SetColor(index, color);
    material.BackFace()->SetColor(index, color);
}

} // namespace

TF3DSMaterials::TF3DSMaterials(TF3DSStream& stream, TZEPMaterialLibrary& library,
                               const QString& fileName, TReadBudget& budget, bool extended)
    : m_stream(stream), m_library(library), m_textures(fileName, budget), m_extended(extended) {}

int TF3DSMaterials::FindMaterialIndex(const QString& name) const {
    return m_indexes.value(name, -1);
}

void TF3DSMaterials::ReadMaterialChunk(const TF3DSChunk& chunk) {
    m_stream.Dump(" <MaterialChunk> \r\n");
    auto* items = m_library.Materials();
    const int index = items->Count();
    if (index >= MaxMaterials)
        m_stream.Refuse(QStringLiteral("more than %1 materials").arg(MaxMaterials), chunk.Offset);
    TZEPMaterialCI& item = *items->Add();
    m_stated = {};
    m_stream.ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (child.Id != idMaterialName) return ReadPart(child, *item.Material());
        m_stream.Dump(" <MaterialNameChunk> \r\n");
        item.SetIdent(m_stream.ReadName(child));
    });
    if (m_extended) ApplyStated(*item.Material());
    if (!m_indexes.contains(item.Ident())) m_indexes.insert(item.Ident(), index);
}

void TF3DSMaterials::ReadPart(const TF3DSChunk& chunk, TZEPMaterial& material) {
    if (m_extended && ReadExtendedPart(chunk, material)) return;
    switch (chunk.Id) {
    case idMaterialAmbient:
        m_stream.Dump(" <AmbientChunk> \r\n");
        return ReadFaceColor(chunk, material, TZEPFaceMaterial::AmbientColor);
    case idMaterialDiffuse:
        m_stream.Dump(" <DiffuseChunk> \r\n");
        return ReadFaceColor(chunk, material, TZEPFaceMaterial::DiffuseColor);
    case idMaterialSpecular:
        m_stream.Dump(" <SpecularChunk> \r\n");
        return ReadFaceColor(chunk, material, TZEPFaceMaterial::SpecularColor);
    case idShininess:
        m_stream.Dump(" <ShininessChunk> \r\n");
        return ReadShininess(chunk, material);
    case idShininessStrength:
        m_stream.Dump(" <Shininess%Chunk> \r\n");
        return ReadShininess(chunk, material);
    case idTransparency:
        m_stream.Dump(" <TransparencyChunk> \r\n");
        return ReadTransparency(chunk, material);
    case idSelfIllumination:
        m_stream.Dump(" <EmissionChunk> \r\n");
        return SetColors(material, TZEPFaceMaterial::EmissionColor, SelfIllumination);
    case idTexture:
        m_stream.Dump(" <TextureChunk> \r\n");
        return ReadBitmapChunk(chunk, *material.Texture());
    default:
        return m_stream.SkipChunk(chunk, idMaterial);
    }
}

void TF3DSMaterials::ReadFaceColor(const TF3DSChunk& chunk, TZEPMaterial& material, int index) {
    if (const auto color = m_stream.ReadMaterialColorChunk(chunk))
        SetColors(material, index, *color);
}

// The sharpness and the strength of the highlight are one number here: the last one that a file
// states holds, and none at all takes the highlight away for good.
void TF3DSMaterials::ReadShininess(const TF3DSChunk& chunk, TZEPMaterial& material) {
    const auto share = m_stream.ReadPercentageChunk(chunk);
    if (!share) return;
    TZEPFaceMaterial& front = *material.FrontFace();
    front.SetShininess(*share * HighestShininess);
    material.BackFace()->SetShininess(front.Shininess());
    if (front.Shininess() == 0) SetColors(material, TZEPFaceMaterial::SpecularColor, clBlack);
}

bool TF3DSMaterials::ReadExtendedPart(const TF3DSChunk& chunk, TZEPMaterial& material) {
    switch (chunk.Id) {
    case idShininess:
        m_stream.Dump(" <ShininessChunk> \r\n");
        if (const auto share = m_stream.ReadPercentageChunk(chunk))
            for (TZEPFaceMaterial* face : {material.FrontFace(), material.BackFace()})
                face->SetShininess(*share * HighestShininess);
        return true;
    case idShininessStrength:
        m_stream.Dump(" <Shininess%Chunk> \r\n");
        m_stated.Highlight = m_stream.ReadPercentageChunk(chunk).value_or(m_stated.Highlight);
        return true;
    case idSelfIlluminationShare:
        m_stream.Dump(" <Emission%Chunk> \r\n");
        m_stated.Glow = m_stream.ReadPercentageChunk(chunk).value_or(m_stated.Glow);
        return true;
    default:
        return false;
    }
}

void TF3DSMaterials::ApplyStated(TZEPMaterial& material) const {
    for (TZEPFaceMaterial* face : {material.FrontFace(), material.BackFace()}) {
        // A highlight without sharpness is all over the surface.
        const float highlight = face->Shininess() > 0 ? m_stated.Highlight : 0;
        face->SetSpecular(Times(highlight, face->Specular()));
        if (m_stated.Glow > 0) face->SetEmission(Times(m_stated.Glow, face->Diffuse()));
        if (!m_stated.Picture) continue;
        face->SetDiffuse(clWhite);
        face->SetAmbient(clWhite);
    }
    if (m_stated.Picture) material.Texture()->SetEnvironment(teModulate);
}

void TF3DSMaterials::ReadTransparency(const TF3DSChunk& chunk, TZEPMaterial& material) {
    if (const auto share = m_stream.ReadPercentageChunk(chunk)) material.SetTransparency(*share);
}

// --- texture -----------------------------------------------------------------------------------

void TF3DSMaterials::ReadBitmapChunk(const TF3DSChunk& chunk, TZEPTexture& texture) {
    m_stream.ReadChildren(chunk, [&](const TF3DSChunk& child) {
        switch (child.Id) {
        case idTextureFile:
            return LoadTexture(child, texture);
        case idScaleU:
            return texture.SetTilingS(m_stream.ReadNumber(child, " uscale: %1.2f\r\n"));
        case idScaleV:
            return texture.SetTilingT(m_stream.ReadNumber(child, " vscale: %1.2f\r\n"));
        case idOffsetU:
            return texture.SetOffsetS(m_stream.ReadNumber(child, " uoffset: %1.2f\r\n"));
        case idOffsetV:
            return texture.SetOffsetT(m_stream.ReadNumber(child, " voffset: %1.2f\r\n"));
        case idTextureAngle: // turns the other way round
            return texture.SetAngle(-m_stream.ReadNumber(child, " angle: %1.2f\r\n"));
        default:
            return m_stream.SkipChunk(child, idTexture);
        }
    });
}

void TF3DSMaterials::LoadTexture(const TF3DSChunk& chunk, TZEPTexture& texture) {
    m_stream.Dump(" <BitmapChunk> \r\n");
    const QString name = m_stream.ReadName(chunk);
    const auto [outcome, path] = m_textures.Load(texture, name);
    const bool isLoaded = outcome == TModelTextures::TOutcome::Loaded;
    m_stream.Dump(" File: " + path.toStdString() + (isLoaded ? " OK!\r\n" : "Error!\r\n"));
    // The surface's colour shows where the picture is dark, and white where it is light.
    m_stated.Picture = m_stated.Picture || isLoaded;
    if (isLoaded) return texture.SetEnvironment(teBlend);
    ReportTexture(name, outcome);
}

void TF3DSMaterials::ReportTexture(const QString& name, TModelTextures::TOutcome outcome) {
    const char* what = outcome == TModelTextures::TOutcome::NotFound    ? "not found"
                       : outcome == TModelTextures::TOutcome::NoPicture ? "is no picture"
                                                                        : "is one too many";
    const QString kind =
        QStringLiteral("texture %1 %2").arg(name.left(LongestName), QLatin1String(what));
    if (m_textureKinds.size() < MaxTextureKinds) m_textureKinds.insert(kind);
    m_stream.Report().Add(m_textureKinds.contains(kind) ? kind
                                                        : QStringLiteral("further textures"));
}

} // namespace ZEP
