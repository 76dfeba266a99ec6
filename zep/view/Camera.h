#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>
#include <zep/scene/SceneInterfaces.h>
#include <zep/scene/Vertex3.h>

#include <QPointer>
#include <QRectF>

#include <optional>

namespace ZEP {

/// The object through which a panel looks at a scene. Its base placement (eye, target, up vector,
/// lens) is published and stored; offsets that interactive movement changes come on top of it and
/// are not stored. All points are in the camera's own frame: a camera under turned and moved
/// parents rides with them.
///
/// Defaults: eye and target at the origin, up along z, 45 mm lens, planes at 0.1 and 100,
/// perspective, not extended.
class ZEP_CORE_EXPORT TZEPCamera : public TZEPObject, public TZEPSceneCamera {
    Q_OBJECT
    Q_PROPERTY(ZEP::TZEPVertex3* Position READ Position)
    Q_PROPERTY(ZEP::TZEPObject* PositionObject READ PositionObject WRITE SetPositionObject)
    Q_PROPERTY(ZEP::TZEPVertex3* Target READ Target)
    Q_PROPERTY(ZEP::TZEPObject* TargetObject READ TargetObject WRITE SetTargetObject)
    Q_PROPERTY(ZEP::TZEPVertex3* Up READ Up)
    Q_PROPERTY(double FocalLength READ FocalLength WRITE SetFocalLength)
    Q_PROPERTY(double FOVY READ FOVY WRITE SetFOVY)
    Q_PROPERTY(double NearClipPlane READ NearClipPlane WRITE SetNearClipPlane)
    Q_PROPERTY(double FarClipPlane READ FarClipPlane WRITE SetFarClipPlane)
    Q_PROPERTY(bool Orthographic READ Orthographic WRITE SetOrthographic)
    Q_CLASSINFO("FocalLength", "45")
    Q_CLASSINFO("FOVY", "43.602818972703624")
    Q_CLASSINFO("NearClipPlane", "0.1")
    Q_CLASSINFO("FarClipPlane", "100")
    Q_CLASSINFO("Orthographic", "false")
    Q_PROPERTY(bool Extended READ Extended WRITE SetExtended)
    Q_CLASSINFO("Extended", "false")
public:
    explicit TZEPCamera(TComponent* owner = nullptr);
    ~TZEPCamera() override;

    /// \name Base placement and lens
    /// @{
    [[nodiscard]] TZEPVertex3* Position() { return FirstVector(); }
    /// The eye follows the absolute centre of this object, in place of `Position`.
    [[nodiscard]] TZEPObject* PositionObject() const { return m_positionObject; }
    void SetPositionObject(TZEPObject* object);
    [[nodiscard]] TZEPVertex3* Target() { return SecondVector(); }
    /// The camera looks at the absolute centre of this object, in place of `Target`.
    [[nodiscard]] TZEPObject* TargetObject() const { return m_targetObject; }
    void SetTargetObject(TZEPObject* object);
    [[nodiscard]] TZEPVertex3* Up() { return &m_up; }
    /// Of a 36 mm frame, in millimetres; FOVY = 2 atan(18 / FocalLength). Each sets the other.
    [[nodiscard]] double FocalLength() const { return m_focalLength; }
    void SetFocalLength(double millimetres);
    /// Field of view in degrees: vertical in perspective. In parallel projection it gives the
    /// horizontal extent at the distance of the target.
    [[nodiscard]] double FOVY() const { return m_fovy; }
    void SetFOVY(double degrees);
    [[nodiscard]] double NearClipPlane() const { return m_nearClipPlane; }
    void SetNearClipPlane(double distance);
    [[nodiscard]] double FarClipPlane() const { return m_farClipPlane; }
    void SetFarClipPlane(double distance);
    [[nodiscard]] bool Orthographic() const { return m_orthographic; }
    void SetOrthographic(bool orthographic);
    [[nodiscard]] bool Extended() const { return m_extended; }
    /// Movement as users of modelling programs expect it, whatever the size of the scene: what is
    /// trucked stays under the pointer, orbits end at the poles, and a dolly neither gets stuck
    /// near the target nor passes through it. Each operation tells its part.
    void SetExtended(bool extended) { m_extended = extended; }
    /// `FitCamera` (zep/view/Fitting.h) to a box in absolute coordinates, centred and with a margin
    /// of 1.05.
    void FitTo(const TGLArrayd3& min, const TGLArrayd3& max, double aspect);
    /// @}

