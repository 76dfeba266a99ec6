#include <zep/framework/Property.h>

#include <zep/framework/Color.h>
#include <zep/framework/Persistent.h>

#include <QMetaEnum>
#include <QSet>

namespace ZEP {

namespace {

QVariant EnumValue(const QMetaProperty& property, const QByteArray& text) {
    const QMetaEnum names = property.enumerator();
    bool known = true;
    if (names.isFlag() && text.isEmpty()) return 0;
    const QByteArray keys = QByteArray(text).replace(',', '|');
    const int value =
        names.isFlag() ? names.keysToValue(keys, &known) : names.keyToValue(keys, &known);
    return known ? QVariant(value) : QVariant();
}

/// A number or one of the names; what is neither is no default, so that nothing is left out.
QVariant ColorDefault(const QByteArray& text) {
    bool isNumber = false;
    const TColor color{text.toUInt(&isNumber, 0)};
    if (isNumber) return QVariant::fromValue(color);
    const auto named = ColorByName({text.constData(), static_cast<std::size_t>(text.size())});
    return named ? QVariant::fromValue(*named) : QVariant();
}

bool IsGadgetPointer(const QMetaType& type) {
    return type.flags().testFlag(QMetaType::PointerToGadget);
}

/// Persistents have `TPersistent` as their first base, so a pointer to one is a pointer to it.
TPersistent* AsPersistent(const QMetaProperty& property, const QVariant& value) {
    if (!IsGadgetPointer(property.metaType())) return nullptr;
    if (!property.metaType().metaObject()->inherits(&TPersistent::staticMetaObject)) return nullptr;
    return *static_cast<TPersistent* const*>(value.constData());
}

} // namespace

QList<QMetaProperty> PublishedProperties(const QMetaObject& type) {
    QList<QMetaProperty> properties;
    QSet<QByteArray> seen;
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QByteArray name = type.property(i).name();
        if (name == "objectName" || seen.contains(name)) continue;
        seen.insert(name);
        // The descendant's declaration wins, at the place of the first one.
        properties.append(type.property(type.indexOfProperty(name)));
    }
    return properties;
}

QVariant DeclaredDefault(const QMetaObject& type, const QMetaProperty& property) {
    const int index = type.indexOfClassInfo(property.name());
    if (index < 0) return {};
    const QByteArray text = type.classInfo(index).value();
    if (property.isEnumType() || property.isFlagType()) return EnumValue(property, text);
    if (property.metaType() == QMetaType::fromType<TColor>()) return ColorDefault(text);
    if (property.metaType() == QMetaType::fromType<bool>()) return text == "true";
    QVariant value = property.metaType() == QMetaType::fromType<int>()
                         ? QVariant(text.toInt(nullptr, 0))
                         : QVariant(QString::fromLatin1(text));
    value.convert(property.metaType());
    return value;
}

TPersistent* SubObject(const QMetaProperty& property, const QObject* instance) {
    return AsPersistent(property, property.read(instance));
}

TPersistent* SubObject(const QMetaProperty& property, const TPersistent* instance) {
    return AsPersistent(property, property.readOnGadget(instance));
}

} // namespace ZEP
