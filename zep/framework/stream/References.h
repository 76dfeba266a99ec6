#pragma once

#include <zep/Export.h>
#include <zep/framework/Component.h>
#include <zep/framework/stream/ClassLayout.h>

#include <QHash>
#include <QPointer>

#include <functional>
#include <vector>

namespace ZEP {

class TCollection;

/// An item that is read. Who hears of that may take it out of its collection, or free both.
class ZEP_CORE_EXPORT TItemPlace {
public:
    /// Of the last item.
    explicit TItemPlace(TCollection& collection);
    /// As long as the collection exists.
    [[nodiscard]] bool IsThere() const;
    [[nodiscard]] TCollectionItem* Item() const { return m_item; }

private:
    TCollection* m_collection;
    TCollectionItem* m_item;
    int m_index;
};

/// References between components, which a stream stores as names: they are gathered while it is
/// read and set at its end.
class ZEP_CORE_EXPORT TReferences {
public:
    /// The stream calls this component by that name; the first one keeps a name.
    void AddComponent(TComponent& component, const QString& name);
    /// `field` of `instance`, which is part of `holder`, and of its items from the outermost in,
    /// refers to the component of that name.
    void Add(const TField& field, const TInstance& instance, TComponent& holder,
             const std::vector<TItemPlace>& items, std::string_view name);
    /// Sets them all, to components of the stream first, then to those of the owners of `root` and
    /// of its tree. A name that is not found leaves its reference empty; what was freed meanwhile
    /// is passed over. \param error  called for a component of a wrong class and for what a setter
    /// raises
    void Resolve(TComponent& root, const std::function<void(const QString&)>& error);
    void Clear();

private:
    using TNames = QHash<QString, QPointer<TComponent>>; // lower case

    struct TPending {
        const TField* Field;
        TInstance Instance;
        QPointer<TComponent> Holder;
        std::vector<TItemPlace> Items;
        QString Name;

        [[nodiscard]] bool IsThere() const;
    };

    [[nodiscard]] TComponent* Find(TComponent& root, const QString& name);
    [[nodiscard]] TComponent* FindInTree(TComponent& root, const QString& name);

    std::vector<TPending> m_pending;
    TNames m_names;
    TNames m_tree; // made when first needed
    bool m_hasTree = false;
};

} // namespace ZEP
