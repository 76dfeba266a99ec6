#pragma once

#include <zep/scene/Geom.h>

#include <QPointer>

#include <string_view>
#include <vector>

namespace ZEP {

class TDXFReport;
class TZEPObject;
class TZEPPolyline;

/// Lines without an end (XLINE, RAY). They are drawn as far as all else of the drawing reaches, so
/// that they never widen its bounds. That is known when all is read: until then they have no
/// parent.
class TDXFEndlessLines {
public:
    struct TLine {
        QPointer<TZEPPolyline> Object;
        QPointer<TZEPObject> Parent;
        TGLArrayd3 Place{}; ///< in the frame of its parent
        TGLArrayd3 Way{};
        bool IsRay = false; ///< it begins at its place
        std::string_view Kind{};
        qint64 SourceLine = 0;
    };

    void Add(TLine line) { m_lines.push_back(std::move(line)); }
    /// Those of a drawing that this one shows.
    void Take(TDXFEndlessLines& other);
    /// Gives each its ends and its parent. Those that lie beside all else are left out and counted;
    /// where there is nothing else, all reach as far as the places of the others.
    void Place(TZEPObject& root, TDXFReport& report);

private:
    std::vector<TLine> m_lines;
};

} // namespace ZEP
