#pragma once

namespace ZEP {

struct TF3DSChunk;
class TF3DSStream;
class TZEPCamera;
class TZEPLight;

/// \name What a 3DS file says of a light and of a camera
/// @{
void ReadLightChunk(TF3DSStream& stream, const TF3DSChunk& chunk, TZEPLight& light);
void ReadCameraChunk(TF3DSStream& stream, const TF3DSChunk& chunk, TZEPCamera& camera);
/// @}

} // namespace ZEP
