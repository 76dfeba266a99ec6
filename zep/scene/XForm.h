#pragma once

#include <zep/Export.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/ViewVolume.h>

#include <cstdint>

namespace ZEP {

class TComponent;

/// The transform of an object, from its own coordinates to those of its parent: translation,
/// rotation in degrees, scale, and two free matrices. On a point of the object act, in this order,
/// the extra matrix (`mScale`, `mTranslate`, `mRotate`), the scale, the rotation about z, y and x,
/// the translation, and the base matrix (`mId`). With `RotateAroundCenter` the translation acts
/// before the rotation, which turns about `Center`.
///
/// Starts as the identity with all four vectors at zero; an object sets `Scale` to 1 by itself.
class ZEP_CORE_EXPORT TZEPXForm : public TPersistent {
    Q_GADGET
    Q_PROPERTY(ZEP::TZEPVertex3* Translate READ Translate)
    Q_PROPERTY(ZEP::TZEPVertex3* Center READ Center)
    Q_PROPERTY(bool RotateAroundCenter READ RotateAroundCenter WRITE SetRotateAroundCenter)
    Q_PROPERTY(ZEP::TZEPVertex3* Scale READ Scale)
    Q_PROPERTY(ZEP::TZEPVertex3* Rotate READ Rotate)
    Q_CLASSINFO("RotateAroundCenter", "false")
public:
    /// \param onChange  called after every recomputation with the sender of the change
    /// \param owner     the object that is transformed; not kept
    TZEPXForm(TNotifyEvent onChange, TComponent* owner);
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] TZEPVertex3* Translate() { return &m_translate; }
    /// Made when first asked for, as `Rotate`.
    [[nodiscard]] TZEPVertex3* Center();
    [[nodiscard]] TZEPVertex3* Scale() { return &m_scale; }
    /// Degrees about the x, y and z axes.
    [[nodiscard]] TZEPVertex3* Rotate();
    [[nodiscard]] bool RotateAroundCenter() const { return m_rotateAroundCenter; }
    void SetRotateAroundCenter(bool value);

    /// All three matrices become the identity and all vectors, `Scale` too, zero. Nobody is told
    /// and nothing is recomputed: what follows is a stream that sets the values.
    void Clear();
    [[nodiscard]] const TGLMatrixd4& GetMatrix() const { return m_composed; }
    /// r = the point `v` of the object in the coordinates of its parent.
    void Convert(const TGLArrayd3& v, TGLArrayd3& r) const;
    /// The matrix is not the identity.
    [[nodiscard]] bool IsActive() const { return m_active; }
    /// Grows with every edit.
    [[nodiscard]] int ChangeCounter() const { return static_cast<int>(m_changeCounter); }

    /// \name On the matrix stack of OpenGL; an identity makes no call
    /// @{
    void Push() const;
    void Apply() const;
    void Pop() const;
    /// @}

    /// Replaces the base matrix, the outermost one; it is not stored in streams.
    void mId(const TGLMatrixd4& m);
    /// \name What multiplies the extra matrix, the innermost one
    /// @{
    void mScale(double x, double y, double z);
    void mTranslate(double x, double y, double z);
    /// Rotation by `angle` degrees about the axis (ax, ay, az) through the point (cx, cy, cz).
    void mRotate(double cx, double cy, double cz, double ax, double ay, double az, double angle);
    /// @}

    /// An edit was made: counts it, recomputes and tells the owner.
    void ChangeData(TObject* sender);
    /// Recomputes the matrix and tells the owner.
    void Invalidate(TObject* sender);
    void PrepareMatrix();
    /// What few transforms have goes where it is as it was made, and with it what `Center` and
    /// `Rotate` answered: for who knows that nobody has asked.
    void DropRare();

    /// All vectors, the flag and the matrices are the same.
    [[nodiscard]] bool HasValuesOf(const TZEPXForm& other) const;
    /// Copies all values and matrices of another transform, with one notification.
    void Assign(const TPersistent* source) override;
    /// Defines the binary property `Matrix`, the extra matrix where it is not the identity.
    void DefineProperties(TFiler& filer) override;
    /// Takes the extra matrix as 16 little-endian doubles; raises `Exception` below 128 bytes.
    void LoadMatrix(const QByteArray& stream);
    [[nodiscard]] QByteArray StoreMatrix() const;

private:
    /// The identity in nearly all transforms: null then.
    using TRareMatrix = std::unique_ptr<TGLMatrixd4>;
    /// What few transforms have.
    struct TRare {
        explicit TRare(TNotifyEvent onChange) : Center(onChange), Rotate(onChange) {}
        void Take(const TRare& other);
        [[nodiscard]] bool IsSame(const TRare& other) const;
        TZEPVertex3 Center;
        TZEPVertex3 Rotate;
        TRareMatrix Base;
        TRareMatrix Extra;
    };
    /// The same of all others.
    [[nodiscard]] static TRare& Usual();
    [[nodiscard]] const TRare& Known() const { return m_rare ? *m_rare : Usual(); }
    TRare& Rare();
    TGLMatrixd4& Extra();
    [[nodiscard]] static const TGLMatrixd4& ValueOf(const TRareMatrix& matrix);
    static void SetValue(TRareMatrix& matrix, const TGLMatrixd4& value);

    TNotifyEvent m_onChange;
    std::unique_ptr<TRare> m_rare;
    TGLMatrixd4 m_composed = idd;
    TZEPVertex3 m_translate;
    TZEPVertex3 m_scale;
    std::uint32_t m_changeCounter = 0;
    bool m_rotateAroundCenter = false;
    bool m_active = false;
};

/// Has a transform on the matrix stack for as long as it lives, and a draw walk in its frame. It
/// pops what it pushed, also where the transform became or ceased to be the identity in between.
/// Transforms nest as deep as trees do: OpenGL's stack holds the outer ones, and leaves room for
/// what objects push. Null stands for the identity.
class ZEP_CORE_EXPORT TZEPXFormScope {
public:
    TZEPXFormScope(TZEPFrame& frame, const TZEPXForm* xform);
    ~TZEPXFormScope();
    TZEPXFormScope(const TZEPXFormScope&) = delete;
    TZEPXFormScope& operator=(const TZEPXFormScope&) = delete;

private:
    TZEPFrame& m_frame;
    std::optional<TZEPViewFrame> m_view;
    std::optional<TGLMatrixd4> m_outer; ///< beyond what OpenGL's stack is sure to hold
    bool m_pushed;
};

} // namespace ZEP
