#include <zep/framework/Registry.h>

#include <zep/framework/Component.h>
#include <zep/framework/Persistent.h>

namespace ZEP {

TClassRegistry& TClassRegistry::Instance() {
    static TClassRegistry registry;
    return registry;
}

void TClassRegistry::Register(const Entry& entry) {
    const auto [place, isNew] = m_entries.try_emplace(ClassName(*entry.Type).toLower(), entry);
    if (isNew) return;
    if (place->second.Type != entry.Type)
        throw Exception(
            QStringLiteral("The class %1 cannot be registered: %2 has that name already")
                .arg(QLatin1String(entry.Type->className()),
                     QLatin1String(place->second.Type->className())));
    place->second = entry;
}

void TClassRegistry::Unregister(const QMetaObject& type) {
    const auto found = m_entries.find(ClassName(type).toLower());
    if (found != m_entries.end() && found->second.Type == &type) m_entries.erase(found);
}

const TClassRegistry::Entry* TClassRegistry::Find(const QString& className) const {
    const auto found = m_entries.find(className.toLower());
    return found == m_entries.end() ? nullptr : &found->second;
}

QStringList TClassRegistry::ClassNames(const QString& group) const {
    QStringList names;
    for (const auto& [key, entry] : m_entries)
        if (group.isEmpty() || entry.Group == group) names.append(ClassName(*entry.Type));
    return names;
}

} // namespace ZEP
