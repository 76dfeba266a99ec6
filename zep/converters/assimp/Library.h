#pragma once

#include <assimp/cfileio.h>
#include <assimp/cimport.h>
#include <assimp/material.h>

namespace ZEP {

/// The functions of Assimp that are used. It is looked for when it is first needed, so that
/// programs run without it.
struct TAssimpLibrary {
    decltype(&aiCreatePropertyStore) CreateOptions = nullptr;
    decltype(&aiReleasePropertyStore) ReleaseOptions = nullptr;
    decltype(&aiSetImportPropertyInteger) SetOption = nullptr;
    decltype(&aiImportFileExWithProperties) Import = nullptr;
    decltype(&aiReleaseImport) Release = nullptr;
    decltype(&aiGetErrorString) ErrorString = nullptr;
    decltype(&aiGetMaterialColor) Color = nullptr;
    decltype(&aiGetMaterialFloatArray) Numbers = nullptr;
    decltype(&aiGetMaterialString) String = nullptr;
    decltype(&aiGetMaterialTexture) Texture = nullptr;

    /// Null where the system has none with all of these.
    [[nodiscard]] static const TAssimpLibrary* Instance();
};

} // namespace ZEP
