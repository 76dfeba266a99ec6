#include <zep/scene/XForm.h>

#include <zep/framework/Exception.h>
#include <zep/framework/LookOnly.h>
#include <zep/framework/Property.h>
#include <zep/scene/Frame.h>
#include <zep/scene/GLState.h>

#include <GL/gl.h>
#include <QtEndian>

namespace ZEP {

namespace {

/// Of at least 32 places; the others are for what objects push.
constexpr int TransformsOnStack = 16;

} // namespace

TZEPXForm::TZEPXForm(TNotifyEvent onChange, TComponent*)
    : m_onChange(onChange), m_translate(Notify<&TZEPXForm::ChangeData>(this)),
      m_scale(Notify<&TZEPXForm::ChangeData>(this)) {}

const TGLMatrixd4& TZEPXForm::ValueOf(const TRareMatrix& matrix) {
    return matrix ? *matrix : idd;
}

void TZEPXForm::SetValue(TRareMatrix& matrix, const TGLMatrixd4& value) {
    matrix = IsIdentityd(value) ? nullptr : std::make_unique<TGLMatrixd4>(value);
}

TGLMatrixd4& TZEPXForm::Extra() {
    TRareMatrix& extra = Rare().Extra;
    if (!extra) extra = std::make_unique<TGLMatrixd4>(idd);
    return *extra;
}

void TZEPXForm::TRare::Take(const TRare& other) {
    Center.SetDataQuietly(other.Center.Data());
    Rotate.SetDataQuietly(other.Rotate.Data());
    SetValue(Base, ValueOf(other.Base));
    SetValue(Extra, ValueOf(other.Extra));
}

bool TZEPXForm::TRare::IsSame(const TRare& other) const {
    return Center.Data() == other.Center.Data() && Rotate.Data() == other.Rotate.Data() &&
           ValueOf(Base) == ValueOf(other.Base) && ValueOf(Extra) == ValueOf(other.Extra);
}

TZEPXForm::TRare& TZEPXForm::Usual() {
    static TRare usual({});
    return usual;
}

TZEPXForm::TRare& TZEPXForm::Rare() {
    if (!m_rare) m_rare = std::make_unique<TRare>(Notify<&TZEPXForm::ChangeData>(this));
    return *m_rare;
}

void TZEPXForm::DropRare() {
    if (m_rare && m_rare->IsSame(Usual())) m_rare.reset();
}

TZEPVertex3* TZEPXForm::Center() {
    return !m_rare && TLookOnly::IsActive() ? &Usual().Center : &Rare().Center;
}

TZEPVertex3* TZEPXForm::Rotate() {
    return !m_rare && TLookOnly::IsActive() ? &Usual().Rotate : &Rare().Rotate;
}

void TZEPXForm::SetRotateAroundCenter(bool value) {
    if (Change(m_rotateAroundCenter, value)) ChangeData(this);
}

void TZEPXForm::Clear() {
    m_composed = idd;
    for (TZEPVertex3* vector : {&m_translate, &m_scale}) vector->SetDataQuietly(zero3d);
    if (!m_rare) return;
    m_rare->Base.reset();
    m_rare->Extra.reset();
    for (TZEPVertex3* vector : {&m_rare->Center, &m_rare->Rotate}) vector->SetDataQuietly(zero3d);
}

void TZEPXForm::Convert(const TGLArrayd3& v, TGLArrayd3& r) const {
    r = v;
    Xformd(m_composed, r);
}

void TZEPXForm::Push() const {
    if (m_active) glPushMatrix();
}

void TZEPXForm::Apply() const {
    if (m_active) glMultMatrixd(m_composed.front().data());
}

void TZEPXForm::Pop() const {
    if (m_active) glPopMatrix();
}

void TZEPXForm::mId(const TGLMatrixd4& m) {
    SetValue(Rare().Base, m);
    ChangeData(this);
}

void TZEPXForm::mScale(double x, double y, double z) {
    Scaled(x, y, z, Extra());
    ChangeData(this);
}

void TZEPXForm::mTranslate(double x, double y, double z) {
    Translated(x, y, z, Extra());
    ChangeData(this);
}

void TZEPXForm::mRotate(double cx, double cy, double cz, double ax, double ay, double az,
                        double angle) {
    TGLMatrixd4& extra = Extra();
    Translated(cx, cy, cz, extra);
    Rotated(angle, ax, ay, az, extra);
    Translated(-cx, -cy, -cz, extra);
    ChangeData(this);
}

void TZEPXForm::ChangeData(TObject* sender) {
    ++m_changeCounter;
    Invalidate(sender);
}

void TZEPXForm::Invalidate(TObject* sender) {
    PrepareMatrix();
    m_onChange(sender);
}

void TZEPXForm::PrepareMatrix() {
    const TRare& rare = Known();
    const auto [cx, cy, cz] = rare.Center.Data();
    m_composed = ValueOf(rare.Base);
    Translatedv(m_rotateAroundCenter ? rare.Center.Data() : m_translate.Data(), m_composed);
    Rotated(rare.Rotate.X(), 1, 0, 0, m_composed);
    Rotated(rare.Rotate.Y(), 0, 1, 0, m_composed);
    Rotated(rare.Rotate.Z(), 0, 0, 1, m_composed);
    if (m_rotateAroundCenter) {
        Translated(-cx, -cy, -cz, m_composed);
        Translatedv(m_translate.Data(), m_composed);
    }
    Scaledv(m_scale.Data(), m_composed);
    if (rare.Extra) MultMatrixd(m_composed, *rare.Extra, m_composed);
    m_active = !IsIdentityd(m_composed);
}

bool TZEPXForm::HasValuesOf(const TZEPXForm& other) const {
    return m_translate.Data() == other.m_translate.Data() &&
           m_scale.Data() == other.m_scale.Data() && Known().IsSame(other.Known()) &&
           m_rotateAroundCenter == other.m_rotateAroundCenter;
}

void TZEPXForm::Assign(const TPersistent* source) {
    const auto* other = dynamic_cast<const TZEPXForm*>(source);
    if (!other) return TPersistent::Assign(source);
    m_translate.SetDataQuietly(other->m_translate.Data());
    m_scale.SetDataQuietly(other->m_scale.Data());
    if (m_rare || other->m_rare) Rare().Take(other->Known());
    m_rotateAroundCenter = other->m_rotateAroundCenter;
    ChangeData(this);
}

void TZEPXForm::DefineProperties(TFiler& filer) {
    TPersistent::DefineProperties(filer);
    filer.DefineBinaryProperty(
        "Matrix", [this](const QByteArray& stream) { LoadMatrix(stream); },
        [this] { return StoreMatrix(); }, !IsIdentityd(ValueOf(Known().Extra)));
}

void TZEPXForm::LoadMatrix(const QByteArray& stream) {
    if (stream.size() < static_cast<qsizetype>(sizeof(TGLMatrixd4)))
        throw Exception(QStringLiteral("Stream read error"));
    qFromLittleEndian<double>(stream.constData(), 16, Extra().front().data());
    Invalidate(this);
}

QByteArray TZEPXForm::StoreMatrix() const {
    QByteArray stream(sizeof(TGLMatrixd4), Qt::Uninitialized);
    qToLittleEndian<double>(ValueOf(Known().Extra).front().data(), 16, stream.data());
    return stream;
}

TZEPXFormScope::TZEPXFormScope(TZEPFrame& frame, const TZEPXForm* xform)
    : m_frame(frame), m_pushed(xform && xform->IsActive()) {
    if (!m_pushed) return;
    if (++frame.Transforms > TransformsOnStack)
        m_outer = LoadedMatrix(GL_MODELVIEW_MATRIX);
    else
        xform->Push();
    xform->Apply();
    if (TZEPViewFrame::Bounds(frame)) m_view.emplace(frame, xform->GetMatrix());
}

TZEPXFormScope::~TZEPXFormScope() {
    if (!m_pushed) return;
    --m_frame.Transforms;
    if (m_outer)
        glLoadMatrixd((*m_outer)[0].data());
    else
        glPopMatrix();
}

} // namespace ZEP
