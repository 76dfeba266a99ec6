#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ShadowedObject.h>

#include <optional>

namespace ZEP {

/// An object that can be a flat mirror. In a scene with `Reflections` the pass `dsReflections`
/// draws the scene once more as the mirror shows it, into the pixels of the mirror's front faces,
/// and the mirror itself lets that shine through.
///
/// The scene draws that pass with `TZEPScene::FirstPasses`, else only for a host that asks for it
/// at `TZEPScene::AfterCamera`.
///
/// A mirror shows neither shadows nor what other mirrors show. What stands behind an opaque mirror
/// is hidden by it.
///
/// Defaults: no mirror.
class ZEP_CORE_EXPORT TZEPReflexedObject : public TZEPShadowedObject {
    Q_OBJECT
    Q_PROPERTY(double Reflection READ Reflection WRITE SetReflection)
public:
    using TZEPShadowedObject::TZEPShadowedObject;

    [[nodiscard]] double Reflection() const { return m_reflection; }
    /// How much of what the mirror shows there is: 0 (no mirror) to 1 (nothing of its own colour).
    void SetReflection(double reflection);
    /// Three points of the plane that it mirrors in, in its own frame: all zero where there is
    /// none.
    [[nodiscard]] virtual std::array<TGLArrayd3, 3> MirrorPoints() const { return {}; }

    void DrawReflections() override;
    void DrawMain(bool draft) override;
    void DrawTransparent(bool draft) override;
    void DrawShadows(bool draft) override;

protected:
    [[nodiscard]] TZEPPassSet SidePasses() const override;

private:
    class TImage;

    /// Of the scene, which it lets shine through.
    [[nodiscard]] bool Mirrors() const;
    [[nodiscard]] std::optional<TGLArrayd4> MirrorPlane(const TGLMatrixd4& place,
                                                        const TGLMatrixd4& camera) const;
    template <class Between>
    void DrawSides(Between&& between);

    double m_reflection = 0;
    bool m_drawsImage = false; // what is drawn is what this shows
};

} // namespace ZEP
