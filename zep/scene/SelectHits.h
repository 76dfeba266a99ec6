#pragma once

#include <zep/Export.h>
#include <zep/scene/Object.h>

#include <QString>

#include <vector>

namespace ZEP {

/// The part of a view that is asked what lies there: its size in pixels about (X, Y), which counts
/// from the lower left corner.
struct TZEPPickRegion {
    int ViewWidth, ViewHeight;
    int X, Y, Width, Height;
};

/// What it takes to be found in a region.
enum class TZEPReach {
    Touched, ///< a part of the object lies in it
    Inside   ///< no part of it is seen, or would be in a wider view, outside
};

struct TZEPSelectHit {
    TZEPObject* Object;
    GLuint MinDepth; ///< from 0 at the near plane to 2^32 - 1 at the far one
};

/// The objects that a draw in select mode hit, in the order of OpenGL's records.
class ZEP_CORE_EXPORT TZEPSelectHits {
public:
    /// \param records  their number
    /// \param buffer   as OpenGL filled it: count of names, least and greatest depth, names
    /// \param names    the objects by name
    TZEPSelectHits(int records, const std::vector<GLuint>& buffer,
                   const std::vector<TZEPObject*>& names);

    [[nodiscard]] int RecordCount() const { return m_records; }
    [[nodiscard]] const std::vector<TZEPSelectHit>& List() const { return m_hits; }
    /// Takes out what is no longer below `root`. What has been freed is only compared.
    void KeepWithin(TZEPObject& root);

private:
    int m_records;
    std::vector<TZEPSelectHit> m_hits;
};

/// Chooses the best of the hits that it is offered one by one: the one of the least depth and among
/// equals the first; or, checking by hand, the nearest to the eye of the highest priority, where a
/// part that bears the name of the best one so far in its own wins over it.
class ZEP_CORE_EXPORT TZEPBestHit {
public:
    explicit TZEPBestHit(bool manualDepthCheck) : m_manual(manualDepthCheck) {}

    void Offer(const TZEPSelectHit& hit, double distance);
    [[nodiscard]] TZEPObject* Object() const { return m_object; }

private:
    [[nodiscard]] bool IsBetter(const TZEPSelectHit& hit, double distance) const;

    bool m_manual;
    TZEPObject* m_object = nullptr;
    GLuint m_depth = 4294967295U;
    int m_priority = 0;
    double m_distance = 2147483647.0;
    QString m_name = QStringLiteral("XXX");
};

} // namespace ZEP
