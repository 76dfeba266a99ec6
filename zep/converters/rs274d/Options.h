#pragma once

#include <zep/converters/rs274d/Dialect.h>

#include <QString>

namespace ZEP {

/// Blocks that a program may run beyond the bytes that it has: loops and calls end with an error
/// then. A line counts once more for each 64 of its characters.
inline constexpr qint64 MaxRS274DBlocks = 10'000'000;

/// Motions that a program may make beyond the bytes that it has; more are an error.
inline constexpr qint64 MaxRS274DMotions = 2'000'000;

/// How a program is read.
struct TRS274DOptions {
    bool Extended = false;     ///< what a machine would do, instead of the plain path
    bool StopOnErrors = false; ///< raise `Exception` on program errors
    bool Trace = false;        ///< hand a trace to the sink
    /// The program's own file: subprograms that it does not hold are looked for in the folder of
    /// that file. Empty: none are.
    QString FileName{};
    qint64 MaxBlocks = MaxRS274DBlocks;
    qint64 MaxMotions = MaxRS274DMotions;
    TRS274DDialect Dialect = TRS274DDialect::NGC; ///< of the extended reading
};

} // namespace ZEP
