#pragma once

#include <zep/Export.h>
#include <zep/converters/Progress.h>
#include <zep/converters/rs274d/Options.h>
#include <zep/converters/rs274d/Report.h>
#include <zep/converters/rs274d/Sink.h>

#include <string_view>

namespace ZEP {

/// Runs an NC program as a machine would, and tells a sink where the tool goes: parameters,
/// expressions, loops, branches and subprograms, in the RS-274/NGC dialect (NISTIR 6556 and its
/// O-words) and with M97, M98 and M99; see docs/rs274d.md. It needs no scene and no converter:
///
///     TRS274DReport report;
///     TRS274DInterpreter(options, sink, report).Run(text);
///
/// A move tells the line of the program that makes it; a move of a subprogram in another file, the
/// line of the call.
class ZEP_CORE_EXPORT TRS274DInterpreter {
public:
    /// \param options       `Extended` is taken for true
    /// \param sink, report  outlive it
    TRS274DInterpreter(const TRS274DOptions& options, TRS274DSink& sink, TRS274DReport& report)
        : m_options(options), m_sink(sink), m_report(report) {}

    /// Runs a whole program, until its end or the end of the text, from the state of a machine that
    /// was just switched on. Raises `Exception` that names file and line for limits that are
    /// exceeded, and with `StopOnErrors` for errors of the program.
    /// \param progress  asked every 64 kilobytes that are read, loops as often as they run; may be
    ///                  empty
    /// \return whether it was not cancelled
    bool Run(std::string_view text, const TProgress& progress = {});

private:
    const TRS274DOptions m_options;
    TRS274DSink& m_sink;
    TRS274DReport& m_report;
};

} // namespace ZEP
