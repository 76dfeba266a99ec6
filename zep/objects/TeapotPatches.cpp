#include <zep/objects/TeapotPatches.h>

namespace ZEP {

namespace {

// M. Newell, The utilization of procedure models in digital image synthesis, PhD thesis,
// University of Utah, 1975: the published control points, with the bottom that was added later.
constexpr std::array<TGLArrayf3, 127> Points{{{0.2F, 0, 2.7F},
                                              {0.2F, -0.112F, 2.7F},
                                              {0.112F, -0.2F, 2.7F},
                                              {0, -0.2F, 2.7F},
                                              {1.3375F, 0, 2.53125F},
                                              {1.3375F, -0.749F, 2.53125F},
                                              {0.749F, -1.3375F, 2.53125F},
                                              {0, -1.3375F, 2.53125F},
                                              {1.4375F, 0, 2.53125F},
                                              {1.4375F, -0.805F, 2.53125F},
                                              {0.805F, -1.4375F, 2.53125F},
                                              {0, -1.4375F, 2.53125F},
                                              {1.5F, 0, 2.4F},
                                              {1.5F, -0.84F, 2.4F},
                                              {0.84F, -1.5F, 2.4F},
                                              {0, -1.5F, 2.4F},
                                              {1.75F, 0, 1.875F},
                                              {1.75F, -0.98F, 1.875F},
                                              {0.98F, -1.75F, 1.875F},
                                              {0, -1.75F, 1.875F},
                                              {2, 0, 1.35F},
                                              {2, -1.12F, 1.35F},
                                              {1.12F, -2, 1.35F},
                                              {0, -2, 1.35F},
                                              {2, 0, 0.9F},
                                              {2, -1.12F, 0.9F},
                                              {1.12F, -2, 0.9F},
                                              {0, -2, 0.9F},
                                              {-2, 0, 0.9F},
                                              {2, 0, 0.45F},
                                              {2, -1.12F, 0.45F},
                                              {1.12F, -2, 0.45F},
                                              {0, -2, 0.45F},
                                              {1.5F, 0, 0.225F},
                                              {1.5F, -0.84F, 0.225F},
                                              {0.84F, -1.5F, 0.225F},
                                              {0, -1.5F, 0.225F},
                                              {1.5F, 0, 0.15F},
                                              {1.5F, -0.84F, 0.15F},
                                              {0.84F, -1.5F, 0.15F},
                                              {0, -1.5F, 0.15F},
                                              {-1.6F, 0, 2.025F},
                                              {-1.6F, -0.3F, 2.025F},
                                              {-1.5F, -0.3F, 2.25F},
                                              {-1.5F, 0, 2.25F},
                                              {-2.3F, 0, 2.025F},
                                              {-2.3F, -0.3F, 2.025F},
                                              {-2.5F, -0.3F, 2.25F},
                                              {-2.5F, 0, 2.25F},
                                              {-2.7F, 0, 2.025F},
                                              {-2.7F, -0.3F, 2.025F},
                                              {-3, -0.3F, 2.25F},
                                              {-3, 0, 2.25F},
                                              {-2.7F, 0, 1.8F},
                                              {-2.7F, -0.3F, 1.8F},
                                              {-3, -0.3F, 1.8F},
                                              {-3, 0, 1.8F},
                                              {-2.7F, 0, 1.575F},
                                              {-2.7F, -0.3F, 1.575F},
                                              {-3, -0.3F, 1.35F},
                                              {-3, 0, 1.35F},
                                              {-2.5F, 0, 1.125F},
                                              {-2.5F, -0.3F, 1.125F},
                                              {-2.65F, -0.3F, 0.9375F},
                                              {-2.65F, 0, 0.9375F},
                                              {-2, -0.3F, 0.9F},
                                              {-1.9F, -0.3F, 0.6F},
                                              {-1.9F, 0, 0.6F},
                                              {1.7F, 0, 1.425F},
                                              {1.7F, -0.66F, 1.425F},
                                              {1.7F, -0.66F, 0.6F},
                                              {1.7F, 0, 0.6F},
                                              {2.6F, 0, 1.425F},
                                              {2.6F, -0.66F, 1.425F},
                                              {3.1F, -0.66F, 0.825F},
                                              {3.1F, 0, 0.825F},
                                              {2.3F, 0, 2.1F},
                                              {2.3F, -0.25F, 2.1F},
                                              {2.4F, -0.25F, 2.025F},
                                              {2.4F, 0, 2.025F},
                                              {2.7F, 0, 2.4F},
                                              {2.7F, -0.25F, 2.4F},
                                              {3.3F, -0.25F, 2.4F},
                                              {3.3F, 0, 2.4F},
                                              {2.8F, 0, 2.475F},
                                              {2.8F, -0.25F, 2.475F},
                                              {3.525F, -0.25F, 2.49375F},
                                              {3.525F, 0, 2.49375F},
                                              {2.9F, 0, 2.475F},
                                              {2.9F, -0.15F, 2.475F},
                                              {3.45F, -0.15F, 2.5125F},
                                              {3.45F, 0, 2.5125F},
                                              {2.8F, 0, 2.4F},
                                              {2.8F, -0.15F, 2.4F},
                                              {3.2F, -0.15F, 2.4F},
                                              {3.2F, 0, 2.4F},
                                              {0, 0, 3.15F},
                                              {0.8F, 0, 3.15F},
                                              {0.8F, -0.45F, 3.15F},
                                              {0.45F, -0.8F, 3.15F},
                                              {0, -0.8F, 3.15F},
                                              {0, 0, 2.85F},
                                              {1.4F, 0, 2.4F},
                                              {1.4F, -0.784F, 2.4F},
                                              {0.784F, -1.4F, 2.4F},
                                              {0, -1.4F, 2.4F},
                                              {0.4F, 0, 2.55F},
                                              {0.4F, -0.224F, 2.55F},
                                              {0.224F, -0.4F, 2.55F},
                                              {0, -0.4F, 2.55F},
                                              {1.3F, 0, 2.55F},
                                              {1.3F, -0.728F, 2.55F},
                                              {0.728F, -1.3F, 2.55F},
                                              {0, -1.3F, 2.55F},
                                              {1.3F, 0, 2.4F},
                                              {1.3F, -0.728F, 2.4F},
                                              {0.728F, -1.3F, 2.4F},
                                              {0, -1.3F, 2.4F},
                                              {0, 0, 0},
                                              {1.425F, -0.798F, 0},
                                              {1.5F, 0, 0.075F},
                                              {1.425F, 0, 0},
                                              {0.798F, -1.425F, 0},
                                              {0, -1.5F, 0.075F},
                                              {0, -1.425F, 0},
                                              {1.5F, -0.84F, 0.075F},
                                              {0.84F, -1.5F, 0.075F}}};

constexpr std::array<TTeapotPatch, 10> Patches{
    {{TTeapotGroup::Body, 4, {102, 103, 104, 105, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}},
     {TTeapotGroup::Body, 4, {12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27}},
     {TTeapotGroup::Body, 4, {24, 25, 26, 27, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40}},
     {TTeapotGroup::Lid, 4, {96, 96, 96, 96, 97, 98, 99, 100, 101, 101, 101, 101, 0, 1, 2, 3}},
     {TTeapotGroup::Lid,
      4,
      {0, 1, 2, 3, 106, 107, 108, 109, 110, 111, 112, 113, 114, 115, 116, 117}},
     {TTeapotGroup::Body,
      4,
      {118, 118, 118, 118, 124, 122, 119, 121, 123, 126, 125, 120, 40, 39, 38, 37}},
     {TTeapotGroup::Handle, 2, {41, 42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 54, 55, 56}},
     {TTeapotGroup::Handle, 2, {53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 28, 65, 66, 67}},
     {TTeapotGroup::Spout, 2, {68, 69, 70, 71, 72, 73, 74, 75, 76, 77, 78, 79, 80, 81, 82, 83}},
     {TTeapotGroup::Spout, 2, {80, 81, 82, 83, 84, 85, 86, 87, 88, 89, 90, 91, 92, 93, 94, 95}}}};

/// Where a patch begins in a single point, its first row keeps this part of the way to the second:
/// the surface has a normal there too, and the hole is far smaller than a pixel.
constexpr float PoleGap = 0.002F;

void OpenPole(TBezierPatch& patch) {
    if (patch[0] != patch[1] || patch[0] != patch[2] || patch[0] != patch[3]) return;
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t k = 0; k < 3; ++k)
            patch[column][k] += PoleGap * (patch[column + 4][k] - patch[column][k]);
}

} // namespace

std::span<const TTeapotPatch> TeapotPatches() {
    return Patches;
}

TBezierPatch TeapotImage(const TTeapotPatch& patch, int image) {
    const bool mirrorY = image % 2 == 1;
    const bool mirrorX = image >= 2;
    TBezierPatch result;
    for (std::size_t i = 0; i < 16; ++i) {
        // One mirror turns a patch inside out, which the opposite order of its columns takes back.
        const std::size_t source = mirrorX != mirrorY ? i ^ 3U : i;
        result[i] = Points[patch.Points[source]];
        if (mirrorX) result[i][0] = -result[i][0];
        if (mirrorY) result[i][1] = -result[i][1];
    }
    OpenPole(result);
    return result;
}

} // namespace ZEP
