#include <zep/converters/assimp/Library.h>

#include <QLibrary>

#include <optional>

namespace ZEP {

namespace {

constexpr int Version = 5; // of the binary interface: what is read of it has not changed since

template <class Function>
bool Resolve(QLibrary& library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(library.resolve(name));
    return function != nullptr;
}

std::optional<TAssimpLibrary> Load() {
    QLibrary library(QStringLiteral("assimp"), Version);
    TAssimpLibrary functions;
    const bool hasAll = Resolve(library, "aiCreatePropertyStore", functions.CreateOptions) &&
                        Resolve(library, "aiReleasePropertyStore", functions.ReleaseOptions) &&
                        Resolve(library, "aiSetImportPropertyInteger", functions.SetOption) &&
                        Resolve(library, "aiImportFileExWithProperties", functions.Import) &&
                        Resolve(library, "aiReleaseImport", functions.Release) &&
                        Resolve(library, "aiGetErrorString", functions.ErrorString) &&
                        Resolve(library, "aiGetMaterialColor", functions.Color) &&
                        Resolve(library, "aiGetMaterialFloatArray", functions.Numbers) &&
                        Resolve(library, "aiGetMaterialString", functions.String) &&
                        Resolve(library, "aiGetMaterialTexture", functions.Texture);
    return hasAll ? std::optional(functions) : std::nullopt;
}

} // namespace

const TAssimpLibrary* TAssimpLibrary::Instance() {
    static const std::optional<TAssimpLibrary> functions = Load();
    return functions ? &*functions : nullptr;
}

} // namespace ZEP
