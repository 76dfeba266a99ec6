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
    void Resize(int width, int height);
    void Destroy();
    [[nodiscard]] int ChildCount() const { return ChildCount(m_window); }
    /// What the screen shows at a point of the window: 0xRRGGBB.
    [[nodiscard]] unsigned int ScreenPixel(int x, int y) const {
        return ScreenPixel(m_window, x, y);
    }

    /// \name The same of any window
    /// @{
    [[nodiscard]] static int ChildCount(TWindowHandle window);
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
