#include <zep/view/PixelFormatSearch.h>

#include "tests/view/FakeBinding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ZEP {
namespace {

constexpr std::uint32_t Software = pfGenericFormat;
constexpr std::uint32_t Helped = pfGenericFormat | pfGenericAccelerated;
constexpr TFormatRequirement Accelerated{true, 32, 8, 8};
constexpr TFormatRequirement Unaided{false, 32, 8, 8};

/// The good format with one thing changed.
template <class Field, class Value>
TPixelFormat Except(Field field, Value value) {
    TPixelFormat format = FakeFormat(32, 24);
    format.*field = value;
    return format;
}

struct SearchCase {
    const char* Name;
    TFormatRequirement Requirement;
    std::vector<TPixelFormat> Formats;
    int Expected; ///< 0: none
};

class Search : public testing::TestWithParam<SearchCase> {};

TEST_P(Search, ChoosesTheFormat) {
    FakeBinding::System system;
    system.Formats = GetParam().Formats;
    FakeBinding binding(system);
    const auto granted = SearchFormat(binding, GetParam().Requirement);
    EXPECT_EQ(granted ? granted->Index : 0, GetParam().Expected);
    if (granted) {
        EXPECT_EQ(granted->Format, system.Formats[static_cast<std::size_t>(granted->Index) - 1]);
    }
}

const TPixelFormat Good = FakeFormat(32, 24);
const TPixelFormat Slow = FakeFormat(32, 24, Software);
const TPixelFormat SlowDouble = FakeFormat(32, 24, Software | pfDoubleBuffer);

INSTANTIATE_TEST_SUITE_P(
    Formats, Search,
    testing::Values(
        SearchCase{"NoFormats", Accelerated, {}, 0}, SearchCase{"OneGood", Accelerated, {Good}, 1},
        SearchCase{"TooFewColors", Accelerated, {FakeFormat(24, 24)}, 0},
        SearchCase{"TooLittleAlpha", Accelerated, {Except(&TPixelFormat::AlphaBits, 7)}, 0},
        SearchCase{"TooLittleStencil", Accelerated, {Except(&TPixelFormat::StencilBits, 1)}, 0},
        SearchCase{"NotRgba", Accelerated, {Except(&TPixelFormat::PixelType, ptColorIndex)}, 0},
        SearchCase{"NoOpenGL", Accelerated, {Except(&TPixelFormat::Flags, pfDrawToWindow)}, 0},
        SearchCase{"NoWindow", Accelerated, {Except(&TPixelFormat::Flags, pfSupportOpenGL)}, 0},
        SearchCase{"SoftwareWhereAcceleratedIsAsked", Accelerated, {Slow}, 0},
        SearchCase{"GenericAcceleratedIsAccelerated", Accelerated, {FakeFormat(32, 24, Helped)}, 1},
        SearchCase{"AcceleratedWhereSoftwareIsAsked",
                   Unaided,
                   {Good, FakeFormat(32, 24, Helped), FakeFormat(32, 24, pfGenericAccelerated)},
                   0},
        SearchCase{"SoftwareWhereAsked", Unaided, {Good, Slow}, 2},
        SearchCase{"DeepestWins",
                   Accelerated,
                   {FakeFormat(32, 16), FakeFormat(32, 32), FakeFormat(32, 24)},
                   2},
        SearchCase{"LastOfEqualsWins", Accelerated, {Good, Good, FakeFormat(32, 16)}, 2},
        SearchCase{"DepthDecidesBeforeDoubleBuffer",
                   Accelerated,
                   {FakeFormat(32, 24, pfDoubleBuffer), Good},
                   2},
        SearchCase{"MoreThanAskedIsFine", Accelerated, {FakeFormat(64, 24)}, 1},
        SearchCase{"SoftwareSingleYieldsToDouble", Unaided, {Slow, SlowDouble}, 2},
        SearchCase{
            "SoftwareSingleStaysAgainstSingle", Unaided, {Slow, FakeFormat(32, 32, Software)}, 1},
        SearchCase{"SoftwareDoubleStays",
                   Unaided,
                   {SlowDouble, FakeFormat(32, 32, Software | pfDoubleBuffer)},
                   1}),
    [](const auto& tested) { return std::string(tested.param.Name); });

TEST(FormatSearch, UndescribedFormatsArePassedOver) {
    FakeBinding::System system;
    system.Formats = {Good, Good};
    system.Undescribed = {2};
    FakeBinding binding(system);
    EXPECT_EQ(SearchFormat(binding, Accelerated)->Index, 1);
}

TEST(FormatSearch, RefusedFormatsAreLeftOutUntilOneIsGranted) {
    FakeBinding::System system;
    system.Formats = {FakeFormat(32, 16), Good, Good};
    system.Refused = {2, 3};
    FakeBinding binding(system);
    EXPECT_EQ(SearchFormat(binding, Accelerated)->Index, 1);
    EXPECT_THAT(system.Calls, testing::ElementsAre("set 3", "set 2", "set 1"));

    system.Refused.insert(1);
    system.Calls.clear();
    EXPECT_FALSE(SearchFormat(binding, Accelerated));
    EXPECT_EQ(system.Calls.size(), 3U);
}

TEST(FormatSearch, FewerColorsAreTriedInTurn) {
    for (const int bits : {32, 24, 16, 15, 14}) {
        FakeBinding::System system;
        system.Formats = {FakeFormat(bits, 24), FakeFormat(32, 24, Software)};
        FakeBinding binding(system);
        const auto granted = SearchFormat(binding, true);
        EXPECT_EQ(granted ? granted->Index : 0, bits >= 15 ? 1 : 0) << bits;
    }
}

TEST(FormatSearch, PaletteFormatsGetTheirPalette) {
    FakeBinding::System system;
    TPixelFormat format = FakeFormat(32, 24, pfNeedPalette);
    format.ColorBits = 4;
    format.BlueBits = 4;
    system.Formats = {format};
    FakeBinding binding(system);
    EXPECT_EQ(SearchFormat(binding, {true, 4, 8, 8})->Palette, 77U);
    EXPECT_EQ(system.Palette, BuildPalette(format));
}

TEST(FormatSearch, LogTellsEveryStep) {
    FakeBinding::System system;
    TPixelFormat mixed = FakeFormat(24, 16, Helped | pfDoubleBuffer);
    mixed.AccumBits = 64;
    system.Formats = {mixed, Slow};
    FakeBinding binding(system);
    const LogKeeper log;
    EXPECT_FALSE(SearchFormat(binding, Accelerated));
    ASSERT_TRUE(SearchFormat(binding, {true, 24, 8, 8}));
    const QString first = QStringLiteral(
        "Checking mode 1 : 0 pixeltype 24 color 16 zbuf 8 stencil 8 alpha 64 accum 1 opengl 1 "
        "drawtowindow 1 generic 1 accel");
    const QString second = QStringLiteral(
        "Checking mode 2 : 0 pixeltype 32 color 24 zbuf 8 stencil 8 alpha 0 accum 1 opengl 1 "
        "drawtowindow 1 generic 0 accel");
    EXPECT_EQ(log.Lines, (QStringList{QStringLiteral("Trying 2 pixelformats"), first, second,
                                      QStringLiteral("!!! No OK pixelformat found !!!"),
                                      QStringLiteral("Trying 2 pixelformats"), first,
                                      QStringLiteral("1 format looks OK:"), second,
                                      QStringLiteral("DOUBLEBUFFER on")}));
}

TEST(FormatRequests, AreAllCombinationsOnce) {
    std::set<std::tuple<std::uint32_t, int, int, int>> seen;
    for (int counter = 0; counter < 48; ++counter) {
        const TPixelFormat request = FormatRequest(counter);
        EXPECT_EQ(request.Flags, counter % 2 ? 37U : 37U + 0x1000U) << counter;
        EXPECT_EQ(request.AlphaBits, 8);
        EXPECT_EQ(request.StencilBits, 8);
        EXPECT_THAT(request.ColorBits, testing::AnyOf(32, 24, 16, 15));
        EXPECT_THAT(request.DepthBits, testing::AnyOf(32, 24, 16));
        EXPECT_THAT(request.AccumBits, testing::AnyOf(64, 0));
        seen.emplace(request.Flags, request.ColorBits, request.DepthBits, request.AccumBits);
    }
    EXPECT_EQ(seen.size(), 48U);
}

TEST(FormatRequests, StopAtTheFirstExactAnswer) {
    FakeBinding::System system;
    system.Formats = {FakeFormat(24, 24), FakeFormat(32, 24, Software)};
    system.Choose = [](const TPixelFormat& request) { return request.ColorBits == 24 ? 1 : 2; };
    FakeBinding binding(system);
    const auto granted = RequestFormat(binding);
    ASSERT_TRUE(granted);
    EXPECT_EQ(granted->Index, 2); // 32 bits of colour, 24 of depth: the fifth request
    EXPECT_EQ(system.Requests.size(), 5U);
}

TEST(FormatRequests, EveryQualityMustBeExact) {
    struct Case {
        const char* Name;
        TPixelFormat Answer;
        bool Refused;
    };
    const std::vector<Case> cases = {
        {"pixel type", Except(&TPixelFormat::PixelType, ptColorIndex), false},
        {"colour", FakeFormat(30, 24), false},
        {"depth", FakeFormat(32, 23), false},
        {"stencil", Except(&TPixelFormat::StencilBits, 16), false},
        {"alpha", Except(&TPixelFormat::AlphaBits, 16), false},
        {"refused", Good, true},
    };
    for (const Case& c : cases) {
        FakeBinding::System system;
        system.Formats = {c.Answer};
        if (c.Refused) system.Refused = {1};
        system.Choose = [](const TPixelFormat&) { return 1; };
        FakeBinding binding(system);
        EXPECT_FALSE(RequestFormat(binding)) << c.Name;
        EXPECT_EQ(system.Requests.size(), 48U) << c.Name;
    }
}

TEST(FormatRequests, LogTellsRequestAndResult) {
    FakeBinding::System system;
    system.Formats = {FakeFormat(32, 32)};
    system.Choose = [](const TPixelFormat&) { return 1; };
    FakeBinding binding(system);
    const LogKeeper log;
    ASSERT_TRUE(RequestFormat(binding));
    EXPECT_EQ(log.Lines,
              (QStringList{
                  QStringLiteral("Trying 0 pixeltype 32 color 32 zbuf 8 stencil 8 alpha 64 accum "
                                 "1 opengl 1 drawtowindow 0 generic 1 accel"),
                  QStringLiteral("Result 0 pixeltype 32 color 32 zbuf 8 stencil 8 alpha 0 accum "
                                 "1 opengl 1 drawtowindow 0 generic 0 accel")}));
}

} // namespace
} // namespace ZEP
