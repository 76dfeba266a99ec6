#include <zep/framework/stream/ClassLayout.h>

#include <zep/framework/Collection.h>
#include <zep/framework/Color.h>
#include <zep/framework/Component.h>
#include <zep/framework/LookOnly.h>
#include <zep/framework/Property.h>
#include <zep/framework/stream/Token.h>

#include <cstring>
#include <limits>
#include <unordered_map>

namespace ZEP {

namespace {

TFieldKind KindOfPointer(const QMetaType& type) {
    if (type.flags().testFlag(QMetaType::PointerToQObject)) return TFieldKind::Reference;
    const bool isSubObject = type.flags().testFlag(QMetaType::PointerToGadget) &&
                             type.metaObject()->inherits(&TPersistent::staticMetaObject);
    if (!isSubObject) return TFieldKind::Unknown;
    return type.metaObject()->inherits(&TCollection::staticMetaObject) ? TFieldKind::Collection
                                                                       : TFieldKind::SubObject;
}

TFieldKind KindOf(const QMetaProperty& property) {
    if (property.isFlagType()) return TFieldKind::Set;
    if (property.isEnumType()) return TFieldKind::Enumeration;
    switch (property.metaType().id()) {
    case QMetaType::Bool:
        return TFieldKind::Boolean;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return TFieldKind::Integer;
    case QMetaType::Float:
        return TFieldKind::Single;
    case QMetaType::Double:
        return TFieldKind::Double;
    case QMetaType::QString:
        return TFieldKind::String;
    default:
        if (property.metaType() == QMetaType::fromType<TColor>()) return TFieldKind::Color;
        return KindOfPointer(property.metaType());
    }
}

bool IsUnsigned(const QMetaType& type) {
    const int id = type.id();
    return id == QMetaType::UInt || id == QMetaType::UShort || id == QMetaType::UChar ||
           id == QMetaType::Bool || type.flags().testFlag(QMetaType::IsUnsignedEnumeration);
}

std::optional<qint64> DefaultOf(const QMetaObject& type, const QMetaProperty& property,
                                TFieldKind kind) {
    const QVariant value = DeclaredDefault(type, property);
    if (!value.isValid()) return {};
    if (kind == TFieldKind::Color) return static_cast<qint32>(value.value<TColor>().Value);
    return value.toLongLong();
}

} // namespace

TInstance::TInstance(TComponent* component)
    : Type(component->metaObject()), Address(component), m_component(component) {}

TInstance::TInstance(TPersistent* persistent)
    : Type(persistent->MetaObject()), Address(reinterpret_cast<QObject*>(persistent)),
      m_persistent(persistent) {}

TInstance::TInstance(TCollectionItem* item)
    : Type(item->MetaObject()), Address(reinterpret_cast<QObject*>(item)) {}

void TInstance::DefineProperties(TFiler& filer) const {
    if (m_component) m_component->DefineProperties(filer);
    if (m_persistent) m_persistent->DefineProperties(filer);
}

// --- fields ------------------------------------------------------------------------------------

TField::TField(const QMetaObject& type, const QMetaProperty& property)
    : m_name(property.name()), m_names(property.enumerator()),
      m_type(property.metaType().metaObject()),
      m_call(property.enclosingMetaObject()->d.static_metacall),
      m_index(property.propertyIndex() - property.enclosingMetaObject()->propertyOffset()),
      m_kind(KindOf(property)), m_size(static_cast<unsigned char>(property.metaType().sizeOf())),
      m_unsigned(IsUnsigned(property.metaType())) {
    const bool isPart = m_kind == TFieldKind::SubObject || m_kind == TFieldKind::Collection;
    m_stored = property.isStored() && (isPart || property.isWritable());
    if (m_kind >= TFieldKind::Boolean && m_kind <= TFieldKind::Set)
        m_default = DefaultOf(type, property, m_kind);
}

std::optional<qint64> TField::ValueOf(std::string_view name) const {
    for (int i = 0; i < m_names.keyCount(); ++i)
        if (SameName(m_names.key(i), name)) return m_names.value(i);
    return {};
}

// The lowest bytes of what is read and written are the value's: ordinals are little-endian here.
static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN);

qint64 TField::Ordinal(const TInstance& instance) const {
    qint64 value = 0;
    Get(instance, &value);
    const int unused = 64 - 8 * m_size;
    const auto bits = static_cast<quint64>(value) << unused;
    return m_unsigned ? static_cast<qint64>(bits >> unused) : static_cast<qint64>(bits) >> unused;
}

