#pragma once

namespace ZEP {

/// Where shadows are accumulated: the image of one light, while it is drawn.
class TZEPShadowImage {
public:
    /// \param left   images that are still to be added up, this one included: what is drawn now is
    /// in
    ///               all of them
    /// \param black  what lies in shadow is drawn, black
    explicit TZEPShadowImage(int left, bool black) {
        s_left = left;
        s_black = black;
    }
    ~TZEPShadowImage() {
        s_left = 1;
        s_black = false;
    }
    TZEPShadowImage(const TZEPShadowImage&) = delete;
    TZEPShadowImage& operator=(const TZEPShadowImage&) = delete;

    [[nodiscard]] static int Left() { return s_left; }
    [[nodiscard]] static bool IsBlack() { return s_black; }

private:
    inline static int s_left = 1; // everything is drawn on one thread
    inline static bool s_black = false;
};

} // namespace ZEP
