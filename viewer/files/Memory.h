#pragma once

namespace ZEP {

/// To the system, what was freed: much stays with the process else, after a large file say.
void GiveBackMemory();

} // namespace ZEP
