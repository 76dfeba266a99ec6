#include <zep/appearance/materials/Material.h>
#include <zep/appearance/materials/SharedMaterials.h>
#include <zep/framework/LookOnly.h>
#include <zep/framework/Watch.h>
#include <zep/framework/stream/Reader.h>
#include <zep/framework/stream/StreamFile.h>
#include <zep/framework/stream/Writer.h>
#include <zep/scene/Object.h>
#include <zep/scene/XForm.h>

namespace ZEP {

namespace {

/// Raises `Exception` where the levels of a tree in a stream, its root taken for `object`, are more
/// than fit there: before anything is cleared.
void CheckLevels(const TZEPObject& object, int levels) {
    std::vector<TZEPObject*> parents;
    object.ListParents(parents);
    if (static_cast<int>(parents.size()) + levels <= DeepestNesting + 1) return;
    throw Exception(
        QStringLiteral("Objects would be nested deeper than %1 levels").arg(DeepestNesting));
}

} // namespace

void TZEPObject::SaveToWriter(TWriter& writer) {
    writer.WriteRootComponent(*this);
}

void TZEPObject::LoadFromReader(TReader& reader) {
    const TZEPWatch alive(this); // listeners hear of what goes and comes
    BeginUpdate();
    CheckLevels(*this, reader.CheckStructure());
    Clear();
    if (!alive) return;
    reader.OnError = [this](TReader& source, const QString& message, bool& handled) {
        OnReadError(source, message, handled);
    };
    const QString name = Name();
    reader.ReadRootComponent(*this);
    if (alive) SetName(name);
    if (alive) EndUpdate(false);
}

void TZEPObject::OnReadError(TReader&, const QString&, bool& handled) {
    handled = true;
}

void TZEPObject::SaveAs(const QString& fileName, TStreamForm form) {
    SaveStreamFile(fileName, form, [this](TTokenSink& sink) {
        TWriter writer(sink);
        SaveToWriter(writer);
    });
}

void TZEPObject::LoadAs(const QString& fileName, TStreamForm form) {
    TStreamFile(fileName, form).Read([this](TTokenSource& source) {
        TReader reader(source);
        LoadFromReader(reader);
    });
}

void TZEPObject::SaveToFile(const QString& fileName) {
    SaveAs(fileName, TStreamForm::Binary);
}

void TZEPObject::LoadFromFile(const QString& fileName) {
    LoadAs(fileName, TStreamForm::Binary);
}

void TZEPObject::SaveToTextFile(const QString& fileName) {
    SaveAs(fileName, TStreamForm::Text);
}

void TZEPObject::LoadFromTextFile(const QString& fileName) {
    LoadAs(fileName, TStreamForm::Text);
}

void TZEPObject::WriteState(TWriter& writer) {
    writer.SetIgnoreChildren(false);
    TComponent::WriteState(writer);
}

void TZEPObject::ReadState(TReader& reader) {
    const bool hadTransform = m_xform != nullptr;
    const bool hadMaterial = HasOwnMaterial();
    XForm()->Clear();
    reader.SetIgnoreChildren(false);
    TComponent::ReadState(reader);
    XForm()->PrepareMatrix();
    if (!hadTransform) DropInitialTransform();
    if (!hadMaterial && HasOwnMaterial()) DropInitialMaterial();
    if (m_extras && m_extras->AreInitial()) m_extras.reset();
}

// What reading made for an object of a million, and what is as it would be made again when asked
// for, goes away again.
void TZEPObject::DropInitialTransform() {
    std::unique_ptr<TZEPXForm> own = std::move(m_xform);
    const TLookOnly look;
    if (own->HasValuesOf(*XForm())) return;
    own->DropRare();
    m_xform = std::move(own);
}

void TZEPObject::DropInitialMaterial() {
    std::unique_ptr<TZEPMaterial> own = std::move(m_extras->Material);
    const TLookOnly look;
    m_lineTransparency = own->Transparency() == LineTransparency;
    m_hasOwnColor = m_hasOwnColor || own->FrontFace()->Ambient() == m_color;
    if (!own->HasValuesOf(*Material())) m_extras->Material = std::move(own);
}

} // namespace ZEP
