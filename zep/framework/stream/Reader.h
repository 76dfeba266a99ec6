#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>
#include <zep/framework/ReadBudget.h>
#include <zep/framework/stream/References.h>
#include <zep/framework/stream/Token.h>

#include <QPointer>

#include <functional>
#include <map>
#include <unordered_set>

namespace ZEP {

class TCollection;

/// Reads a stream into a component: its properties, and its children, which are created by the
/// names of their classes. The root owns what is created.
///
/// Faults that leave the structure whole (a class or a property that is not known, a value that
/// does not fit, what its size does not allow) go to `OnError`; a broken structure raises
/// `TStreamError`.
class ZEP_CORE_EXPORT TReader : public TFiler {
public:
    /// \param message  what is wrong, with its place in the stream
    /// \param handled  true: the faulty item is passed over and reading goes on; it starts false,
    ///                 which raises `TStreamError`
    using TErrorEvent = std::function<void(TReader& reader, const QString& message, bool& handled)>;

    /// \param source  must outlive this
    explicit TReader(TTokenSource& source);

    TErrorEvent OnError;
    /// Items that were passed over.
    [[nodiscard]] qint64 ErrorCount() const { return m_errorCount; }
    /// The message of the first of them, with its place.
    [[nodiscard]] const QString& FirstError() const { return m_firstError; }
    /// Where the first of them stands.
    [[nodiscard]] const TFilePlace& FirstErrorPlace() const { return m_firstErrorPlace; }
    /// What may be made of the stream; pictures, components and items take their part of it.
    [[nodiscard]] TReadBudget* Budget() override { return &m_budget; }

    /// Raises `TStreamError` where the structure is broken, and touches no component.
    /// \return how many components stand within each other, the outermost one included
    int CheckStructure();
    /// Reads the stream's outermost component into `root`, whatever its class, and renames it where
    /// its owner has no other of that name. References are set at the end; then the root tells of
    /// unknown classes, and a slot may free it.
    void ReadRootComponent(TComponent& root);

    /// \name For `TComponent::ReadState`
    /// @{
    /// The properties of a component, which then joins its parent, and its children unless they are
    /// ignored.
    void ReadData(TComponent& component);
    [[nodiscard]] bool IgnoreChildren() const { return m_ignoreChildren; }
    void SetIgnoreChildren(bool ignore) { m_ignoreChildren = ignore; }
    void DefineBinaryProperty(const char* name, const std::function<void(const QByteArray&)>& read,
                              const std::function<QByteArray()>& write, bool hasData) override;
    /// @}

private:
    /// The component that is read was freed by whoever heard of it, or of a child.
    struct TGone {};

    const TToken& Next();
    void Skip();
    void Error(const QString& message);
    void Expect(const char* what);

    void ReadChild(TComponent& parent);
    void LeaveTo(int depth);
    [[nodiscard]] bool Fits(std::size_t bytes, const char* what);
    void TellUnknown();
    void NameChild(TComponent& child, const QString& name);
    void ReadProperty(TInstance instance);
    void ReadDefined(const TInstance& instance, std::string_view name);
    void ReadValue(const TField& field, const TInstance& instance);
    void ReadOrdinal(const TField& field, const TInstance& instance);
    void ReadFloat(const TField& field, const TInstance& instance);
    void ReadSet(const TField& field, const TInstance& instance);
    void ReadReference(const TField& field, const TInstance& instance);
    void ReadCollection(TCollection& collection);
    void ReadItem(TCollection& collection);
    /// What is read into: nobody who heard of it has freed it.
    [[nodiscard]] bool IsThere() const;

    TTokenSource& m_source;
    const TToken* m_token = nullptr; // the current one
    TReferences m_references;
    std::unordered_set<const TCollection*> m_filled; // collections of the current component
    std::vector<TItemPlace> m_items;                 // that are read, from the outermost in
    int m_depth = 0; // components, collections and the like that are open
    QPointer<TComponent> m_root;
    QPointer<TComponent> m_component; // whose properties are read
    TComponent* m_parent = nullptr;   // that it joins behind them
    std::string_view m_definedName;   // of the binary property that is looked for
    bool m_isDefined = false;
    bool m_ignoreChildren = false;
    qint64 m_errorCount = 0;
    QString m_firstError;
    TFilePlace m_firstErrorPlace;
    TReadBudget m_budget;
    std::map<QString, qint64> m_unknownClasses; // with how often
};

} // namespace ZEP