bool TField::SetOrdinal(const TInstance& instance, qint64 value) const {
    const int unused = 64 - 8 * m_size;
    const auto bits = static_cast<quint64>(value) << unused;
    const bool fitsSigned = static_cast<qint64>(bits) >> unused == value;
    const bool fitsUnsigned = static_cast<qint64>(bits >> unused) == value;
    // A colour is written as a signed number and may be given as either.
    const bool fits =
        m_unsigned ? fitsUnsigned : fitsSigned || (m_kind == TFieldKind::Color && fitsUnsigned);
    if (fits) Set(instance, &value);
    return fits;
}

double TField::Float(const TInstance& instance) const {
    if (m_kind == TFieldKind::Single) {
        float value = 0;
        Get(instance, &value);
        return static_cast<double>(value);
    }
    double value = 0;
    Get(instance, &value);
    return value;
}

void TField::SetFloat(const TInstance& instance, double value) const {
    if (m_kind != TFieldKind::Single) return Set(instance, &value);
    auto single = static_cast<float>(value);
    Set(instance, &single);
}

QString TField::String(const TInstance& instance) const {
    QString value;
    Get(instance, &value);
    return value;
}

void TField::SetString(const TInstance& instance, QString value) const {
    Set(instance, &value);
}

QObject* TField::Reference(const TInstance& instance) const {
    QObject* value = nullptr;
    Get(instance, &value);
    return value;
}

void TField::SetReference(const TInstance& instance, QObject* value) const {
    Set(instance, &value);
}

// Persistents have `TPersistent` as their first base, so a pointer to one is a pointer to it.
TPersistent* TField::SubObject(const TInstance& instance) const {
    TPersistent* value = nullptr;
    Get(instance, &value);
    return value;
}

// --- classes -----------------------------------------------------------------------------------

TClassLayout::TClassLayout(const QMetaObject& type) {
    for (const QMetaProperty& property : PublishedProperties(type))
        m_fields.emplace_back(type, property);
}

const TClassLayout& TClassLayout::Of(const QMetaObject& type) {
    static std::unordered_map<const QMetaObject*, TClassLayout> layouts;
    return layouts.try_emplace(&type, type).first->second;
}

const TField* TClassLayout::Find(std::string_view name) const {
    for (const TField& field : m_fields)
        if (field.Name().size() == name.size() && SameName(field.Name(), name)) return &field;
    return nullptr;
}

// --- numbers at first ---------------------------------------------------------------------------

/// By class.
std::unordered_map<const QMetaObject*, std::vector<TNumberPresets::TPath>>&
TNumberPresets::Known() {
    static std::unordered_map<const QMetaObject*, std::vector<TPath>> known;
    return known;
}

// Collections are empty at first.
void TNumberPresets::Find(const TInstance& instance, TPath& path, std::vector<TPath>& found) {
    for (const TField& field : TClassLayout::Of(*instance.Type).Fields()) {
        const bool isNumber =
            field.Kind() == TFieldKind::Single || field.Kind() == TFieldKind::Double;
        path.push_back(&field);
        if (isNumber && field.IsStored() && field.Float(instance) != 0)
            found.push_back(path);
        else if (TPersistent* part = field.Kind() == TFieldKind::SubObject && field.IsStored()
                                         ? field.SubObject(instance)
                                         : nullptr)
            Find(TInstance(part), path, found);
        path.pop_back();
    }
}

std::vector<TNumberPresets::TPath> TNumberPresets::Find(const TInstance& instance) {
    const TLookOnly look; // parts need not come into being for this
    std::vector<TPath> found;
    TPath path;
    Find(instance, path, found);
    return found;
}

void TNumberPresets::Clear(TInstance instance, const TPath& path) {
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        instance = TInstance(path[i]->SubObject(instance));
    if (path.back()->Float(instance) != 0) path.back()->SetFloat(instance, 0);
}

void TNumberPresets::Learn(const TInstance& made) {
    const auto [known, isNew] = Known().try_emplace(made.Type);
    if (isNew) known->second = Find(made);
}

void TNumberPresets::Apply(const TInstance& made) {
    for (const TPath& path : Known()[made.Type]) Clear(made, path);
}

void TNumberPresets::ApplyToNew(const TInstance& made) {
    const auto [known, isNew] = Known().try_emplace(made.Type);
    if (isNew) known->second = Find(made);
    for (const TPath& path : known->second) Clear(made, path);
}

void TNumberPresets::ApplyToUsed(const TInstance& instance) {
    for (const TPath& path : Find(instance)) Clear(instance, path);
}

} // namespace ZEP
