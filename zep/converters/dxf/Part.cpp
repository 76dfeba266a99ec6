#include <zep/converters/dxf/Part.h>

#include <array>
#include <charconv>

namespace ZEP {

namespace {

constexpr int ColorCode = 62;
constexpr int TrueColorCode = 420;
constexpr int LineTypeCode = 6;
constexpr int WeightCode = 370;
constexpr int LayerNumber = 256;

void TakeOver(const TDXFRecord& whole, int code, TDXFRecord& part) {
    if (whole.Has(code)) part.Add(code, whole.Text(code));
}

} // namespace

TDXFInk TDXFInk::OfNumber(int number) {
    if (number == 0) return {};
    return {.Color = number};
}

TDXFInk TDXFInk::OfRaw(int raw) {
    enum { KindByLayer = 0xC0, KindTrueColor = 0xC2, KindNumber = 0xC3 };
    constexpr unsigned shift = 24, rgb = 0xFFFFFF, number = 0xFF;
    const auto bits = static_cast<unsigned>(raw);
    switch (bits >> shift) {
    case KindByLayer:
        return {.Color = LayerNumber};
    case KindTrueColor:
        return {.TrueColor = static_cast<int>(bits & rgb)};
    case KindNumber:
        return OfNumber(static_cast<int>(bits & number));
    default:
        return {};
    }
}

TDXFPart::TDXFPart(const TDXFRecord& whole, std::string_view kind, const TDXFInk& ink) {
    m_record.Begin(kind, whole.Line(), true);
    for (const int code : {8, 48, 60}) TakeOver(whole, code, m_record);
    if (ink.Color || ink.TrueColor) {
        if (ink.Color) Set(ColorCode, *ink.Color);
        if (ink.TrueColor) Set(TrueColorCode, *ink.TrueColor);
    } else {
        TakeOver(whole, ColorCode, m_record);
        TakeOver(whole, TrueColorCode, m_record);
    }
    if (ink.LineType.empty())
        TakeOver(whole, LineTypeCode, m_record);
    else
        Set(LineTypeCode, ink.LineType);
    if (ink.Weight)
        Set(WeightCode, *ink.Weight);
    else
        TakeOver(whole, WeightCode, m_record);
}

TDXFPart& TDXFPart::Set(int code, std::string_view text) {
    m_record.Add(code, text);
    return *this;
}

TDXFPart& TDXFPart::Set(int code, double number) {
    constexpr std::size_t longest = 32;
    std::array<char, longest> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return SetOwn(code, std::string(digits.data(), result.ptr));
}

TDXFPart& TDXFPart::Set(int code, int number) {
    return SetOwn(code, std::to_string(number));
}

TDXFPart& TDXFPart::Set(int code, const TGLArrayd3& point) {
    return Set(code, point[0]).Set(code + 10, point[1]).Set(code + 20, point[2]);
}

TDXFPart& TDXFPart::SetOwn(int code, std::string text) {
    m_texts.push_back(std::move(text));
    m_record.Add(code, m_texts.back());
    return *this;
}

} // namespace ZEP
