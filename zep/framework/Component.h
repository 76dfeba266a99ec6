#pragma once

#include <zep/Export.h>
#include <zep/framework/Notify.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <new>

namespace ZEP {

class TFiler;
class TReader;
class TWriter;

enum TOperation { opInsert, opRemove };

/// Owners of owners, and parents of parents, that a component can have, so that whoever walks them
/// may recurse. As deep as streams go.
inline constexpr int DeepestNesting = 1000;

/// A component: it has an owner that frees it, a name unique among the owner's components, and
/// tells those who asked for it when it goes away. Creating, removing and freeing cost the same
/// however many components an owner has.
class ZEP_CORE_EXPORT TComponent : public QObject, public TZEPCollectionUser {
    Q_OBJECT
    Q_PROPERTY(QString Name READ Name WRITE SetName STORED false)
    Q_PROPERTY(int Tag READ Tag WRITE SetTag)
    Q_CLASSINFO("Tag", "0")
public:
    /// \param owner  frees this component when it goes away itself; may be null
    explicit TComponent(TComponent* owner = nullptr);
    ~TComponent() override;
    /// Freeing a component that goes already does nothing: who hears that it goes may free it, its
    /// owner or its parent.
    static void operator delete(TComponent* component, std::destroying_delete_t);
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void* operator new(std::size_t size, void* place) { return ::operator new(size, place); }
    static void operator delete(void* memory) { ::operator delete(memory); }
    static void operator delete(void* memory, void* place) { ::operator delete(memory, place); }

    /// The class name without its namespace: "TZEPLine".
    [[nodiscard]] QString ClassName() const;

    [[nodiscard]] QString Name() const { return objectName(); }
    /// An empty name or a letter or underscore followed by letters, digits and underscores.
    /// Raises `Exception` for any other, and where the owner has a component of that name (names
    /// compare without case); the old name then stays.
    virtual void SetName(const QString& name);

    [[nodiscard]] int Tag() const;
    /// A number for the host's own use.
    void SetTag(int tag);

    [[nodiscard]] TComponent* Owner() const { return m_owner; }
    [[nodiscard]] int ComponentCount() const;
    /// Component `index` in no stated order, 0 to `ComponentCount() - 1`; `Exception` outside.
    [[nodiscard]] TComponent* Components(int index) const;
    /// The owned component of that name, compared without case; null if there is none.
    [[nodiscard]] TComponent* FindComponent(const QString& name) const;
    /// Takes over ownership from the former owner. Raises `Exception` if the name is taken here,
    /// for a component that owns this one, and beyond `DeepestNesting`.
    void InsertComponent(TComponent* component);
    /// Gives up ownership; nothing for a component that is not owned.
    void RemoveComponent(TComponent* component);

    /// Asks to be told (`Notification` with `opRemove`) when this component is destroyed. Both
    /// sides forget it when either goes away.
    void FreeNotification(TComponent* listener);
    void RemoveFreeNotification(TComponent* listener);

    /// It goes: its destructor runs, or that of one that frees it.
    [[nodiscard]] bool IsDestroying() const { return m_destroying; }

    /// In a form designer: no animation, no user events.
    [[nodiscard]] bool IsDesigning() const { return m_designing; }
    void SetDesigning(bool designing) { m_designing = designing; }

    /// \name What it is drawn from has changed; nothing here
    /// @{
    [[nodiscard]] bool WantsInvalidation() const override { return false; }
    void Invalidate(TObject* sender) override { static_cast<void>(sender); }
    /// @}

    /// Copies the values of `source`; the base takes no source and raises `Exception`.
    virtual void Assign(const TComponent* source);

    /// \name What the component stream asks
    /// @{
    virtual void DefineProperties(TFiler& filer);
    virtual void GetChildren(const std::function<void(TComponent*)>& proc, TComponent* root);
    [[nodiscard]] virtual bool HasParent() const { return false; }
    [[nodiscard]] virtual TComponent* GetParentComponent() const { return nullptr; }
    virtual void SetParentComponent(TComponent* parent);
    /// Reads the properties and the children of this component. A descendant first sets what must
    /// hold where the stream says nothing, and then calls the inherited operation.
    virtual void ReadState(TReader& reader);
    virtual void WriteState(TWriter& writer);
    /// @}

Q_SIGNALS:
    /// A stream that was read into this component held components of classes that are not
    /// registered, which were passed over with all below them. Told once, as the last thing that
    /// the reading does: a slot may free this component.
    /// \param classes  their names, each once, in alphabetical order
    /// \param count    of the components that were passed over for that
    void ClassesUnknown(const QStringList& classes, qint64 count);

protected:
    /// A component that was asked about goes away (`opRemove`). Descendants clear their reference
    /// and call the inherited operation.
    virtual void Notification(TComponent* component, TOperation operation);
    /// Frees the owned components, last inserted first; a destructor that must see them gone
    /// before its own members calls it early.
    void DestroyComponents();
    /// For a destructor that tells others, before it does: a component on the stack or within
    /// another object is not freed by `delete`.
    void BeginDestroying() { m_destroying = true; }

private:
    struct Relations;
    Relations& Related();
    void TellListeners();
    void CheckOwnership(TComponent& component) const;
    [[nodiscard]] int KeptDepthBelow() const;
    [[nodiscard]] int DepthBelow() const;

    TComponent* m_owner = nullptr;
    std::unique_ptr<Relations> m_relations;
    int m_ownerIndex = -1;
    bool m_designing = false;
    bool m_destroying = false;
};

} // namespace ZEP
