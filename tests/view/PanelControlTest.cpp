#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/view/FakePanel.h"

#include <map>
#include <random>

namespace ZEP {
namespace {

constexpr TZEPMouseMode AllModes[] = {mmNone, mmSelect, mmPan, mmTruck,      mmOrbit,
                                      mmRoll, mmDolly,  mmFOV, mmPerspective};

/// A panel under the commands of `tests/data/cases/view/mouse.txt`: each answers what the panel and
/// its camera were told, and in brackets how the panel then is, where it is not idle.
class TMousedPanel : public FakePanel {
public:
    std::string Do(const std::string& line) {
        const TWords words(line);
        const std::string verb = words.Verb();
        if (verb == "left") Control.SetMouseLeft(Mode(words));
        if (verb == "right") Control.SetMouseRight(Mode(words));
        if (verb == "wheel") Control.SetMouseWheel(Mode(words));
        if (verb == "press") Press(words.Int(1), words.Int(2), Button(words), Held(words));
        if (verb == "move") Move(words.Int(1), words.Int(2), Held(words));
        if (verb == "release") Release(words.Int(1), words.Int(2), Button(words), Held(words));
        if (verb == "turn") Control.MouseWheelMove(*this, {}, words.Int(1), {5, 5});
        if (verb == "cancel") Control.Cancel(*this);
        if (verb == "animate") Scene.SetAnimation(words.At(1) != "off");
        if (verb == "every-release-selects") SelectsInMouseUp = true;
        if (verb == "free-camera") delete View;
        if (verb == "no-camera") View = nullptr;
        if (verb == "camera") View = m_first;
        if (verb == "other-camera") View = new NotingCamera(&Scene, Notes);
        return (Taken().join(QStringLiteral(", ")) + State()).trimmed().toStdString();
    }

private:
    static TZEPMouseMode Mode(const TWords& words) {
        static const std::map<std::string, TZEPMouseMode> modes{
            {"none", mmNone},   {"select", mmSelect},
            {"pan", mmPan},     {"truck", mmTruck},
            {"orbit", mmOrbit}, {"roll", mmRoll},
            {"fov", mmFOV},     {"perspective", mmPerspective},
            {"dolly", mmDolly}};
        const auto found = modes.find(words.At(1));
        return found == modes.end() ? static_cast<TZEPMouseMode>(words.Int(1)) : found->second;
    }
    static TMouseButton Button(const TWords& words) {
        return words.Has("by-right") ? mbRight : words.Has("by-middle") ? mbMiddle : mbLeft;
    }
    /// A move without a word holds the left button, as does a press.
    static TShiftState Held(const TWords& words) {
        TShiftState held;
        for (const auto& [word, state] :
             {std::pair{"left", ssLeft}, {"right", ssRight}, {"middle", ssMiddle}})
            if (words.Has(word)) held |= state;
        if (words.Count() == 3 && words.Verb() != "release") held = ssLeft;
        return held;
    }
    [[nodiscard]] QString State() const {
        QStringList state;
        if (Control.MouseDowned()) state << "down";
        if (Captured != Control.MouseDowned()) state << (Captured ? "captured" : "not captured");
        if (Scene.Animation()) state << "animated";
        if (Cursor != -1) state << QStringLiteral("cursor %1").arg(Cursor);
        if (!Band.isNull())
            state << QString::asprintf("band %d,%d to %d,%d", Band.left(), Band.top(), Band.right(),
                                       Band.bottom());
        return state.isEmpty() ? QString() : QStringLiteral(" [") + state.join(u' ') + u']';
    }

    TZEPCamera* m_first = View;
};

TEST(PanelControl, TheMouseMakesWhatIsWrittenDown) {
    ExpectCases("view/mouse.txt", [](const TCase& c) {
        TMousedPanel panel;
        return EachLine(c, [&](const std::string& line) { return panel.Do(line); });
    });
}

TEST(PanelControl, ADragBackToItsStartGivesTheVeryViewBack) {
    std::mt19937 random(7);
    std::uniform_int_distribution place(-50, 450);
    for (const TZEPMouseMode mode : AllModes) {
        for (const bool orthographic : {false, true}) {
            for (const double field : {43.6, 110.0}) {
                FakePanel panel;
                panel.View->SetOrthographic(orthographic);
                panel.View->SetFOVY(field);
                panel.View->Orbit(33.3, 11.1);
                panel.View->Pan(1.7, -2.9);
                panel.View->Roll(77.7);
                panel.View->FOV(0.3);
                panel.Control.SetMouseLeft(mode);
                const ViewState before(*panel.View);
                panel.Press(123, 77);
                for (int i = 0; i < 20; ++i) panel.Move(place(random), place(random));
                panel.Move(123, 77);
                EXPECT_EQ(ViewState(*panel.View), before) << mode << ' ' << field;
                panel.Release(123, 77);
                EXPECT_EQ(ViewState(*panel.View), before) << mode << ' ' << field;
            }
        }
    }
}

} // namespace
} // namespace ZEP
