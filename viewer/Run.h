#pragma once

namespace ZEP {

/// The whole program.
/// \return exit code: 0 when what was asked for was done, 1 when it failed, 2 for arguments that
///         cannot be understood. Messages go to standard error.
int RunViewer(int argc, char** argv);

} // namespace ZEP
