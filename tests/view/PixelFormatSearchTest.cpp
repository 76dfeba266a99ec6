#include <zep/view/PixelFormatSearch.h>

#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/view/FakeBinding.h"
#include <zep/framework/Message.h>
#include <zep/view/Context.h>

namespace ZEP {
namespace {

constexpr std::pair<const char*, std::uint32_t> FlagNames[]{{"double", pfDoubleBuffer},
                                                            {"generic", pfGenericFormat},
                                                            {"helped", pfGenericAccelerated},
                                                            {"paletted", pfNeedPalette}};

/// `32/24 alpha 8 stencil 8 double`, which is fit for everything unless it says otherwise.
TPixelFormat PixelFormatOf(const TWords& words) {
    const std::string bits = words.At(1);
    const auto colon = bits.find('/');
    TPixelFormat format = FakeFormat(std::stoi(bits), std::stoi(bits.substr(colon + 1)));
    for (const auto& [name, flag] : FlagNames)
        if (words.Has(name)) format.Flags |= flag;
    if (words.Has("no-window")) format.Flags &= ~pfDrawToWindow;
    if (words.Has("no-opengl")) format.Flags &= ~pfSupportOpenGL;
    if (words.Has("indexed")) format.PixelType = ptColorIndex;
    for (const auto& [name, field] : {std::pair{"alpha", &TPixelFormat::AlphaBits},
                                      {"stencil", &TPixelFormat::StencilBits},
                                      {"accum", &TPixelFormat::AccumBits}})
        if (words.Has(name)) format.*field = words.Int(words.After(name));
    return format;
}

std::string TextOf(const TPixelFormat& format) {
    std::string text = std::to_string(format.ColorBits) + "/" + std::to_string(format.DepthBits) +
                       " alpha " + std::to_string(format.AlphaBits) + " stencil " +
                       std::to_string(format.StencilBits) + " accum " +
                       std::to_string(format.AccumBits);
    for (const auto& [name, flag] : FlagNames)
        if (format.Has(flag)) text += std::string(" ") + name;
    return text;
}

/// A windowing system under the commands of `tests/data/cases/view/formats.txt`.
class TFormats {
public:
    TFormats() {
        m_former =
            SetMessageHandler([this](const QString& text, const QString& title, TMessageIcon icon) {
                EXPECT_EQ(icon, TMessageIcon::Hand);
                m_said += (", says " + title + ": " + text).toStdString();
            });
    }
    ~TFormats() { SetMessageHandler(m_former); }
    Q_DISABLE_COPY_MOVE(TFormats)

    std::string Do(const std::string& line) {
        const TWords words(line);
        const std::string verb = words.Verb();
        m_system.Calls.clear();
        m_system.Requests.clear();
        m_said.clear();
        if (m_log) m_log->Lines.clear();
        if (verb == "format") m_system.Formats.push_back(PixelFormatOf(words));
        if (verb == "no-formats") m_system.Formats.clear();
        if (verb == "undescribed") m_system.Undescribed.insert(words.Int(1));
        if (verb == "refused") m_system.Refused.insert(words.Int(1));
        if (verb == "chosen") m_system.Choose = [n = words.Int(1)](const auto&) { return n; };
        if (verb == "chosen-by-colour") m_system.Choose = ByColour;
        if (verb == "log") m_log.emplace();
        if (verb == "grants-context") m_system.GrantsContext = words.At(1) != "off";
        if (verb == "closest")
            return std::to_string(ClosestFormat(m_system.Formats, PixelFormatOf(words)));
        if (verb == "search") return Granted(Searched(words));
        if (verb == "request") return Granted(RequestFormat(m_binding));
        if (verb == "request-number") return TextOf(FormatRequest(words.Int(1)));
        if (verb == "context") MakeContext(words);
        return verb == "context" || verb == "create" ? Created() : "";
    }

private:
    /// The format with as many bits of colour as are asked for.
    static int ByColour(const TPixelFormat& request) { return request.ColorBits == 24 ? 1 : 2; }

