#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ShadowLists.h>
#include <zep/scene/Object.h>

#include <concepts>

namespace ZEP {

/// A light of a scene. Lights number themselves in the order of the tree and take OpenGL's lights
/// of these numbers, eight at most: further ones keep their numbers and shine nowhere.
///
/// An aimed light (`Directional`) stands at its position and its cone points to its target. Any
/// other is infinitely far away and shines from where its position lies, as seen from its origin.
/// Ambient, diffuse and specular light all have its colour.
///
/// With `CastShadows`, and in a scene with `Shadows`, the objects that cast shadows do so from
/// where it stands. Of one at infinity that is its position, too: put it far outside of the scene,
/// along the direction that its light comes from. A volume stays with the light until `DrawPre` is
/// called: a host whose objects move has the scene do so in each frame (`TZEPScene::FirstPasses`),
/// or the shadows of all places add up.
///
/// Defaults: colour 0xC0C0C0, at infinity, cutoff 180 (no cone), exponent and attenuation 0,
/// position and target (0, 0, 0).
class ZEP_CORE_EXPORT TZEPLight : public TZEPObject {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Vertex3.h")
    Q_PROPERTY(ZEP::TColor Color READ Color WRITE SetColor)
    Q_CLASSINFO("Color", "0xC0C0C0")
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_CLASSINFO("Visible", "true")
    Q_PROPERTY(bool CastShadows READ CastsShadows WRITE SetCastShadows)
    Q_CLASSINFO("CastShadows", "false")
    Q_PROPERTY(ZEP::TZEPVertex3* Position READ Position)
    Q_PROPERTY(ZEP::TZEPObject* PositionObject READ PositionObject WRITE SetPositionObject)
    Q_PROPERTY(ZEP::TZEPVertex3* Target READ Target)
    Q_PROPERTY(ZEP::TZEPObject* TargetObject READ TargetObject WRITE SetTargetObject)
    Q_PROPERTY(float Exponent READ Exponent WRITE SetExponent)
    Q_PROPERTY(float Cutoff READ Cutoff WRITE SetCutoff)
    Q_PROPERTY(float Attenuation READ Attenuation WRITE SetAttenuation)
    Q_PROPERTY(bool Directional READ Directional WRITE SetDirectional)
    Q_CLASSINFO("Directional", "false")
    Q_PROPERTY(bool ExactShadows READ ExactShadows WRITE SetExactShadows)
    Q_CLASSINFO("ExactShadows", "false")
public:
    /// What `SetParam` sets.
    enum ParamIndex { ExponentParam, CutoffParam };

    explicit TZEPLight(TComponent* owner = nullptr);
    ~TZEPLight() override;

    void SetCastShadows(bool casts) { SetShadows(0, casts); }
    [[nodiscard]] TZEPVertex3* Position() { return FirstVector(); }
    /// The light stands at the absolute centre of this object, in place of `Position`.
    [[nodiscard]] TZEPObject* PositionObject() const { return m_positionObject; }
    void SetPositionObject(TZEPObject* object) { Attach(m_positionObject, object); }
    [[nodiscard]] TZEPVertex3* Target() { return SecondVector(); }
    /// The light aims at the absolute centre of this object, in place of `Target`.
    [[nodiscard]] TZEPObject* TargetObject() const { return m_targetObject; }
    void SetTargetObject(TZEPObject* object) { Attach(m_targetObject, object); }
    [[nodiscard]] float Exponent() const { return m_exponent; }
    /// How the cone fades from its axis: 0 (evenly lit) to 128.
    void SetExponent(float exponent) { SetParam(ExponentParam, exponent); }
    [[nodiscard]] float Cutoff() const { return m_cutoff; }
    /// Half the opening angle of the cone: 0 to 90 degrees, or exactly 180 for no cone. Others
    /// become the nearest of 0 and 90.
    void SetCutoff(float degrees) { SetParam(CutoffParam, degrees); }
    [[nodiscard]] float Attenuation() const { return m_attenuation; }
    /// Linear: at the distance d the light has 1 / (1 + attenuation d) of its strength. Does not
    /// repaint. Back at 0 or below OpenGL keeps what it had: scenes have come to rely on it.
    void SetAttenuation(float attenuation) { m_attenuation = attenuation; }
    [[nodiscard]] bool Directional() const { return m_directional; }
    /// Aimed, not at infinity.
    void SetDirectional(bool directional);
    [[nodiscard]] bool ExactShadows() const { return m_exactShadows; }
    /// Each part of a caster casts for itself, so that shadows are right on and between the parts
    /// of one that is not convex; a volume is made sooner, and covers more. Else the outline of the
    /// whole casts alone.
    void SetExactShadows(bool exact);
    /// Sets a number by its `ParamIndex` and invalidates, also where it stays the same; other
    /// indices do nothing.
    void SetParam(int index, float value);

