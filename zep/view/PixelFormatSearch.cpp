#include <zep/view/PixelFormatSearch.h>

#include <zep/framework/DebugLog.h>

#include <algorithm>
#include <array>

namespace ZEP {

namespace {

constexpr std::array ColorBitsInTurn = {32, 24, 16, 15};
constexpr int RequestCount = 48;

void LogFormat(const QString& start, const TPixelFormat& format) {
    if (!DebugLogEnabled()) return;
    DebugLog(start + QString::asprintf(
                         "%d pixeltype %d color %d zbuf %d stencil %d alpha %d accum %d opengl "
                         "%d drawtowindow %d generic %d accel",
                         format.PixelType, format.ColorBits, format.DepthBits, format.StencilBits,
                         format.AlphaBits, format.AccumBits, format.Has(pfSupportOpenGL),
                         format.Has(pfDrawToWindow), format.Has(pfGenericFormat),
                         format.Has(pfGenericAccelerated)));
}

/// The best format so far.
struct Candidate {
    int Index = -1;
    int DepthBits = 0;
    bool DoubleBuffer = false;
};

bool RightRenderer(const TPixelFormat& format, bool accelerated) {
    if (accelerated) return format.Has(pfGenericAccelerated) || !format.Has(pfGenericFormat);
    return (format.Flags & (pfGenericFormat | pfGenericAccelerated)) == pfGenericFormat;
}

bool Acceptable(const TPixelFormat& format, const TFormatRequirement& requirement,
                const Candidate& best) {
    if (format.ColorBits < requirement.ColorBits || format.AlphaBits < requirement.AlphaBits ||
        format.StencilBits < requirement.StencilBits)
        return false;
    if (format.DepthBits < best.DepthBits || format.PixelType != ptRGBA) return false;
    if (!format.Has(pfSupportOpenGL | pfDrawToWindow)) return false;
    if (!RightRenderer(format, requirement.Accelerated)) return false;
    const bool contested = !requirement.Accelerated && best.Index != -1;
    return !contested || (!best.DoubleBuffer && format.Has(pfDoubleBuffer));
}

int BestFormat(TContextBinding& binding, const TFormatRequirement& requirement, int count,
               const std::vector<int>& refused) {
    Candidate best;
    for (int i = 1; i <= count; ++i) {
        if (std::find(refused.begin(), refused.end(), i) != refused.end()) continue;
        TPixelFormat format;
        const bool described = binding.DescribeFormat(i, format);
        LogFormat(QStringLiteral("Checking mode %1 : ").arg(i), format);
        if (!described || !Acceptable(format, requirement, best)) continue;
        DebugLog(QStringLiteral("%1 format looks OK:").arg(i));
        best = {i, format.DepthBits, format.Has(pfDoubleBuffer)};
    }
    return best.Index;
}

TGrantedFormat Granted(TContextBinding& binding, int index) {
    TGrantedFormat granted{index, {}, 0};
    binding.DescribeFormat(index, granted.Format);
    DebugLog(granted.Format.Has(pfDoubleBuffer) ? QStringLiteral("DOUBLEBUFFER on")
                                                : QStringLiteral("DOUBLEBUFFER off"));
    if (granted.Format.Has(pfNeedPalette))
        granted.Palette = binding.RealizePalette(BuildPalette(granted.Format));
    return granted;
}

bool SameQuality(const TPixelFormat& a, const TPixelFormat& b) {
    return a.PixelType == b.PixelType && a.ColorBits == b.ColorBits && a.DepthBits == b.DepthBits &&
           a.StencilBits == b.StencilBits && a.AlphaBits == b.AlphaBits;
}

} // namespace

std::optional<TGrantedFormat> SearchFormat(TContextBinding& binding,
                                           const TFormatRequirement& requirement) {
    const int count = binding.FormatCount();
    DebugLog(QStringLiteral("Trying %1 pixelformats").arg(count));
    std::vector<int> refused;
    for (;;) {
        const int best = BestFormat(binding, requirement, count, refused);
        if (best == -1) {
            DebugLog(QStringLiteral("!!! No OK pixelformat found !!!"));
            return {};
        }
        if (binding.SetFormat(best)) return Granted(binding, best);
        refused.push_back(best);
    }
}

std::optional<TGrantedFormat> SearchFormat(TContextBinding& binding, bool accelerated) {
    for (const int colorBits : ColorBitsInTurn)
        if (const auto granted = SearchFormat(binding, {accelerated, colorBits, 8, 8}))
            return granted;
    return {};
}

TPixelFormat FormatRequest(int counter) {
    constexpr std::array DepthBits = {32, 24, 16};
    constexpr std::array AccumBits = {64, 0};
    TPixelFormat request;
    request.Flags = pfDrawToWindow | pfSupportOpenGL | pfDoubleBuffer;
    if (counter % 2 == 0) request.Flags |= pfGenericAccelerated;
    request.AccumBits = AccumBits[static_cast<std::size_t>(counter / 2 % 2)];
    request.DepthBits = DepthBits[static_cast<std::size_t>(counter / 4 % 3)];
    request.ColorBits = ColorBitsInTurn[static_cast<std::size_t>(counter / 12)];
    request.AlphaBits = 8;
    request.StencilBits = 8;
    return request;
}

std::optional<TGrantedFormat> RequestFormat(TContextBinding& binding) {
    for (int counter = 0; counter < RequestCount; ++counter) {
        const TPixelFormat request = FormatRequest(counter);
        LogFormat(QStringLiteral("Trying "), request);
        TGrantedFormat granted{binding.ChooseFormat(request), {}, 0};
        const bool set = granted.Index > 0 && binding.SetFormat(granted.Index) &&
                         binding.DescribeFormat(granted.Index, granted.Format);
        LogFormat(QStringLiteral("Result "), granted.Format);
        if (set && SameQuality(granted.Format, request)) return granted;
    }
    return {};
}

} // namespace ZEP
