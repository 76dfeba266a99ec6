#include <zep/converters/rs274d/Interpreter.h>

#include <zep/converters/rs274d/Run.h>

namespace ZEP {

bool TRS274DInterpreter::Run(std::string_view text, const TProgress& progress) {
    return TRS274DRun(text, m_options, m_sink, m_report).Go(progress);
}

} // namespace ZEP
