#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

namespace ZEP {

/// Draws another object, with what is below it, a second time, as if that were its child. The
/// other object need not be in the same tree; it draws with its own scene's material library.
///
/// Of the flags that a pass looks at, its own count: whether it draws an outline, and whether it is
/// drawn among what receives shadows. Whether what it draws casts shadows, and whether they are
/// drawn on it, the target's flags tell: for shadows on a proxy both receive (`SetShadows(1,
/// true)`).
///
/// A proxy that comes to stand below its own target draws that within itself, `Recurse` times.
/// Where proxies lead to each other over and over, some thousands of repetitions are drawn and no
/// more.
///
/// Defaults: no target, `Recurse` 1.
class ZEP_CORE_EXPORT TZEPProxy : public TZEPObject {
    Q_OBJECT
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_CLASSINFO("Visible", "true")
    Q_PROPERTY(int Recurse READ Recurse WRITE SetRecurse)
    Q_CLASSINFO("Recurse", "1")
    Q_PROPERTY(ZEP::TZEPObject* Proxy READ Proxy WRITE SetProxy)
public:
    using TZEPObject::TZEPObject;

    [[nodiscard]] int Recurse() const { return m_recurse; }
    void SetRecurse(int recurse);
    [[nodiscard]] TZEPObject* Proxy() const { return m_target; }
    /// Raises `Exception` ("Recursive proxy assigment") where the proxy is the object or stands
    /// below it; the old target then stays.
    void SetProxy(TZEPObject* object);

    /// A target that becomes the parent is none any more.
    void SetParentComponentExt(TComponent* parent, bool append) override;
    /// Of the target, without its transform.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override;

protected:
    void Notification(TComponent* component, TOperation operation) override;
    [[nodiscard]] TZEPPassSet SidePasses() const override { return m_target ? AllPasses : 0; }

private:
    void DrawTarget(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind);

    TZEPObject* m_target = nullptr;
    int m_recurse = 1;
    int m_depth = 0; // 0 outside of drawing
};

} // namespace ZEP