    /// \name Where it is now, offsets included
    /// @{
    [[nodiscard]] TGLArrayd3 GetPosition() const;
    void GetPosition3Real(double& x, double& y, double& z) const;
    [[nodiscard]] TGLArrayd3 GetTarget() const;
    void GetTarget3Real(double& x, double& y, double& z) const;
    /// Degrees, within the limits of 0.1 and 175 that a view is drawn with.
    [[nodiscard]] double FieldOfView() const;
    /// Degrees about the viewing axis, from 0 to below 360.
    [[nodiscard]] double RollAngle() const { return m_navigation.Roll; }
    /// A translation after the look-at transform, in the axes of the view.
    [[nodiscard]] const TGLArrayd3& ViewOffset() const { return m_navigation.View; }
    void SetViewOffset(const TGLArrayd3& offset);
    [[nodiscard]] TGLArrayd3 GetCenter() const override { return GetPosition(); }
    /// Something changed since this flag was last taken back.
    [[nodiscard]] bool Changed() const { return m_changed; }
    void SetChanged(bool changed) { m_changed = changed; }
    void Invalidate(TObject* sender) override;
    /// @}

    /// A stream does not hold zeros, so that before reading the lens, the planes and the up vector
    /// are zero.
    void ReadState(TReader& reader) override;

    /// Loads the projection and model-view matrices of one frame. A size of 0 counts as 1, an
    /// index outside of the current jitter table as none.
    void Apply(int width, int height, int jitter) override;
    /// As `Apply`, without jitter and narrowed to a region of the current viewport about (x, y),
    /// which counts from the lower left corner in pixels.
    void Pick(int width, int height, int x, int y, int pickWidth, int pickHeight) override;
    /// Part of the view that fills the viewport at the next frames, in pixels of the size given to
    /// `Apply`, counted from the lower left corner, which may begin within a pixel; none: the whole
    /// view.
    void SetDrawnPart(const std::optional<QRectF>& part) { m_drawnPart = part; }
    /// Where its view, in every panel, picture and click, cuts the scene open
    /// (zep/scene/Sections.h). Rules of the view, of which nothing is stored.
    [[nodiscard]] TZEPSections Sections() const override { return m_sections; }
    void SetSections(const TZEPSections& sections);
    /// What its view shows in place of the whole scene, in every panel, picture and click: a
    /// `TZEPLayout` for one. Lights shine, but there are neither shadows nor mirrors. Another rule
    /// of the view, of which nothing is stored; null, also once the object is gone: the scene.
    [[nodiscard]] TZEPObject* Sheet() const override { return m_sheet; }
    void SetSheet(TZEPObject* sheet);
    /// The object is not seen where it stands: the view shows a sheet, and it does not belong to
    /// that. It may be seen through a viewport of the sheet.
    [[nodiscard]] bool IsOffSheet(const TZEPObject& object) const;
    /// Multiplies the current matrix by what leads from the whole view to the part that is drawn;
    /// nothing where that is the whole. For what is drawn in coordinates of the view.
    void ApplyPart() const;
    /// Of the whole view, as it was given to `Apply` last.
    [[nodiscard]] const QSize& DrawnSize() const { return m_drawnSize; }
    /// What `Apply` loads, without jitter and part.
    [[nodiscard]] TGLMatrixd4 GetProjectionMatrix(int width, int height) const;
    [[nodiscard]] TGLMatrixd4 GetViewMatrix() const;
    [[nodiscard]] std::optional<TGLMatrixd4> ExactView() const override { return GetViewMatrix(); }
    [[nodiscard]] TZEPObject* AsObject() override { return this; }

