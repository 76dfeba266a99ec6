#include <zep/scene/XForm.h>

#include <zep/framework/Exception.h>
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
      m_center(Notify<&TZEPXForm::ChangeData>(this)), m_scale(Notify<&TZEPXForm::ChangeData>(this)),
      m_rotate(Notify<&TZEPXForm::ChangeData>(this)) {
    Clear();
}

const TGLMatrixd4& TZEPXForm::ValueOf(const TRareMatrix& matrix) {
    return matrix ? *matrix : idd;
}

void TZEPXForm::SetValue(TRareMatrix& matrix, const TGLMatrixd4& value) {
    matrix = IsIdentityd(value) ? nullptr : std::make_unique<TGLMatrixd4>(value);
}

TGLMatrixd4& TZEPXForm::Extra() {
    if (!m_extra) m_extra = std::make_unique<TGLMatrixd4>(idd);
    return *m_extra;
}

void TZEPXForm::SetRotateAroundCenter(bool value) {
    if (Change(m_rotateAroundCenter, value)) ChangeData(this);
}

void TZEPXForm::Clear() {
    m_base.reset();
    m_extra.reset();
    m_composed = idd;
    for (TZEPVertex3* vector : {&m_translate, &m_center, &m_scale, &m_rotate})
        vector->SetDataQuietly(zero3d);
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
    SetValue(m_base, m);
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
    Translated(cx, cy, cz, Extra());
    Rotated(angle, ax, ay, az, Extra());
    Translated(-cx, -cy, -cz, Extra());
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
    const auto [cx, cy, cz] = m_center.Data();
    m_composed = ValueOf(m_base);
    Translatedv(m_rotateAroundCenter ? m_center.Data() : m_translate.Data(), m_composed);
    Rotated(m_rotate.X(), 1, 0, 0, m_composed);
    Rotated(m_rotate.Y(), 0, 1, 0, m_composed);
    Rotated(m_rotate.Z(), 0, 0, 1, m_composed);
    if (m_rotateAroundCenter) {
        Translated(-cx, -cy, -cz, m_composed);
        Translatedv(m_translate.Data(), m_composed);
    }
    Scaledv(m_scale.Data(), m_composed);
    if (m_extra) MultMatrixd(m_composed, *m_extra, m_composed);
    m_active = !IsIdentityd(m_composed);
}

bool TZEPXForm::HasValuesOf(const TZEPXForm& other) const {
    return m_translate.Data() == other.m_translate.Data() &&
           m_center.Data() == other.m_center.Data() && m_scale.Data() == other.m_scale.Data() &&
           m_rotate.Data() == other.m_rotate.Data() && ValueOf(m_base) == ValueOf(other.m_base) &&
           ValueOf(m_extra) == ValueOf(other.m_extra) &&
           m_rotateAroundCenter == other.m_rotateAroundCenter;
}

void TZEPXForm::Assign(const TPersistent* source) {
    const auto* other = dynamic_cast<const TZEPXForm*>(source);
    if (!other) return TPersistent::Assign(source);
    SetValue(m_base, ValueOf(other->m_base));
    SetValue(m_extra, ValueOf(other->m_extra));
    m_translate.SetDataQuietly(other->m_translate.Data());
    m_center.SetDataQuietly(other->m_center.Data());
    m_scale.SetDataQuietly(other->m_scale.Data());
    m_rotate.SetDataQuietly(other->m_rotate.Data());
    m_rotateAroundCenter = other->m_rotateAroundCenter;
    ChangeData(this);
}

void TZEPXForm::DefineProperties(TFiler& filer) {
    TPersistent::DefineProperties(filer);
    filer.DefineBinaryProperty(
        "Matrix", [this](const QByteArray& stream) { LoadMatrix(stream); },
        [this] { return StoreMatrix(); }, !IsIdentityd(ValueOf(m_extra)));
}

void TZEPXForm::LoadMatrix(const QByteArray& stream) {
    if (stream.size() < static_cast<qsizetype>(sizeof(TGLMatrixd4)))
        throw Exception(QStringLiteral("Stream read error"));
    qFromLittleEndian<double>(stream.constData(), 16, Extra().front().data());
    Invalidate(this);
}

QByteArray TZEPXForm::StoreMatrix() const {
    QByteArray stream(sizeof(TGLMatrixd4), Qt::Uninitialized);
    qToLittleEndian<double>(ValueOf(m_extra).front().data(), 16, stream.data());
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
