#pragma once

#include <zep/Export.h>

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
    };

    static TClassRegistry& Instance();

    void Register(const QMetaObject& type, const QString& group, Create make);
    void Unregister(const QString& className);

    /// The entry of that bare class name, compared without case; null if there is none.
    [[nodiscard]] const Entry* Find(const QString& className) const;
    /// Registered names in alphabetical order, all or those of one group.
    [[nodiscard]] QStringList ClassNames(const QString& group = {}) const;

private:
    std::map<QString, Entry> m_entries;
};

/// Registers a class for as long as it lives: a constant beside the class's source.
template <class T>
class TRegisterClass {
public:
    explicit TRegisterClass(const char* group = "OpenGL") {
        TClassRegistry::Instance().Register(T::staticMetaObject, QString::fromLatin1(group),
                                            [](TComponent* owner) { return new T(owner); });
    }
    ~TRegisterClass() {
        TClassRegistry::Instance().Unregister(
            QString::fromLatin1(T::staticMetaObject.className()).section(QLatin1String("::"), -1));
    }
    TRegisterClass(const TRegisterClass&) = delete;
    TRegisterClass& operator=(const TRegisterClass&) = delete;
};

} // namespace ZEP
