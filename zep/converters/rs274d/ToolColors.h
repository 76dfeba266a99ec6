#pragma once

#include <zep/framework/Color.h>

#include <QtGlobal>

#include <array>
#include <map>

namespace ZEP {

/// Which of the seven tool colours a path has; a program begins with white.
class TRS274DToolColors {
public:
    [[nodiscard]] TColor Current() const { return Colors[m_current]; }
    /// The one behind that which was taken last; after the seventh comes the first.
    void Next() { m_current = m_last = (m_last + 1) % Colors.size(); }
    /// The colour that the tool had before; the next one for a new tool, and for one without a
    /// number.
    /// \param number  below 0: none
    void Change(qint64 number);

private:
    static constexpr std::array Colors{TColor(0xFFFFFF), TColor(0x0000FF), TColor(0x00FF00),
                                       TColor(0xFF0000), TColor(0xFFFF00), TColor(0xFF00FF),
                                       TColor(0x00FFFF)};
    std::size_t m_current = 0, m_last = 0;
    std::map<qint64, std::size_t> m_known; ///< by number
};

} // namespace ZEP
