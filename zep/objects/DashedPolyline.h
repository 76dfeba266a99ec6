#pragma once

#include <zep/Export.h>
#include <zep/objects/DashPattern.h>
#include <zep/objects/Polyline.h>

namespace ZEP {

/// A polyline that is broken up into dashes, gaps and dots of given lengths, as lines of drawings
/// are: nearer by, its dashes are longer. `Style` and splines have no effect.
///
/// Defaults: no pattern, which is solid; it begins anew at corners.
class ZEP_CORE_EXPORT TZEPDashedPolyline : public TZEPPolyline {
    Q_OBJECT
    Q_PROPERTY(QString Dashes READ Dashes WRITE SetDashes)
    Q_PROPERTY(bool RunsOn READ RunsOn WRITE SetRunsOn)
    Q_CLASSINFO("RunsOn", "false")
public:
    explicit TZEPDashedPolyline(TComponent* owner = nullptr);

    [[nodiscard]] const QString& Dashes() const { return m_dashes; }
    /// Lengths of dashes, above 0, and gaps, below 0, in the polyline's unit, with blanks between
    /// them; 0 is a dot. It is solid where that is empty, is no list of numbers or breaks nothing
    /// up (`TZEPDashPattern::Of`).
    void SetDashes(const QString& dashes);
    [[nodiscard]] bool RunsOn() const { return m_runsOn; }
    /// The pattern runs on round corners, and does not begin with a dash on each side.
    void SetRunsOn(bool runsOn);

    /// Not published: null where it is solid.
    [[nodiscard]] const std::shared_ptr<const TZEPDashPattern>& Pattern() const {
        return m_pattern;
    }
    /// Of one that many have in common.
    void SetPattern(const std::shared_ptr<const TZEPDashPattern>& pattern);

    /// Calls it for each piece, as `ForEachDashedLine`.
    void ForEachLine(const std::function<void(const TDashedEnd& from, const TDashedEnd& to)>& line);

    void DrawShape(GLenum face, bool draft) override;

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return false; }

private:
    QString m_dashes;
    std::shared_ptr<const TZEPDashPattern> m_pattern; ///< of them
    bool m_runsOn = false;
};

} // namespace ZEP
