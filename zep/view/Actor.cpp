#include <zep/view/Actor.h>

#include <zep/appearance/materials/Material.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

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