    std::optional<TGrantedFormat> Searched(const TWords& words) {
        const bool accelerated = words.At(1) == "accelerated";
        if (!words.Has("colours")) return SearchFormat(m_binding, accelerated);
        return SearchFormat(m_binding, {accelerated, words.Int(words.After("colours")), 8, 8});
    }
    std::string Granted(const std::optional<TGrantedFormat>& granted) {
        std::string text = granted ? std::to_string(granted->Index) : "none";
        if (granted) {
            EXPECT_EQ(granted->Format,
                      m_system.Formats[static_cast<std::size_t>(granted->Index) - 1]);
        }
        if (m_system.Calls.size() > 5)
            text += ", " + std::to_string(m_system.Calls.size()) + " calls";
        if (m_system.Calls.size() <= 5)
            for (const std::string& call : m_system.Calls) text += ", " + call;
        return text + Asked();
    }
    void MakeContext(const TWords& words) {
        m_context.emplace(std::make_unique<FakeBinding>(m_system));
        m_context->SetSafeMode(!words.Has("plain"));
        m_context->SetUseSoftwareRenderer(words.Has("software"));
    }
    std::string Created() {
        m_context->CreateContext(1);
        return std::to_string(m_context->PixelFormatIndex()) + ", \"" +
               m_context->Acceleration().toStdString() + "\"" +
               (m_context->UseSoftwareRenderer() ? ", uses software" : "") +
               (m_context->HasContext() ? "" : ", no context") + Asked() + m_said;
    }
    [[nodiscard]] std::string Asked() const {
        std::string text;
        if (!m_system.Requests.empty())
            text = ", " + std::to_string(m_system.Requests.size()) + " requests, first " +
                   TextOf(m_system.Requests[0]);
        if (m_log)
            for (const QString& line : m_log->Lines) text += "\n  " + line.toStdString();
        return text;
    }

    FakeBinding::System m_system;
    FakeBinding m_binding{m_system};
    std::optional<TZEPContext> m_context;
    std::optional<LogKeeper> m_log;
    TMessageHandler m_former;
    std::string m_said;
};

TEST(PixelFormatSearch, GoesAsItIsWrittenDown) {
    ExpectCases("view/formats.txt", [](const TCase& c) {
        TFormats formats;
        return EachLine(c, [&](const std::string& line) { return formats.Do(line); });
    });
}

TEST(PixelFormatSearch, AFormatThatNeedsAPaletteGetsIt) {
    FakeBinding::System system;
    TPixelFormat format = FakeFormat(4, 24, pfNeedPalette);
    format.BlueBits = 4;
    system.Formats = {format};
    FakeBinding binding(system);
    EXPECT_EQ(SearchFormat(binding, {true, 4, 8, 8})->Palette, 77U);
    EXPECT_EQ(system.Palette, BuildPalette(format));
}

TEST(PixelFormat, PaletteSpreadsTheBitsOfEachChannel) {
    TPixelFormat format;
    format.ColorBits = 8;
    format.RedBits = 3;
    format.GreenBits = 3;
    format.GreenShift = 3;
    format.BlueBits = 2;
    format.BlueShift = 6;
    const auto palette = BuildPalette(format);
    ASSERT_EQ(palette.size(), 256U);
    EXPECT_EQ(palette[0], (TPaletteEntry{0, 0, 0}));
    EXPECT_EQ(palette[0b01'010'011], (TPaletteEntry{3 * 255 / 7, 2 * 255 / 7, 255 / 3}));
    EXPECT_EQ(palette[255], (TPaletteEntry{255, 255, 255}));
}

TEST(PixelFormat, PaletteOfStrangeFormatsStaysInBounds) {
    TPixelFormat format;
    format.ColorBits = 32;
    format.GreenBits = 30;
    const auto palette = BuildPalette(format);
    EXPECT_EQ(palette.size(), 65536U);
    EXPECT_EQ(palette.back(), (TPaletteEntry{0, 255, 0}));
    format.ColorBits = -1;
    EXPECT_EQ(BuildPalette(format).size(), 1U);
}

/// Whatever order the system names its formats in, the listed order leads the search to the same.
TEST(PixelFormat, TheListedOrderLeadsTheSearchToTheMostUseful) {
    for (const std::uint32_t kind : {0U, pfGenericFormat, pfGenericFormat | pfGenericAccelerated}) {
        std::vector<TPixelFormat> formats;
        for (const std::uint32_t buffering : {0U, pfDoubleBuffer})
            for (const int depth : {16, 24})
                for (const int accum : {0, 64}) {
                    formats.push_back(FakeFormat(32, depth, kind | buffering));
                    formats.back().AccumBits = accum;
                }
        const TPixelFormat best = formats.back();
        for (std::size_t turn = 0; turn < formats.size(); ++turn) {
            std::rotate(formats.begin(), formats.begin() + 1, formats.end());
            FakeBinding::System system;
            system.Formats = formats;
            std::sort(system.Formats.begin(), system.Formats.end(), ListedBefore);
            FakeBinding binding(system);
            const auto granted = SearchFormat(binding, kind != pfGenericFormat);
            ASSERT_TRUE(granted);
            EXPECT_EQ(granted->Format, best) << kind << ' ' << turn;
        }
    }
}

} // namespace
} // namespace ZEP
