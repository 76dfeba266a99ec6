#include <zep/converters/rs274d/Program.h>

#include <zep/converters/LineSource.h>
#include <zep/converters/rs274d/Interpreter.h>
#include <zep/converters/rs274d/PlainMachine.h>

namespace ZEP {

namespace {

bool ReadPlain(std::string_view text, const TRS274DOptions& options, TRS274DSink& sink,
               TRS274DReport& report, const TProgress& progress) {
    TRS274DPlainMachine machine(options, sink, report);
    TLineSource lines(text);
    TRS274DBlock block;
    std::string_view line;
    for (std::size_t next = ProgressStep; machine.IsRunning() && lines.Next(line);) {
        if (progress && lines.Position() >= next) {
            next = lines.Position() + ProgressStep;
            if (!progress(static_cast<qint64>(lines.Position()), static_cast<qint64>(text.size())))
                return false;
        }
        const TRS274DPlace place{.Line = lines.LineNumber()};
        if (line.size() > MaxRS274DLineLength) {
            machine.PassLine(place);
            continue;
        }
        block.Read(line, false);
        machine.Run(block, place);
    }
    return true;
}

} // namespace

bool ReadRS274D(std::string_view text, const TRS274DOptions& options, TRS274DSink& sink,
                TRS274DReport& report, const TProgress& progress) {
    if (!options.Extended) return ReadPlain(text, options, sink, report, progress);
    return TRS274DInterpreter(options, sink, report).Run(text, progress);
}

} // namespace ZEP
