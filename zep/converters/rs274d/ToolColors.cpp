#include <zep/converters/rs274d/ToolColors.h>

#include <zep/converters/rs274d/ToolNames.h>

namespace ZEP {

void TRS274DToolColors::Change(qint64 number) {
    if (const auto known = m_known.find(number); known != m_known.end()) {
        m_current = known->second;
        return;
    }
    Next();
    if (number >= 0 && m_known.size() < MaxRS274DTools) m_known[number] = m_current;
}

} // namespace ZEP