    [[nodiscard]] int LightNum() const { return m_lightNum; }
    /// The scene does this whenever a light comes into its tree.
    void SetLightNum(int number);

    /// The absolute centre of the position object, else `Position`.
    [[nodiscard]] TGLArrayd3 GetCenter() const override;

    /// Drops the shadow volumes of the last frame.
    void DrawPre() override;
    /// Sets up OpenGL's light and switches it on. In the shadow pass lights that cast shadows stay
    /// as they are, the others are lit only where shadows are accumulated.
    void DrawLight(bool shadowPass) override;
    /// Counts itself among the scene's lights that cast shadows.
    void BuildShadowVolumes() override;
    /// Counts the shadow volumes into the stencil buffer and has the scene draw the objects that
    /// receive shadows: what lies in shadow is taken off, or where shadows are accumulated, what
    /// lies in light is drawn. The method is that of T. Heidmann, "Real shadows real time", 1991;
    /// an eye within a shadow sees light and shadow exchanged along the way out of it.
    void DrawShadowVolumes() override;

    /// \name Shadow volumes
    /// @{
    /// Calls `visit(light)` for each light of the scene that casts shadows.
    template <std::invocable<TZEPLight&> Visit>
    static void ForEachCasting(const TZEPSceneContext* scene, Visit&& visit) {
        // By index: what is drawn in between may free one.
        for (std::size_t i = 0; i < All().size(); ++i)
            if (TZEPLight& light = *All()[i]; light.IsCastingIn(scene)) visit(light);
    }
    /// Where it stands in the absolute frame.
    [[nodiscard]] TGLArrayd3 Eye() const;
    [[nodiscard]] TZEPShadowLists& Volumes() { return m_volumes; }
    /// Takes over a display list that holds a shadow volume.
    void AddShadowList(GLuint list) { m_volumes.Add(list); }
    [[nodiscard]] const std::vector<GLuint>& ShadowLists() const { return m_volumes.Lists(); }
    /// @}

    /// With a cutoff of 0 at first: that is not stored, and must not come back as 180.
    void ReadState(TReader& reader) override;

protected:
    void EnteredScene() override;
    void Reordered() override { NumberLights(); }
    void Notification(TComponent* component, TOperation operation) override;
    [[nodiscard]] bool DrawsInQuickDraw() const override { return true; }
    [[nodiscard]] TZEPPassSet SidePasses() const override;

private:
    static constexpr int LightCount = 8; ///< that OpenGL has at least

    /// Of the process, those that stand in scenes.
    [[nodiscard]] static std::vector<TZEPLight*>& All();
    [[nodiscard]] bool IsCastingIn(const TZEPSceneContext* scene) const;
    void CountVolumes() const;
    [[nodiscard]] int ImagesLeft() const;
    void DrawReceivers(TZEPScene& scene) const;
    void Subtract(TZEPScene& scene) const;
    void Accumulate(TZEPScene& scene) const;
    void Attach(TZEPObject*& field, TZEPObject* object);
    void NumberLights();
    [[nodiscard]] TGLArrayd3 InOwnFrame(const TZEPObject* object, const TGLArrayd3& point) const;
    void SendPlace(GLenum light) const;
    void SendColor(GLenum light);
    void SwitchForShadows(GLenum light) const;

    TZEPShadowLists m_volumes;
    TZEPObject* m_positionObject = nullptr;
    TZEPObject* m_targetObject = nullptr;
    int m_lightNum = 0;
    float m_exponent = 0;
    float m_cutoff = 180;
    float m_attenuation = 0;
    float m_alpha = 0; // of the ambient light: 1 from the second draw on
    bool m_directional = false;
    bool m_exactShadows = false;
    mutable bool m_following = false;
};

} // namespace ZEP
