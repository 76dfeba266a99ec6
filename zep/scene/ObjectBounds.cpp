#include <zep/framework/Exception.h>
#include <zep/framework/LookOnly.h>
#include <zep/scene/Object.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <cmath>

namespace ZEP {

namespace {

using TSizeCall = void (TZEPObject::*)(TGLArrayd3&, TGLArrayd3&) const;

TGLArrayd3 LowOf(const TZEPObject& object, TSizeCall size) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    (object.*size)(min, max);
    return min;
}

TGLArrayd3 HighOf(const TZEPObject& object, TSizeCall size) {
    TGLArrayd3 min;
    TGLArrayd3 max;
    (object.*size)(min, max);
    return max;
}

/// What objects have until they are asked for their own.
TZEPXForm* InitialTransform() {
    static TZEPXForm transform({}, nullptr);
    transform.Scale()->SetDataQuietly({1, 1, 1});
    return &transform;
}

} // namespace

TZEPXForm* TZEPObject::XForm() {
    if (m_xform) return m_xform.get();
    if (TLookOnly::IsActive()) return InitialTransform();
    m_xform = std::make_unique<TZEPXForm>(Notify<&TZEPObject::Invalidate>(this), this);
    m_xform->Scale()->SetDataQuietly({1, 1, 1}); // coming into being is no change
    return m_xform.get();
}

void TZEPObject::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = {-0.5, -0.5, -0.5};
    max = {0.5, 0.5, 0.5};
}

TGLArrayd3 TZEPObject::GetMin() const {
    return LowOf(*this, &TZEPObject::GetSize);
}

TGLArrayd3 TZEPObject::GetMax() const {
    return HighOf(*this, &TZEPObject::GetSize);
}

void TZEPObject::GetMin3Real(double& x, double& y, double& z) const {
    Spread(GetMin(), x, y, z);
}

void TZEPObject::GetMax3Real(double& x, double& y, double& z) const {
    Spread(GetMax(), x, y, z);
}

TGLMatrixd4 TZEPObject::GetMatrix() const {
    return m_xform ? m_xform->GetMatrix() : idd;
}

TGLMatrixd4 TZEPObject::GetAbsoluteMatrix() const {
    if (!m_parent) return GetMatrix();
    TGLMatrixd4 absolute = m_parent->GetAbsoluteMatrix();
    MultMatrixd(absolute, GetMatrix(), absolute);
    return absolute;
}

void TZEPObject::ConvertToAbsolute(const TGLArrayd3& point, TGLArrayd3& result) const {
    result = point;
    if (m_xform) Xformd(m_xform->GetMatrix(), result);
    if (m_parent) m_parent->ConvertToAbsolute(TGLArrayd3(result), result);
}

void TZEPObject::ConvertToAbsolute3Real(double x, double y, double z, double& rx, double& ry,
                                        double& rz) const {
    TGLArrayd3 result;
    ConvertToAbsolute({x, y, z}, result);
    Spread(result, rx, ry, rz);
}

void TZEPObject::ConvertToLocal3Real(double x, double y, double z, double& rx, double& ry,
                                     double& rz) const {
    TGLMatrixd4 inverse = GetAbsoluteMatrix();
    InverseMatrixd(inverse);
    TGLArrayd3 point{x, y, z};
    Xformd(inverse, point);
    Spread(point, rx, ry, rz);
}

void TZEPObject::GetAbsoluteSize(TGLArrayd3& min, TGLArrayd3& max) const {
    TGLArrayd3 low;
    TGLArrayd3 high;
    GetSize(low, high);
    min = {1.7e308, 1.7e308, 1.7e308};
    max = {-1.7e308, -1.7e308, -1.7e308};
    for (unsigned corner = 0; corner < 8; ++corner) {
        const TGLArrayd3 local{corner & 1U ? high[0] : low[0], corner & 2U ? high[1] : low[1],
                               corner & 4U ? high[2] : low[2]};
        TGLArrayd3 absolute;
        ConvertToAbsolute(local, absolute);
        MinBoundsd(min, absolute);
        MaxBoundsd(max, absolute);
    }
}

TGLArrayd3 TZEPObject::GetAbsoluteMin() const {
    return LowOf(*this, &TZEPObject::GetAbsoluteSize);
}

TGLArrayd3 TZEPObject::GetAbsoluteMax() const {
    return HighOf(*this, &TZEPObject::GetAbsoluteSize);
}

void TZEPObject::GetAbsoluteMin3Real(double& x, double& y, double& z) const {
    Spread(GetAbsoluteMin(), x, y, z);
}

void TZEPObject::GetAbsoluteMax3Real(double& x, double& y, double& z) const {
    Spread(GetAbsoluteMax(), x, y, z);
}

TGLArrayd3 TZEPObject::GetAbsoluteCenter() const {
    TGLArrayd3 center;
    ConvertToAbsolute(GetCenter(), center);
    return center;
}

void TZEPObject::GetAbsoluteCenter3Real(double& x, double& y, double& z) const {
    Spread(GetAbsoluteCenter(), x, y, z);
}

void TZEPObject::GetBoundingBoxAbsoluteCenter3Real(double& x, double& y, double& z) const {
    TGLArrayd3 min;
    TGLArrayd3 max;
    GetAbsoluteSize(min, max);
    Spread({(min[0] + max[0]) / 2, (min[1] + max[1]) / 2, (min[2] + max[2]) / 2}, x, y, z);
}

double TZEPObject::GetAbsoluteRadius() const {
    TGLArrayd3 min;
    TGLArrayd3 max;
    GetAbsoluteSize(min, max);
    return Distance(min, max) / 2;
}

} // namespace ZEP
