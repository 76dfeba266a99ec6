#pragma once

#include <zep/Export.h>
#include <zep/framework/Exception.h>

#include <QString>
#include <QStringList>

#include <functional>
#include <map>

struct QMetaObject;

namespace ZEP {

class TComponent;

/// The component classes that streams, menus and form designers can create by name.
class ZEP_CORE_EXPORT TClassRegistry {
public:
    using Create = std::function<TComponent*(TComponent* owner)>;
    struct Entry {
        const QMetaObject* Type;
        QString Group; ///< page of the component palette; empty: streamed, but not offered
        Create Make;
        std::size_t Bytes; ///< size of the class, without what it makes beside itself
    };

    static TClassRegistry& Instance();

    /// Raises `Exception` where another class of the same bare name is registered, in whatever
    /// namespace: streams would make the one for the other. Registering a class again renews it.
    void Register(const Entry& entry);
    /// Nothing for a class that is not registered.
    void Unregister(const QMetaObject& type);

    /// The entry of that bare class name, compared without case; null if there is none.
    [[nodiscard]] const Entry* Find(const QString& className) const;
    /// Registered names in alphabetical order, all or those of one group.
    [[nodiscard]] QStringList ClassNames(const QString& group = {}) const;

private:
    std::map<QString, Entry> m_entries;
};

/// Registers a class for as long as it lives: a constant beside the class's source. Where the name
/// is another's already, that one stays, and a warning says so.
template <class T>
class TRegisterClass {
public:
    explicit TRegisterClass(const char* group = "OpenGL") {
        try {
            TClassRegistry::Instance().Register({&T::staticMetaObject, QString::fromLatin1(group),
                                                 [](TComponent* owner) { return new T(owner); },
                                                 sizeof(T)});
        } catch (const Exception& error) {
            qWarning("%s", error.what());
        }
    }
    ~TRegisterClass() { TClassRegistry::Instance().Unregister(T::staticMetaObject); }
    TRegisterClass(const TRegisterClass&) = delete;
    TRegisterClass& operator=(const TRegisterClass&) = delete;
};

} // namespace ZEP
