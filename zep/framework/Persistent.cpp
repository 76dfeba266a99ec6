#include <zep/framework/Persistent.h>

#include <zep/framework/Exception.h>

namespace ZEP {

QString ClassName(const QMetaObject& type) {
    return QString::fromLatin1(type.className()).section(QLatin1String("::"), -1);
}

QString TPersistent::ClassName() const {
    return ZEP::ClassName(*MetaObject());
}

void TPersistent::Assign(const TPersistent* source) {
    throw Exception(QStringLiteral("Cannot assign a %1 to a %2")
                        .arg(source ? source->ClassName() : QStringLiteral("nil"), ClassName()));
}

void TPersistent::DefineProperties(TFiler&) {}

} // namespace ZEP
