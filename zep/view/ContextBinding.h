#pragma once

#include <zep/Export.h>
#include <zep/view/PixelFormat.h>

#include <functional>
#include <memory>

namespace ZEP {

/// Handles of the windowing system; 0 is none.
using TWindowHandle = std::uintptr_t;
using TContextHandle = std::uintptr_t;
using TPaletteHandle = std::uintptr_t;
using TEntryPoint = void (*)();

/// The windowing system as one rendering context sees it: a window, the pixel formats that it may
/// take, the contexts that draw in it. No operation raises or ends the program: what the system
/// refuses is answered with false or 0. All contexts of the process share display lists and
/// textures, also with those that were deleted before.
class ZEP_EXPORT TContextBinding {
public:
    virtual ~TContextBinding() = default;

    /// Everything from now on belongs to that window; what was set on the former one is given
    /// back. With 0 only that.
    virtual void SetWindow(TWindowHandle window) = 0;
    /// The window that OpenGL draws in: the one set above or a child of it; 0 without a format.
    [[nodiscard]] virtual TWindowHandle DrawWindow() const = 0;
    /// Called from the event loop when the system lost what was drawn in the window.
    virtual void SetExposeHandler(std::function<void()> handler) = 0;
    /// What is drawn in follows its window to that size in device pixels.
    virtual void Resize(int width, int height) = 0;

    /// \name Pixel formats, numbered from 1
    /// @{
    [[nodiscard]] virtual int FormatCount() = 0;
    /// Fills `format`; leaves it alone and answers false for an index that there is not.
    virtual bool DescribeFormat(int index, TPixelFormat& format) = 0;
    /// The format nearest to `request`, 0 for none.
    [[nodiscard]] virtual int ChooseFormat(const TPixelFormat& request) = 0;
    /// What `SetFormat` grants from then on beside the format, where the system has it.
    virtual void SetSampleWish(const TSampleWish& /*wish*/) {}
    /// Gives the window that format; false where the system refuses. `DescribeFormat` tells of that
    /// format then how the window has got it: samples are had in place of an accumulation buffer.
    virtual bool SetFormat(int index) = 0;
    /// Makes `palette` the window's own.
    virtual TPaletteHandle RealizePalette(const std::vector<TPaletteEntry>& palette) = 0;
    virtual void DeletePalette(TPaletteHandle palette) = 0;
    /// @}

    /// A context for the window in its format; 0 where the system refuses.
    [[nodiscard]] virtual TContextHandle CreateContext() = 0;
    /// Draws in the window, or in a picture that was begun, through `context` from now on; 0 leaves
    /// the thread without one.
    virtual bool MakeCurrent(TContextHandle context) = 0;
    /// Whether the system, whoever used it last, has `context` current on this thread.
    [[nodiscard]] virtual bool IsCurrent(TContextHandle context) const = 0;
    virtual void DeleteContext(TContextHandle context) = 0;
    /// A function of the driver behind the current context; null where it lacks it.
    [[nodiscard]] virtual TEntryPoint EntryPoint(const char* name) = 0;
    /// Draws through `context` into a picture of that size in memory, in the format of the window.
    /// False where the system refuses; then nothing has changed.
    virtual bool BeginPicture(TContextHandle context, int width, int height) = 0;
    /// Draws in the window again.
    virtual void EndPicture(TContextHandle context) = 0;
    /// Shows what was drawn.
    virtual void SwapBuffers() = 0;
};

/// The binding of the windowing system that this program runs on.
[[nodiscard]] ZEP_EXPORT std::unique_ptr<TContextBinding> CreateContextBinding();

} // namespace ZEP
