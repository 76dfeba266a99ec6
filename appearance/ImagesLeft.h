#pragma once

namespace ZEP {

/// How many images of lights are still to be added up where shadows are accumulated, the present
/// one included: what is added to the picture now is in all of them.
class TZEPImagesLeft {
public:
    explicit TZEPImagesLeft(int count) { s_count = count; }
    ~TZEPImagesLeft() { s_count = 1; }
    TZEPImagesLeft(const TZEPImagesLeft&) = delete;
    TZEPImagesLeft& operator=(const TZEPImagesLeft&) = delete;

    [[nodiscard]] static int Count() { return s_count; }

private:
    inline static int s_count = 1; // everything is drawn on one thread
};

} // namespace ZEP
