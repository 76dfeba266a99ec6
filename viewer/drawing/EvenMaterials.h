#pragma once

#include <zep/framework/Color.h>

#include <QPointer>

#include <vector>

namespace ZEP {

class TZEPMaterial;
class TZEPObject;
class TZEPScene;

/// Materials that reflect light from all around in the colour that lamps show them in: under
/// ambient light alone, surfaces then have that colour, where they would be dark else.
class TEvenMaterials {
public:
    /// Of all objects with faces, and of the scene's library.
    void Apply(TZEPScene& scene);
    /// Back to what they were; those that were changed since stay.
    void Restore(TZEPScene& scene);

private:
    struct TAmbients {
        TColor Front, Back;
    };
    struct TOfObject {
        QPointer<TZEPObject> Object;
        TAmbients Was;
    };
    struct TOfLibrary {
        int Index;
        TColor Diffuse; ///< tells whether another one has taken its place
        TAmbients Was;
    };

    [[nodiscard]] static bool IsEven(const TZEPMaterial& material);
    [[nodiscard]] static TAmbients MakeEven(TZEPMaterial& material);
    static void Restore(TZEPMaterial& material, const TAmbients& was);

    std::vector<TOfObject> m_objects;
    std::vector<TOfLibrary> m_library;
};

} // namespace ZEP
