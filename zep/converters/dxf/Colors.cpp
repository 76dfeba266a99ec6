#include <zep/converters/dxf/Colors.h>

#include <limits>

namespace ZEP {

constinit const std::array<TColor, 256> DXF_Layer_Colors = [] {
    constexpr std::uint32_t first[] = {0x000000, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFFFF00, 0xFF0000,
                                       0x800080, 0xFFFFFF, 0x808080, 0x808080, 0x008000, 0x8080FF,
                                       0x0000C0, 0x6060D0, 0x000090, 0x404090, 0x000080, 0x404080,
                                       0x000040, 0x202040, 0x0040FF, 0x80A0FF, 0x0030C0, 0x6080C0,
                                       0x002090, 0x406090, 0x002080, 0x304070, 0x001040, 0x203050};
    std::array<TColor, 256> colors{};
    for (std::size_t i = 0; i < colors.size(); ++i)
        colors[i] = i < std::size(first) ? TColor(first[i]) : clWhite;
    return colors;
}();

namespace {

int SquaredDistance(std::uint32_t a, std::uint32_t b) {
    int sum = 0;
    for (const unsigned shift : {0U, 8U, 16U}) {
        const int difference =
            static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF);
        sum += difference * difference;
    }
    return sum;
}

} // namespace

int find_DXF_color(TColor color) {
    const std::uint32_t wanted = ColorToRGB(color);
    int nearest = 0;
    int best = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < DXF_Layer_Colors.size(); ++i) {
        const int distance = SquaredDistance(DXF_Layer_Colors[i].Value, wanted);
        if (distance >= best) continue;
        best = distance;
        nearest = static_cast<int>(i);
    }
    return nearest;
}

std::optional<TColor> DXFColor(int number) {
    constexpr int last = static_cast<int>(DXF_Layer_Colors.size()) - 1;
    if (number < -last || number > last) return std::nullopt;
    return DXF_Layer_Colors[static_cast<std::size_t>(number < 0 ? -number : number)];
}

} // namespace ZEP
