#pragma once

#include <zep/Export.h>
#include <zep/framework/Persistent.h>

namespace ZEP {

class TCollection;

/// An item of a collection: a gadget, 16 bytes beside its data. Descendants are declared with
/// `Q_GADGET`, override `MetaObject()`, can be default-constructed and copied.
class ZEP_CORE_EXPORT TCollectionItem : public TObject {
    Q_GADGET
public:
    [[nodiscard]] virtual const QMetaObject* MetaObject() const { return &staticMetaObject; }

    [[nodiscard]] TCollection* Collection() const { return m_collection; }
    /// Position in the collection; -1 outside of one. Linear in the position.
    [[nodiscard]] int Index() const;
    /// What a list of items shows for this one; the class name in the base.
    [[nodiscard]] virtual QString GetDisplayName() const;

private:
    friend class TCollection;
    TCollection* m_collection = nullptr;
};

/// An ordered list of items of one class that knows its owner. Descendants store the items; what
/// works on any collection works on this.
class ZEP_CORE_EXPORT TCollection : public TPersistent {
    Q_GADGET
public:
    explicit TCollection(TObject* owner) : m_owner(owner) {}
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] TObject* Owner() const { return m_owner; }
    [[nodiscard]] virtual const QMetaObject* ItemMetaObject() const = 0;

    /// Memory of an item, without what its values hold beside it.
    [[nodiscard]] virtual std::size_t ItemBytes() const = 0;

    [[nodiscard]] virtual int Count() const = 0;
    /// Item `index`; raises `Exception` outside 0 .. Count() - 1.
    [[nodiscard]] virtual TCollectionItem* GetItem(int index) const = 0;
    /// Appends a new item. Pointers to the other items stay valid.
    virtual TCollectionItem* Add() = 0;
    /// Removes item `index`, raises `Exception` outside the range. Pointers to the items are no
    /// longer valid.
    virtual void Delete(int index) = 0;
    virtual void Clear() = 0;

    /// Between the two, a collection that tells of its changes gathers them. Brackets nest.
    virtual void BeginUpdate() {}
    virtual void EndUpdate() {}

protected:
    /// Raises `Exception` outside 0 .. Count() - 1.
    void CheckIndex(int index) const;
    /// Makes this the collection that `item` tells about its changes.
    void Adopt(TCollectionItem& item) { item.m_collection = this; }

private:
    TObject* m_owner;
};

} // namespace ZEP
