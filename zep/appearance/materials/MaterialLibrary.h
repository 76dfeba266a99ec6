#pragma once

#include <zep/Export.h>
#include <zep/appearance/materials/Material.h>
#include <zep/framework/Component.h>
#include <zep/framework/SharedCollection.h>

namespace ZEP {

/// A named material of a library.
class ZEP_CORE_EXPORT TZEPMaterialCI : public TZEPCollectionItem {
    Q_GADGET
    Q_PROPERTY(TZEPMaterial* Material READ Material)
    Q_PROPERTY(QString Ident READ Ident WRITE SetIdent)
public:
    TZEPMaterialCI();
    /// Copies the values; the copy has a material of its own.
    TZEPMaterialCI(const TZEPMaterialCI& other);
    TZEPMaterialCI& operator=(const TZEPMaterialCI& other);
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }

    [[nodiscard]] TZEPMaterial* Material() { return &m_material; }
    /// The name under which readers of files find the material; may be empty or not unique.
    [[nodiscard]] QString Ident() const { return m_ident; }
    void SetIdent(const QString& value) { m_ident = value; }

    /// Invalidates the collection with this item as the sender.
    void Changed(TObject* sender);

private:
    TZEPMaterial m_material;
    QString m_ident;
};

/// Materials that the objects of a scene share, chosen by their index. Every change of one
/// invalidates the scenes that use the library.
class ZEP_CORE_EXPORT TZEPMaterialLibrary : public TComponent {
    Q_OBJECT
    Q_PROPERTY(TZEPCollection* Materials READ Materials)
public:
    explicit TZEPMaterialLibrary(TComponent* owner = nullptr);

    /// The materials; as their owner the collection names the library's owner.
    [[nodiscard]] TZEPCollectionOf<TZEPMaterialCI>* Materials() { return &m_materials; }

    /// A library stands below its owner in a stream, and comes to belong to whom it is read below,
    /// unless that has another component of its name.
    void SetParentComponent(TComponent* parent) override;

private:
    TZEPCollectionOf<TZEPMaterialCI> m_materials;
};

} // namespace ZEP
