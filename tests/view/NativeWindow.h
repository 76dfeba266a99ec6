#pragma once

#include <zep/view/ContextBinding.h>

namespace ZEP {

/// A bare, mapped, blue window of the windowing system, without any toolkit.
class NativeWindow {
public:
    /// In the upper left corner of the screen, over everything else.
    NativeWindow(int width, int height);
    ~NativeWindow() { Destroy(); }
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    [[nodiscard]] static bool HasDisplay();
    [[nodiscard]] TWindowHandle Handle() const { return m_window; }
    void Destroy();

    /// \name Of any window
    /// @{
    [[nodiscard]] static int ChildCount(TWindowHandle window);
    /// What the screen shows at a point of the window: 0xRRGGBB.
    [[nodiscard]] static unsigned int ScreenPixel(TWindowHandle window, int x, int y);
    /// Where the window's upper left corner is on the screen.
    static void Origin(TWindowHandle window, int& x, int& y);
    /// All windows of the display.
    [[nodiscard]] static int WindowCount();
    /// @}

private:
    TWindowHandle m_window = 0;
};

} // namespace ZEP
