#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

namespace ZEP {

/// An invisible node of the tree through which a host takes part in the scene's animation.
class ZEP_CORE_EXPORT TZEPActor : public TZEPObject {
    Q_OBJECT
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_CLASSINFO("Visible", "true")
public:
    using TZEPObject::TZEPObject;

    /// Fires `OnAction`, then passes the tick to the children. A handler may free the actor,
    /// and any other object but those above it.
    void Action(double time) override;

Q_SIGNALS:
    /// A tick of the animation, every 40 ms. \param time  seconds since the system started
    void OnAction(ZEP::TZEPObject* sender, double time);
};

} // namespace ZEP
