#include <zep/converters/rs274d/Program.h>

#include <zep/converters/LineSource.h>
#include <zep/converters/rs274d/ExtendedMachine.h>
#include <zep/converters/rs274d/PlainMachine.h>

#include <memory>

namespace ZEP {

namespace {

std::unique_ptr<TRS274DMachine> MakeMachine(const TRS274DOptions& options, TRS274DSink& sink,
                                            TRS274DReport& report) {
    if (options.Extended) return std::make_unique<TRS274DExtendedMachine>(options, sink, report);
    return std::make_unique<TRS274DPlainMachine>(options, sink, report);
}

} // namespace

bool ReadRS274D(std::string_view text, const TRS274DOptions& options, TRS274DSink& sink,
                TRS274DReport& report, const TProgress& progress) {
    const auto machine = MakeMachine(options, sink, report);
    TLineSource lines(text);
    TRS274DBlock block;
    std::string_view line;
    for (std::size_t next = ProgressStep; machine->IsRunning() && lines.Next(line);) {
        if (progress && lines.Position() >= next) {
            next = lines.Position() + ProgressStep;
            if (!progress(static_cast<qint64>(lines.Position()), static_cast<qint64>(text.size())))
                return false;
        }
        if (line.size() > MaxRS274DLineLength) {
            machine->PassLine(lines.LineNumber());
            continue;
        }
        block.Read(line, options.Extended);
        machine->Run(block, lines.LineNumber());
    }
    return true;
}

} // namespace ZEP
