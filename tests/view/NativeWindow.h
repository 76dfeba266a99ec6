#pragma once

#include "view/ContextBinding.h"

namespace ZEP {

/// A bare, mapped window of the windowing system, without any toolkit.
class NativeWindow {
public:
    NativeWindow(int width, int height);
    ~NativeWindow() { Destroy(); }
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    [[nodiscard]] static bool HasDisplay();
    [[nodiscard]] TWindowHandle Handle() const { return m_window; }
    void Resize(int width, int height);
    void Destroy();
    [[nodiscard]] int ChildCount() const;
    /// What the screen shows at a point of the window: 0xRRGGBB.
    [[nodiscard]] unsigned int ScreenPixel(int x, int y) const;

private:
    TWindowHandle m_window = 0;
};

} // namespace ZEP