    /// \name Movement: changes the offsets; angles in degrees
    /// @{
    /// Remembers the offsets.
    virtual void Store();
    /// Takes back what was remembered, without a repaint: the caller moves on from there.
    virtual void Restore();
    [[nodiscard]] bool Stored() const { return m_stored; }
    /// Back to the base placement.
    virtual void Reset();
    /// Shifts eye and target. Every movement goes through it, so that a descendant can bound all.
    virtual void Move(double px, double py, double pz, double tx, double ty, double tz);
    /// Shifts eye and target together along x and y; ten times as far in perspective. The third
    /// shift is taken and ignored. Extended, all three count, and with the shift that
    /// `TZEPPanelControl` gives for a drag (the pointer's, five times in perspective, in the middle
    /// of the depth range) what is at the distance of the target stays under the pointer.
    virtual void Truck(double dx, double dy, double dz);
    /// Turns the view about the eye.
    virtual void Pan(double a, double b);
    /// Turns the eye about the target, by `a` around the z axis and `b` down from it; with the
    /// scene's `LimitCameraMovement` never beyond the pole or the horizon. Extended, never beyond
    /// the poles.
    virtual void Orbit(double a, double b);
    /// What `Orbit` turns about in place of the target, in the frame of the camera's points: eye
    /// and target turn with each other, so that it stays where it is seen. None: the target.
    void SetOrbitCenter(const std::optional<TGLArrayd3>& center) { m_orbitCenter = center; }
    [[nodiscard]] const std::optional<TGLArrayd3>& OrbitCenter() const { return m_orbitCenter; }
    virtual void Roll(double angle);
    /// Widens the field of view; does nothing where it would leave 1 to 175 degrees.
    virtual void FOV(double delta);
    /// Moves away from the target by `factor` of the distance and narrows the lens so that the
    /// target keeps its size. Nothing in parallel projection.
    virtual void Perspective(double factor);
    /// Moves away from the target by `factor` of the distance, or of 1 where that is more.
    /// Extended, always of the distance, and nearer by nine tenths of it at most.
    virtual void Dolly(double factor);
    /// @}

Q_SIGNALS:
    /// It has come to another scene, or to none.
    void SceneChanged();
    /// It goes, and is whole no longer: whoever shows it lets go.
    void Freed();

protected:
    void EnteredScene() override { Q_EMIT SceneChanged(); }
    void Notification(TComponent* component, TOperation operation) override;

private:
    struct TNavigation {
        TGLArrayd3 Position{}, Target{}, View{};
        double Field = 0, Roll = 0;
    };

    void Follow(TZEPObject*& field, TZEPObject* object);
    [[nodiscard]] TGLArrayd3 CenterOf(const TZEPObject& object) const;
    [[nodiscard]] TGLArrayd3 ToEye() const;
    [[nodiscard]] double Distance() const;
    [[nodiscard]] double TruckFactor() const;
    [[nodiscard]] double WithinPoles(double b) const;
    void ApplyProjection(double aspect, int jitter) const;
    void ApplyJittered(double aspect, int jitter) const;
    void ApplyView() const;

    TZEPVertex3 m_up;
    TZEPObject* m_positionObject = nullptr;
    TZEPObject* m_targetObject = nullptr;
    QPointer<TZEPObject> m_sheet;
    double m_focalLength = 0;
    double m_fovy = 0;
    double m_nearClipPlane = 0.1;
    double m_farClipPlane = 100;
    TNavigation m_navigation;
    TNavigation m_storedNavigation;
    std::optional<QRectF> m_drawnPart;
    TZEPSections m_sections;
    std::optional<TGLArrayd3> m_orbitCenter;
    QSize m_drawnSize;
    bool m_orthographic = false;
    bool m_extended = false;
    bool m_stored = false;
    bool m_changed = true;
    bool m_keepsAngle = false; ///< while it is read
    mutable bool m_following = false;
};

} // namespace ZEP
