#include <zep/appearance/materials/MaterialLibrary.h>

#include <zep/framework/Registry.h>

namespace ZEP {

namespace {

const TRegisterClass<TZEPMaterialLibrary> RegisteredMaterialLibrary;

} // namespace

TZEPMaterialCI::TZEPMaterialCI() : m_material(Notify<&TZEPMaterialCI::Changed>(this)) {}

TZEPMaterialCI::TZEPMaterialCI(const TZEPMaterialCI& other) : TZEPMaterialCI() {
    *this = other;
}

TZEPMaterialCI& TZEPMaterialCI::operator=(const TZEPMaterialCI& other) {
    if (this == &other) return *this;
    TZEPCollectionItem::operator=(other);
    m_material.Assign(&other.m_material);
    m_ident = other.m_ident;
    return *this;
}

void TZEPMaterialCI::Changed(TObject*) {
    Invalidate();
}

// Not the library but its owner owns the collection: what searches an item's form by climbing the
// owners starts there.
TZEPMaterialLibrary::TZEPMaterialLibrary(TComponent* owner)
    : TComponent(owner), m_materials(owner) {}

void TZEPMaterialLibrary::SetParentComponent(TComponent* parent) {
    if (parent && (Name().isEmpty() || !parent->FindComponent(Name())))
        parent->InsertComponent(this);
}

} // namespace ZEP
