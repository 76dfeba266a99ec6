#include <zep/view/Actor.h>

#include <zep/appearance/materials/Material.h>
#include <zep/batch/GatheredClass.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <QPointer>

namespace ZEP {

namespace {

const TRegisterObject<TZEPActor> RegisteredActor;
const TZEPGatheredClass Gathered{typeid(TZEPActor), TZEPGathered::Group};

} // namespace

void TZEPActor::Action(double time) {
    const QPointer<TZEPActor> alive(this);
    Q_EMIT OnAction(this, time);
    if (alive) TZEPObject::Action(time);
}

} // namespace ZEP
