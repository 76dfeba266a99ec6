#pragma once

#include <cstddef>
#include <functional>

namespace ZEP {

/// Follows work that takes long, step by step, while somebody watches.
class TSteps {
public:
    /// Thrown out of the work that is called off.
    struct TCancelled {};
    using TWatch = std::function<bool(double fraction)>; ///< false calls it off

    /// \param total  weight of all steps
    void Start(TWatch watch, double total) {
        m_watch = std::move(watch);
        m_total = total > 0 ? total : 1;
        m_done = 0;
        m_told = 0;
    }
    void End() { m_watch = {}; }
    /// Raises `TCancelled`.
    void Take(double weight = 1) {
        constexpr double least = 1000; // between two calls
        m_done += weight;
        if (!m_watch || m_done - m_told < least) return;
        m_told = m_done;
        if (!m_watch(m_done < m_total ? m_done / m_total : 1)) throw TCancelled();
    }

private:
    TWatch m_watch;
    double m_total = 1;
    double m_done = 0;
    double m_told = 0;
};

} // namespace ZEP
