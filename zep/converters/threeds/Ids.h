#pragma once

#include <cstdint>

namespace ZEP {

/// The kinds of chunks that are read; all others are passed over.
enum TF3DSId : std::uint16_t {
    idVersion = 0x0002,
    idColorF = 0x0010,
    idColor24 = 0x0011,
    idLinearColor24 = 0x0012,
    idPercentInteger = 0x0030,
    idPercentFloat = 0x0031,

    idMain = 0x4D4D,
    idEditor = 0x3D3D,
    idMeshVersion = 0x3D3E,
    idKeyframer = 0xB000,

    idMasterScale = 0x0100,
    idBackgroundColor = 0x1200,
    idAmbientColor = 0x2100,
    idObject = 0x4000,
    idMaterial = 0xAFFF,

    idMesh = 0x4100,
    idPoints = 0x4110,
    idFaces = 0x4120,
    idFaceGroup = 0x4130,
    idTexCoords = 0x4140,
    idSmoothing = 0x4150,
    idMatrix = 0x4160,
    idHidden = 0x4010,
    idNoShadows = 0x4012,
    idNoReceiveShadows = 0x4017,

    idLight = 0x4600,
    idSpotlight = 0x4610,
    idCamera = 0x4700,
    idCameraRanges = 0x4720,

    idMaterialName = 0xA000,
    idMaterialAmbient = 0xA010,
    idMaterialDiffuse = 0xA020,
    idMaterialSpecular = 0xA030,
    idShininess = 0xA040,
    idShininessStrength = 0xA041,
    idTransparency = 0xA050,
    idSelfIllumination = 0xA080,
    idSelfIlluminationShare = 0xA084,

    idObjectNode = 0xB002, // to idSpotTargetNode: those of cameras and lights
    idSpotTargetNode = 0xB007,
    idNodeHeader = 0xB010,
    idPivot = 0xB013,
    idPositionTrack = 0xB020,
    idRotationTrack = 0xB021,
    idScaleTrack = 0xB022,
    idNodeId = 0xB030,

    idTexture = 0xA200,
    idTextureFile = 0xA300,
    idScaleU = 0xA354,
    idScaleV = 0xA356,
    idOffsetU = 0xA358,
    idOffsetV = 0xA35A,
    idTextureAngle = 0xA35C
};

} // namespace ZEP
