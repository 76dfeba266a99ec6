#pragma once

#include <zep/view/ContextBinding.h>

namespace ZEP {

/// OpenGL in X windows: a format is a framebuffer configuration with its visual, and giving a
/// window a format creates a child of that visual which fills it. The child asks for expose events
/// only; mouse and keyboard go on to the window itself.
///
/// It runs on the application's own X connection, on one of its own where there is no graphical
/// application; on another windowing system there are no formats, hence no contexts.
///
/// Formats that the system chooses or searches through are those of opaque windows without
/// multisampling, and stand in an order that lets the search, which holds many of them equal, end
/// at a double-buffered one with an accumulation buffer.
[[nodiscard]] std::unique_ptr<TContextBinding> CreateGlxBinding();

} // namespace ZEP
