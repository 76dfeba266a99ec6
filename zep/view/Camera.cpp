#include <zep/view/Camera.h>

#include <zep/appearance/effects/Jitter.h>
#include <zep/framework/Property.h>
#include <zep/scene/Vectors.h>

#include <GL/glu.h>

#include <QPointer>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ZEP {

namespace {

using std::numbers::pi;

const TRegisterObject<TZEPCamera> RegisteredCamera;

double Aspect(int width, int height) {
    return static_cast<double>(std::max(width, 1)) / std::max(height, 1);
}

} // namespace

TZEPCamera::TZEPCamera(TComponent* owner)
    : TZEPObject(owner), m_up(Notify<&TZEPCamera::Invalidate>(this)) {
    SetFocalLength(45);
    m_up.SetDataQuietly(unitz);
}

TZEPCamera::~TZEPCamera() {
    Q_EMIT Freed();
}

// --- base placement and lens -------------------------------------------------------------------

void TZEPCamera::Follow(TZEPObject*& field, TZEPObject* object) {
    if (!Change(field, object)) return;
    if (object) object->FreeNotification(this);
    Invalidate(this);
}

void TZEPCamera::SetPositionObject(TZEPObject* object) {
    Follow(m_positionObject, object);
}

void TZEPCamera::SetTargetObject(TZEPObject* object) {
    Follow(m_targetObject, object);
}

void TZEPCamera::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove) {
        if (component == m_positionObject) Follow(m_positionObject, nullptr);
        if (component == m_targetObject) Follow(m_targetObject, nullptr);
    }
    TZEPObject::Notification(component, operation);
}

void TZEPCamera::ReadState(TReader& reader) {
    m_focalLength = m_nearClipPlane = m_farClipPlane = 0;
    m_up.SetDataQuietly(zero3d);
    // No lens sees nothing: an angle that a stream does not hold follows the focal length.
    m_keepsAngle = true;
    const QPointer<TZEPCamera> alive(this); // who hears of a child may free it
    const auto done = qScopeGuard([&alive] {
        if (alive) alive->m_keepsAngle = false;
    });
    TZEPObject::ReadState(reader);
}

void TZEPCamera::SetFocalLength(double millimetres) {
    if (!Change(m_focalLength, millimetres)) return;
    m_fovy = 2 * std::atan(36 / (2 * m_focalLength)) * 180 / pi;
    Invalidate(this);
}

void TZEPCamera::SetFOVY(double degrees) {
    if (m_keepsAngle && degrees == 0) return;
    if (!Change(m_fovy, degrees)) return;
    m_focalLength = 0.5 / (std::tan(pi * m_fovy / 180 / 2) / 36);
    Invalidate(this);
}

void TZEPCamera::SetNearClipPlane(double distance) {
    if (Change(m_nearClipPlane, distance)) Invalidate(this);
}

void TZEPCamera::SetFarClipPlane(double distance) {
    if (Change(m_farClipPlane, distance)) Invalidate(this);
}

void TZEPCamera::SetOrthographic(bool orthographic) {
    if (Change(m_orthographic, orthographic)) Invalidate(this);
}

void TZEPCamera::SetSections(const TZEPSections& sections) {
    if (Change(m_sections, sections)) Invalidate(this);
}

void TZEPCamera::SetSheet(TZEPObject* sheet) {
    if (m_sheet == sheet) return;
    m_sheet = sheet;
    Invalidate(this);
}

bool TZEPCamera::IsOffSheet(const TZEPObject& object) const {
    const TZEPObject* above = m_sheet ? &object : nullptr;
    while (above && above != m_sheet) above = above->Parent();
    return m_sheet && !above;
}

void TZEPCamera::SetViewOffset(const TGLArrayd3& offset) {
    if (Change(m_navigation.View, offset)) Invalidate(this);
}

void TZEPCamera::Invalidate(TObject* sender) {
    m_changed = true;
    TZEPObject::Invalidate(sender);
}

// --- where it is now ---------------------------------------------------------------------------

TGLArrayd3 TZEPCamera::CenterOf(const TZEPObject& object) const {
    TGLArrayd3 center = object.GetAbsoluteCenter();
    TGLMatrixd4 toOwn = GetAbsoluteMatrix();
    InverseMatrixd(toOwn);
    Xformd(toOwn, center);
    return center;
}

