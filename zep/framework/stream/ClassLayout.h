#pragma once

#include <zep/Export.h>

#include <QByteArray>
#include <QMetaEnum>
#include <QMetaProperty>

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEP {

class TCollectionItem;
class TComponent;
class TFiler;
class TPersistent;

/// What a stream makes of a published property.
enum class TFieldKind : unsigned char {
    Unknown,
    Boolean,
    Integer,
    Color,
    Enumeration,
    Set,
    Single,
    Double,
    String,
    Reference,
    SubObject,
    Collection
};

/// An object with published properties, whatever its kind.
struct ZEP_CORE_EXPORT TInstance {
    explicit TInstance(TComponent* component);
    explicit TInstance(TPersistent* persistent);
    explicit TInstance(TCollectionItem* item);

    /// Has the object define what it stores by hand.
    void DefineProperties(TFiler& filer) const;

    const QMetaObject* Type;
    QObject* Address; ///< as the meta-object's calls take it: only components are QObjects

private:
    TComponent* m_component = nullptr;
    TPersistent* m_persistent = nullptr;
};

/// A published property. The type of a value must fit the kind; reading and writing then cost a
/// call through a pointer.
class ZEP_CORE_EXPORT TField {
public:
    TField(const QMetaObject& type, const QMetaProperty& property);

    [[nodiscard]] std::string_view Name() const {
        return {m_name.constData(), static_cast<std::size_t>(m_name.size())};
    }
    [[nodiscard]] TFieldKind Kind() const { return m_kind; }
    /// Streams hold it: it is not left out by its declaration, and reading could set it.
    [[nodiscard]] bool IsStored() const { return m_stored; }
    /// Of a boolean, an integer, a colour, an enumeration or a set; none where none is declared.
    [[nodiscard]] const std::optional<qint64>& Default() const { return m_default; }
    /// The names of an enumeration's or set's values.
    [[nodiscard]] const QMetaEnum& Names() const { return m_names; }
    /// The value of that name, compared without case.
    [[nodiscard]] std::optional<qint64> ValueOf(std::string_view name) const;
    /// The class that a reference may refer to.
    [[nodiscard]] const QMetaObject* Type() const { return m_type; }

    /// \name Values, each for the kinds that it names
    /// @{
    [[nodiscard]] qint64 Ordinal(const TInstance& instance) const;
    /// \return false, and changes nothing, where the property's type cannot hold the value
    [[nodiscard]] bool SetOrdinal(const TInstance& instance, qint64 value) const;
    [[nodiscard]] double Float(const TInstance& instance) const;
    void SetFloat(const TInstance& instance, double value) const;
    [[nodiscard]] QString String(const TInstance& instance) const;
    void SetString(const TInstance& instance, QString value) const;
    [[nodiscard]] QObject* Reference(const TInstance& instance) const;
    void SetReference(const TInstance& instance, QObject* value) const;
    /// Also a collection.
    [[nodiscard]] TPersistent* SubObject(const TInstance& instance) const;
    /// @}

private:
    void Get(const TInstance& instance, void* value) const {
        m_call(instance.Address, QMetaObject::ReadProperty, m_index, &value);
    }
    void Set(const TInstance& instance, void* value) const {
        m_call(instance.Address, QMetaObject::WriteProperty, m_index, &value);
    }

    QByteArray m_name;
    QMetaEnum m_names;
    const QMetaObject* m_type = nullptr;
    void (*m_call)(QObject*, QMetaObject::Call, int, void**) = nullptr;
    std::optional<qint64> m_default;
    int m_index = 0;
    TFieldKind m_kind = TFieldKind::Unknown;
    unsigned char m_size = 0;
    bool m_unsigned = false;
    bool m_stored = false;
};

/// The published properties of a class as streams see them.
class ZEP_CORE_EXPORT TClassLayout {
public:
    explicit TClassLayout(const QMetaObject& type);
    /// Made once for each class.
    [[nodiscard]] static const TClassLayout& Of(const QMetaObject& type);

    [[nodiscard]] const std::vector<TField>& Fields() const { return m_fields; }
    /// The field of that name, compared without case; null if there is none.
    [[nodiscard]] const TField* Find(std::string_view name) const;

private:
    std::vector<TField> m_fields;
};

/// Streams do not hold a number that is 0: before an object is read, its stored numbers become 0,
/// also those of its parts.
class ZEP_CORE_EXPORT TNumberPresets {
public:
    /// Notes which numbers of its class are not 0 at first.
    /// \param made  as its constructor leaves it
    static void Learn(const TInstance& made);
    /// To one that is as `Learn` knows its class.
    static void Apply(const TInstance& made);
    /// Both at once, to one that has just been made.
    static void ApplyToNew(const TInstance& made);
    /// To one in any state: all of its numbers are looked at.
    static void ApplyToUsed(const TInstance& instance);

private:
    using TPath = std::vector<const TField*>; ///< the parts that lead to a number, and that

    [[nodiscard]] static std::unordered_map<const QMetaObject*, std::vector<TPath>>& Known();
    [[nodiscard]] static std::vector<TPath> Find(const TInstance& instance);
    static void Find(const TInstance& instance, TPath& path, std::vector<TPath>& found);
    static void Clear(TInstance instance, const TPath& path);
};

} // namespace ZEP
