#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/scene/Geom.h>

#include <cstddef>
#include <vector>

namespace ZEP {

/// Lines of neighbours that are sent together, from arrays: a call for each vertex takes more than
/// the line itself.
class ZEP_CORE_EXPORT TZEPLineRun {
public:
    struct TLine {
        TGLArrayd3 From, To;
        TColor Color; ///< ambient and diffuse
    };

    [[nodiscard]] bool IsEmpty() const { return m_lines.empty(); }
    [[nodiscard]] bool IsFull() const { return m_lines.size() >= Most; }
    void Add(const TLine& line) { m_lines.push_back(line); }
    [[nodiscard]] const std::vector<TLine>& Lines() const { return m_lines; }
    /// Memory stays.
    void Clear() { m_lines.clear(); }

    /// They are enough, and in OpenGL's present state arrays show what calls show.
    [[nodiscard]] bool PaysOff() const;
    /// The colours follow the ambient and diffuse ones of the material that is applied, which are
    /// undefined then.
    void SendArrays();

private:
    static constexpr std::size_t Fewest = 16;
    static constexpr std::size_t Most = 512;

    struct TVertex {
        TGLColor Color;
        TGLArrayf3 Point;
    };

    std::vector<TLine> m_lines;
    std::vector<TVertex> m_vertexes; // as long as they are sent
};

} // namespace ZEP