TGLArrayd3 TZEPCamera::GetPosition() const {
    // Cameras that follow each other in a ring would never end: the ring breaks where it closes.
    if (!m_positionObject || m_following) return FirstPoint() + m_navigation.Position;
    m_following = true;
    const TGLArrayd3 center = CenterOf(*m_positionObject);
    m_following = false;
    return center + m_navigation.Position;
}

void TZEPCamera::GetPosition3Real(double& x, double& y, double& z) const {
    Spread(GetPosition(), x, y, z);
}

TGLArrayd3 TZEPCamera::GetTarget() const {
    return (m_targetObject ? CenterOf(*m_targetObject) : SecondPoint()) + m_navigation.Target;
}

void TZEPCamera::GetTarget3Real(double& x, double& y, double& z) const {
    Spread(GetTarget(), x, y, z);
}

double TZEPCamera::FieldOfView() const {
    const double field = m_fovy + m_navigation.Field;
    return std::isnan(field) ? 0.1 : std::clamp(field, 0.1, 175.0);
}

TGLArrayd3 TZEPCamera::ToEye() const {
    return GetPosition() - GetTarget();
}

double TZEPCamera::Distance() const {
    const TGLArrayd3 toEye = ToEye();
    const double distance = std::sqrt(Dotd(toEye, toEye));
    return distance == 0 ? 1 : distance;
}

// --- matrices of a frame -----------------------------------------------------------------------

void TZEPCamera::Apply(int width, int height, int jitter) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    m_drawnSize = {width, height};
    ApplyPart();
    ApplyProjection(Aspect(width, height), jitter);
    ApplyView();
}

void TZEPCamera::ApplyPart() const {
    if (!m_drawnPart) return;
    const QRectF& part = *m_drawnPart;
    GLint viewport[4] = {0, 0, m_drawnSize.width(), m_drawnSize.height()};
    gluPickMatrix(part.center().x(), part.center().y(), part.width(), part.height(), viewport);
}

void TZEPCamera::Pick(int width, int height, int x, int y, int pickWidth, int pickHeight) {
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPickMatrix(x, y, pickWidth, pickHeight, viewport);
    ApplyProjection(Aspect(width, height), -1);
    ApplyView();
}

void TZEPCamera::ApplyProjection(double aspect, int jitter) const {
    if (m_orthographic) {
        const double h = std::tan(FieldOfView() / 2 / 180 * pi) * Distance();
        const double v = h / aspect;
        glOrtho(-h, h, -v, v, m_nearClipPlane, m_farClipPlane);
    } else if (std::in_range<std::size_t>(jitter) &&
               static_cast<std::size_t>(jitter) < CurrentJitter().size()) {
        ApplyJittered(aspect, jitter);
    } else {
        gluPerspective(FieldOfView(), aspect, m_nearClipPlane, m_farClipPlane);
    }
}

// Depth of field: the eye moves a little about its place while the plane of the target keeps
// still, as in the accumulation-buffer examples of the OpenGL programming guide.
void TZEPCamera::ApplyJittered(double aspect, int jitter) const {
    const TZEPJitter sample = CurrentJitter()[static_cast<std::size_t>(jitter)];
    const double eyeX = 0.2 * static_cast<double>(sample.X);
    const double eyeY = 0.2 * static_cast<double>(sample.Y);
    const double angle = pi * FieldOfView() / 180 / 2;
    const double top = m_nearClipPlane / (std::cos(angle) / std::sin(angle));
    const double right = top * aspect;
    const double dx = -(eyeX * m_nearClipPlane / Distance());
    const double dy = -(eyeY * m_nearClipPlane / Distance());
    glFrustum(-right + dx, right + dx, -top + dy, top + dy, m_nearClipPlane, m_farClipPlane);
    glMatrixMode(GL_MODELVIEW);
    glTranslated(-eyeX, -eyeY, 0);
}

void TZEPCamera::ApplyView() const {
    const TGLArrayd3 eye = GetPosition();
    const TGLArrayd3 target = GetTarget();
    const auto& [upX, upY, upZ] = m_up.Data();
    const auto& [x, y, z] = m_navigation.View;
    TGLMatrixd4 toOwn = GetAbsoluteMatrix();
    InverseMatrixd(toOwn);
    glMatrixMode(GL_MODELVIEW);
    glRotated(m_navigation.Roll, 0, 0, 1);
    gluLookAt(eye[0], eye[1], eye[2], target[0], target[1], target[2], upX, upY, upZ);
    glTranslatef(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    glMultMatrixd(toOwn.front().data());
}

} // namespace ZEP
