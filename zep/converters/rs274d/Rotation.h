#pragma once

#include <zep/converters/rs274d/Sink.h>

#include <cmath>

namespace ZEP {

/// Turns a plane about a point, from its first axis towards the second.
class TRS274DRotation {
public:
    void Set(const TRS274DPoint& center, double radians, const TRS274DAxes& axes) {
        m_isOn = true;
        m_center = center;
        m_axes = axes;
        m_cosine = std::cos(radians);
        m_sine = std::sin(radians);
    }
    void Clear() { m_isOn = false; }
    [[nodiscard]] bool IsOn() const { return m_isOn; }

    [[nodiscard]] TRS274DPoint Applied(const TRS274DPoint& point) const {
        return Turned(point, m_sine);
    }
    [[nodiscard]] TRS274DPoint Undone(const TRS274DPoint& point) const {
        return Turned(point, -m_sine);
    }

private:
    [[nodiscard]] TRS274DPoint Turned(TRS274DPoint point, double sine) const {
        if (!m_isOn) return point;
        const double a = point[m_axes.First] - m_center[m_axes.First];
        const double b = point[m_axes.Second] - m_center[m_axes.Second];
        point[m_axes.First] = m_center[m_axes.First] + m_cosine * a - sine * b;
        point[m_axes.Second] = m_center[m_axes.Second] + sine * a + m_cosine * b;
        return point;
    }

    bool m_isOn = false;
    TRS274DPoint m_center{};
    TRS274DAxes m_axes{};
    double m_cosine = 1, m_sine = 0;
};

} // namespace ZEP
