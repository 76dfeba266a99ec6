#pragma once

#include <zep/Export.h>
#include <zep/framework/ChunkedList.h>
#include <zep/framework/Collection.h>

#include <concepts>
#include <vector>

namespace ZEP {

/// A collection that scene objects may share: every change invalidates all objects registered
/// with it. Whoever registers an object unregisters it before it goes away.
class ZEP_CORE_EXPORT TZEPCollection : public TCollection {
    Q_GADGET
public:
    using TCollection::TCollection;
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    /// Lists an object once, however often it is registered; nothing for null.
    void RegisterObject(TZEPCollectionUser* object);
    void UnregisterObject(TZEPCollectionUser* object);

    /// Invalidates the registered objects, in the order of registration, with this collection as
    /// the sender.
    virtual void Invalidate(TObject* sender);

    /// Between the two, changes are gathered; the last `EndUpdate` invalidates once if there were
    /// any. Brackets nest.
    void BeginUpdate() override { ++m_updateLevel; }
    void EndUpdate() override;

private:
    std::vector<TZEPCollectionUser*> m_users;
    int m_updateLevel = 0;
    bool m_changed = false;
};

/// An item whose setters invalidate the collection that it is in.
class ZEP_CORE_EXPORT TZEPCollectionItem : public TCollectionItem {
    Q_GADGET
public:
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

protected:
    void Invalidate();
};

/// A collection of items of one class, each 16 bytes beside its data. Access by index costs the
/// same everywhere; adding leaves the addresses of the others as they are.
template <std::derived_from<TZEPCollectionItem> TItem>
class TZEPCollectionOf final : public TZEPCollection {
public:
    using TZEPCollection::TZEPCollection;

    [[nodiscard]] const QMetaObject* ItemMetaObject() const override {
        return &TItem::staticMetaObject;
    }
    [[nodiscard]] std::size_t ItemBytes() const override { return sizeof(TItem); }
    [[nodiscard]] int Count() const override { return static_cast<int>(m_items.Size()); }
    [[nodiscard]] TItem* GetItem(int index) const override {
        CheckIndex(index);
        return &Stored(index);
    }
    [[nodiscard]] TItem* Item(int index) const { return GetItem(index); }
    /// Item `index` without a check, for loops over 0 .. Count() - 1.
    [[nodiscard]] TItem& operator[](int index) { return Stored(index); }
    [[nodiscard]] const TItem& operator[](int index) const { return Stored(index); }

    TItem* Add() override {
        TItem& item = m_items.Append();
        Adopt(item);
        Invalidate(this);
        return &item;
    }
    /// Appends `count` items and tells it once. `fill` is called with each, which nobody watches
    /// yet, and its number of `count`.
    template <class Fill>
    void AddEach(std::size_t count, Fill&& fill) {
        if (count == 0) return;
        m_items.AppendEach(count, [&](TItem& item, std::size_t number) {
            fill(item, number);
            Adopt(item);
        });
        Invalidate(this);
    }
    void Delete(int index) override {
        CheckIndex(index);
        m_items.Remove(static_cast<std::size_t>(index));
        Invalidate(this);
    }
    void Clear() override {
        if (Count() == 0) return;
        m_items.Clear();
        Invalidate(this);
    }

    /// Takes copies of the items of another collection of the same class.
    void Assign(const TPersistent* source) override {
        if (source == this) return;
        const auto* other = dynamic_cast<const TZEPCollectionOf*>(source);
        if (!other) return TZEPCollection::Assign(source);
        BeginUpdate();
        Clear();
        for (int i = 0; i < other->Count(); ++i) {
            TItem& item = *Add();
            item = (*other)[i];
            Adopt(item);
        }
        EndUpdate();
    }

private:
    [[nodiscard]] TItem& Stored(int index) const {
        return m_items[static_cast<std::size_t>(index)];
    }

    TChunkedList<TItem> m_items;
};

} // namespace ZEP
