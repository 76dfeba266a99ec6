#include "view/Actor.h"

#include "appearance/Material.h"
#include "scene/Vertex3.h"
#include "scene/XForm.h"

#include <QPointer>

namespace ZEP {

namespace {

const TRegisterObject<TZEPActor> Registered;

} // namespace

void TZEPActor::Action(double time) {
    const QPointer<TZEPActor> alive(this);
    emit OnAction(this, time);
    if (alive) TZEPObject::Action(time);
}

} // namespace ZEP
