#include "tests/objects/TextScene.h"

namespace ZEP {
namespace {

/// How commands are told to the scene that they change.
enum class TTold { AtOnce, ByHand, InBrackets };

/// A scene under the commands behind its stream, in a panel of 100 by 100 pixels whose camera is
/// "Eye", or looks from above: then a unit is ten pixels, and the origin lies in the middle. Beside
/// the commands that edit it:
///
///     > at 1 2  3 -4.5                 the colours at these places, in steps that smoothing does
///                                      not reach
///     > part green 1 2 is 127          of a colour, told unless it is that nearly, or `within` 3
///     > seen yellow                    whether none, few or many pixels have that colour
///     > show B widths 2 even-light     rules of a batch, or of the `panel`: `background`,
///                                      `widths`, `shading`, `even-light`, `wire`
///     > size 300                       of the panel from then on, its width
class TSeenScene : public TTextScene {
public:
    TSeenScene(const std::string& stream, TTold told) : TTextScene(Whole(stream)) {
        m_panel.resize(100, 100);
        m_panel.SetCamera(Eye());
        Scene.SetManualUpdate(told == TTold::ByHand);
        if (told == TTold::InBrackets)
            ForEachObject(Scene, [](TZEPObject& object) { object.BeginUpdate(); });
    }

    std::string Do(const std::string& command) {
        const TWords words(command);
        const std::string verb = words.Verb();
        Edit(words, command);
        if (verb == "at") return At(words);
        if (verb == "part") return Part(words);
        if (verb == "seen") return Seen(words.At(1));
        if (verb == "size") m_panel.resize(words.Int(1), 100);
        if (verb == "show" && words.At(1) == "panel") m_panel.SetShown(ShownBy(words));
        if (verb == "show" && words.At(1) != "panel")
            dynamic_cast<TZEPBatch&>(Object(words.At(1))).SetShown(ShownBy(words));
        return {};
    }

private:
    /// Of a stream that tells all numbers objects have what they are told and no more, as a host's.
    static std::string Whole(const std::string& stream) {
        TTextScene scene(stream);
        return SavedAs(TStreamForm::Binary, scene.Scene);
    }
    TZEPCamera* Eye() {
        if (auto* own = qobject_cast<TZEPCamera*>(Scene.FindComponent(QStringLiteral("Eye"))))
            return own;
        auto* eye = Add<TZEPCamera>(&Scene);
        eye->SetOrthographic(true);
        eye->SetFOVY(90);
        eye->Position()->SetData(0, -0.005, 5);
        return eye;
    }
    [[nodiscard]] static TZEPShown ShownBy(const TWords& words) {
        TZEPShown shown;
        if (words.Has("background"))
            shown.Background = ColorByName(words.Word("background"))
                                   .value_or(words.Int(words.After("background")));
        if (words.Has("widths")) shown.Widths = words.Number(words.After("widths"));
        if (words.Has("smooth")) shown.Shading = TZEPShading::Smooth;
        if (words.Has("flat")) shown.Shading = TZEPShading::Flat;
        shown.EvenLight = words.Has("even-light");
        shown.Wire = words.Has("wire");
        shown.SortTransparent = words.Has("sorted");
        if (words.Has("on-faces")) shown.Edges = TZEPEdges::OnFaces;
        if (words.Has("alone")) shown.Edges = TZEPEdges::Alone;
        return shown;
    }
    static QColor ColorAt(const QImage& frame, double x, double y) {
        const double ratio = frame.width() / 10.0;
        return frame.pixelColor(static_cast<int>(frame.width() / 2.0 + x * ratio),
                                static_cast<int>(frame.height() / 2.0 - y * ratio));
    }
    static std::string NameOf(const QColor& color) {
        const auto step = [](int part) { return part > 200 ? 255 : part < 50 ? 0 : 128; };
        const QColor rounded(step(color.red()), step(color.green()), step(color.blue()));
        for (const char* name : {"black", "red", "lime", "blue", "yellow", "white"})
            if (rounded == QColor(QLatin1String(name))) return name;
        return rounded.name().toStdString();
    }
    std::string At(const TWords& words) {
        const QImage frame = m_panel.GrabFrame();
        std::string names;
        for (std::size_t i = 1; i + 1 < words.Count(); i += 2)
            names += NameOf(ColorAt(frame, words.Number(i), words.Number(i + 1))) + " ";
        return names;
    }
    std::string Part(const TWords& words) {
        const QColor color = ColorAt(m_panel.GrabFrame(), words.Number(2), words.Number(3));
        const int part = words.Has("red")     ? color.red()
                         : words.Has("green") ? color.green()
                                              : color.blue();
        const int within = words.Has("within") ? words.Int(words.After("within")) : 6;
        const bool isNear = std::abs(part - words.Int(words.After("is"))) <= within;
        return isNear ? std::string() : std::to_string(part);
    }
    std::string Seen(const std::string& name) {
        const QImage frame = m_panel.GrabFrame();
        int count = 0;
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x)
                count += NameOf(frame.pixelColor(x, y)) == name ? 1 : 0;
        return count == 0 ? "none" : count < 20 ? "few" : "many";
    }

    TZEPPanel m_panel;
};

using SeenCasesHand = testing::TestWithParam<std::string>;

/// What is drawn is what there is, whether the scene was told of it or not.
TEST_P(SeenCasesHand, LookLikeThat) {
    ExpectCases(GetParam(), [](const TCase& c) {
        const std::string seen = Answers<TSeenScene>(c, TTold::AtOnce);
        EXPECT_EQ(Answers<TSeenScene>(c, TTold::ByHand), seen) << c.Name << ", updated by hand";
        EXPECT_EQ(Answers<TSeenScene>(c, TTold::InBrackets), seen) << c.Name << ", in brackets";
        return seen;
    });
}

INSTANTIATE_TEST_SUITE_P(File, SeenCasesHand, testing::ValuesIn(CaseFiles("seen")), CaseName);

} // namespace
} // namespace ZEP
