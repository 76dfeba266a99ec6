#pragma once

#include <zep/Export.h>
#include <zep/appearance/effects/ShadowedObject.h>
#include <zep/objects/HostCall.h>

#include <functional>
#include <memory>

namespace ZEP {

/// An object that the host draws and measures. It is drawn with its material applied and inside its
/// transform, also where a scene that draws quickly leaves out what lies deeper.
///
/// A callback that throws is reported by `Failed` and not called again until one is set.
class ZEP_CORE_EXPORT TZEPUser : public TZEPShadowedObject {
    Q_OBJECT
public:
    /// Draws: `face` is GL_FRONT, GL_BACK or GL_FRONT_AND_BACK, `draft` asks for outlines. What it
    /// pushes without popping is popped after it, and the client's arrays are as before; any other
    /// state it leaves as it found it. It may draw other objects, which leave OpenGL with their
    /// materials.
    using TDraw = std::function<void(TZEPUser& sender, GLenum face, bool draft)>;
    /// Answers the box that is drawn in, in the object's own frame.
    using TMeasure = std::function<void(const TZEPUser& sender, TGLArrayd3& min, TGLArrayd3& max)>;

    using TZEPShadowedObject::TZEPShadowedObject;

    void SetOnDraw(TDraw draw);
    /// A question: the tree stays as it is while it is answered.
    void SetOnGetSize(TMeasure measure);
    /// What the callback that failed said; empty while all is well.
    [[nodiscard]] const QString& Error() const { return m_calls.Error(); }

    /// What the host answers; the unit box without a callback or where it fails.
    void GetSize(TGLArrayd3& min, TGLArrayd3& max) const override;
    void DrawSpecific(GLenum face, bool draft) override;

Q_SIGNALS:
    /// A callback has thrown, maybe in the middle of a frame or of measuring: show messages, and
    /// change the tree, later, by a queued connection.
    void Failed(ZEP::TZEPObject* sender, const QString& error) const;

protected:
    [[nodiscard]] bool DrawsInQuickDraw() const override { return true; }
    /// Nobody tells what the host draws next time.
    [[nodiscard]] bool KeepsShape() const override { return false; }

private:
    void Report() const;

    // Shared with a call that is on the way, which may set another.
    std::shared_ptr<const TDraw> m_draw;
    std::shared_ptr<const TMeasure> m_measure;
    mutable THostCall m_calls;
};

} // namespace ZEP
