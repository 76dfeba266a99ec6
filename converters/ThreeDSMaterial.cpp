#include "appearance/MaterialLibrary.h"
#include "converters/ReadReport.h"
#include "converters/ThreeDSIds.h"
#include "converters/ThreeDSReader.h"

namespace ZEP {

namespace {

constexpr float HighestShininess = 128;
constexpr TColor SelfIllumination = 0x808080;
constexpr qsizetype MaxTextureKinds = 100;
constexpr qsizetype LongestName = 100; // in a report

void SetColors(TZEPMaterial& material, int index, TColor color) {
    material.FrontFace()->SetColor(index, color);
    material.BackFace()->SetColor(index, color);
}

} // namespace

void TF3DSReader::ReadMaterialChunk(const TF3DSChunk& chunk) {
    if (!m_target.Materials) return SkipChunk(chunk, idEditor);
    Dump(" <MaterialChunk> \r\n");
    auto* items = m_target.Materials->Materials();
    CheckCount(items->Count(), MaxMaterials, "materials", chunk);
    const int index = items->Count();
    TZEPMaterialCI& item = *items->Add();
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        if (child.Id != idMaterialName) return ReadMaterialPart(child, *item.Material());
        Dump(" <MaterialNameChunk> \r\n");
        item.SetIdent(ReadName(child));
    });
    if (!m_materialIndexes.contains(item.Ident())) m_materialIndexes.insert(item.Ident(), index);
}

void TF3DSReader::ReadMaterialPart(const TF3DSChunk& chunk, TZEPMaterial& material) {
    switch (chunk.Id) {
    case idMaterialAmbient:
        Dump(" <AmbientChunk> \r\n");
        return ReadFaceColor(chunk, material, TZEPFaceMaterial::AmbientColor);
    case idMaterialDiffuse:
        Dump(" <DiffuseChunk> \r\n");
        return ReadFaceColor(chunk, material, TZEPFaceMaterial::DiffuseColor);
    case idMaterialSpecular:
        Dump(" <SpecularChunk> \r\n");
        return ReadFaceColor(chunk, material, TZEPFaceMaterial::SpecularColor);
    case idShininess:
        Dump(" <ShininessChunk> \r\n");
        return ReadShininess(chunk, material);
    case idShininessStrength:
        Dump(" <Shininess%Chunk> \r\n");
        return ReadShininess(chunk, material);
    case idTransparency:
        Dump(" <TransparencyChunk> \r\n");
        return ReadTransparency(chunk, material);
    case idSelfIllumination:
        Dump(" <EmissionChunk> \r\n");
        return SetColors(material, TZEPFaceMaterial::EmissionColor, SelfIllumination);
    case idTexture:
        Dump(" <TextureChunk> \r\n");
        return ReadBitmapChunk(chunk, *material.Texture());
    default:
        return SkipChunk(chunk, idMaterial);
    }
}

void TF3DSReader::ReadFaceColor(const TF3DSChunk& chunk, TZEPMaterial& material, int index) {
    if (const auto color = ReadMaterialColorChunk(chunk)) SetColors(material, index, *color);
}

// The sharpness and the strength of the highlight are one number here: the last one that a file
// states holds, and none at all takes the highlight away for good.
void TF3DSReader::ReadShininess(const TF3DSChunk& chunk, TZEPMaterial& material) {
    const auto share = ReadPercentageChunk(chunk);
    if (!share) return;
    TZEPFaceMaterial& front = *material.FrontFace();
    front.SetShininess(*share * HighestShininess);
    material.BackFace()->SetShininess(front.Shininess());
    if (front.Shininess() == 0) SetColors(material, TZEPFaceMaterial::SpecularColor, clBlack);
}

void TF3DSReader::ReadTransparency(const TF3DSChunk& chunk, TZEPMaterial& material) {
    if (const auto share = ReadPercentageChunk(chunk)) material.SetTransparency(*share);
}

// --- texture -----------------------------------------------------------------------------------

void TF3DSReader::ReadBitmapChunk(const TF3DSChunk& chunk, TZEPTexture& texture) {
    ReadChildren(chunk, [&](const TF3DSChunk& child) {
        switch (child.Id) {
        case idTextureFile:
            return LoadTexture(child, texture);
        case idScaleU:
            return texture.SetTilingS(ReadNumber(child, " uscale: %1.2f\r\n"));
        case idScaleV:
            return texture.SetTilingT(ReadNumber(child, " vscale: %1.2f\r\n"));
        case idOffsetU:
            return texture.SetOffsetS(ReadNumber(child, " uoffset: %1.2f\r\n"));
        case idOffsetV:
            return texture.SetOffsetT(ReadNumber(child, " voffset: %1.2f\r\n"));
        case idTextureAngle: // turns the other way round
            return texture.SetAngle(-ReadNumber(child, " angle: %1.2f\r\n"));
        default:
            return SkipChunk(child, idTexture);
        }
    });
}

void TF3DSReader::LoadTexture(const TF3DSChunk& chunk, TZEPTexture& texture) {
    Dump(" <BitmapChunk> \r\n");
    const QString name = ReadName(chunk);
    const auto [outcome, path] = m_textures.Load(texture, name);
    const bool isLoaded = outcome == TF3DSTextures::TOutcome::Loaded;
    Dump(" File: " + path.toStdString() + (isLoaded ? " OK!\r\n" : "Error!\r\n"));
    // The surface's colour shows where the picture is dark, and white where it is light.
    if (isLoaded) return texture.SetEnvironment(teBlend);
    ReportTexture(name, outcome);
}

void TF3DSReader::ReportTexture(const QString& name, TF3DSTextures::TOutcome outcome) {
    const char* what = outcome == TF3DSTextures::TOutcome::NotFound    ? "not found"
                       : outcome == TF3DSTextures::TOutcome::NoPicture ? "is no picture"
                                                                       : "is one too many";
    const QString kind =
        QStringLiteral("texture %1 %2").arg(name.left(LongestName), QLatin1String(what));
    if (m_textureKinds.size() < MaxTextureKinds) m_textureKinds.insert(kind);
    m_target.Report.Add(m_textureKinds.contains(kind) ? kind : QStringLiteral("further textures"));
}

} // namespace ZEP
