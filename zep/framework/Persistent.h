#pragma once

#include <zep/Export.h>
#include <zep/framework/Notify.h>

#include <QByteArray>
#include <QMetaObject>

#include <functional>

namespace ZEP {

class TReadBudget;

/// Takes the binary properties that an object defines by hand, beside its published ones. The
/// stream's writer and reader implement it.
class ZEP_CORE_EXPORT TFiler {
public:
    virtual ~TFiler() = default;

    /// \param name     the property's name
    /// \param read     takes the bytes found in a stream
    /// \param write    gives the bytes to be stored
    /// \param hasData  whether there is something to store
    virtual void DefineBinaryProperty(const char* name,
                                      const std::function<void(const QByteArray&)>& read,
                                      const std::function<QByteArray()>& write, bool hasData) = 0;
    /// What may still be made of the stream that is read; null where nothing is read.
    [[nodiscard]] virtual TReadBudget* Budget() { return nullptr; }
};

/// A streamable sub-object of a component: a gadget whose class is known at run time. Every
/// descendant is declared with `Q_GADGET`, has `TPersistent` (directly or through others) as its
/// first base and overrides `MetaObject()` with `{ return &staticMetaObject; }`.
class ZEP_CORE_EXPORT TPersistent : public TObject {
    Q_GADGET
public:
    TPersistent() = default;
    TPersistent(const TPersistent&) = delete;
    TPersistent& operator=(const TPersistent&) = delete;

    [[nodiscard]] virtual const QMetaObject* MetaObject() const { return &staticMetaObject; }

    /// The class name without its namespace: "TZEPVertex3".
    [[nodiscard]] QString ClassName() const;

    /// Copies the values of `source`. Raises `Exception` where the classes do not fit: the base
    /// takes no source at all.
    virtual void Assign(const TPersistent* source);

    /// Defines the binary properties that are stored beside the published ones; none here.
    virtual void DefineProperties(TFiler& filer);
};

/// The class name without its namespace.
[[nodiscard]] ZEP_CORE_EXPORT QString ClassName(const QMetaObject& type);

} // namespace ZEP
