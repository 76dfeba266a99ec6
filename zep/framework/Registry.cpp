#include <zep/framework/Registry.h>

#include <zep/framework/Component.h>
#include <zep/framework/Persistent.h>

namespace ZEP {

TClassRegistry& TClassRegistry::Instance() {
    static TClassRegistry registry;
    return registry;
}

void TClassRegistry::Register(const QMetaObject& type, const QString& group, Create make) {
    m_entries[ClassName(type).toLower()] = {&type, group, std::move(make)};
}

void TClassRegistry::Unregister(const QString& className) {
    m_entries.erase(className.toLower());
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
