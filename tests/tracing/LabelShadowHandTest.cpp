#include "tests/tracing/TracingFixture.h"

#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;
using namespace ZEP::Tracing;

namespace {

/// Fonts are there in an application with windows only.
using TracedLabel = TracingTest;

/// A box of the picture that a label draws of itself, seen straight from before it.
struct TPrint {
    TGLArrayd3 Min{}, Max{};
    QImage Picture;

    [[nodiscard]] bool Holds(double x, double y) const {
        const double u = (x - Min[0]) / (Max[0] - Min[0]);
        const double v = (Max[1] - y) / (Max[1] - Min[1]);
        if (u < 0 || u >= 1 || v < 0 || v >= 1) return false;
        return qRed(Picture.pixel(static_cast<int>(u * Picture.width()),
                                  static_cast<int>(v * Picture.height()))) > 0;
    }
};

TPrint PrintOf(TZEPLabel& label, const OffscreenContext& context) {
    TPrint print;
    label.GetSize(print.Min, print.Max);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(print.Min[0], print.Max[0], print.Min[1], print.Max[1], -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    label.DrawMain(false);
    print.Picture = context.ReadFrame();
    return print;
}

void SetText(TZEPLabel& label) {
    label.SetCaption(QStringLiteral("O4"));
}

} // namespace

// Letters with holes, towards the lamp and turned away from it.
TEST_F(TracedLabel, LettersCastShadows) {
    TZEPLabel label;
    SetText(label);
    label.Material()->FrontFace()->SetEmission(clWhite);
    const TPrint print = PrintOf(label, Context());
    ASSERT_FALSE(print.Picture.isNull());
    const TShape shape = Flat([print](double x, double y) { return print.Holds(x, y); });
    for (const char* place : {"at -2.6 -1 0.6 turn 20 -10 10", "at 1.8 -1 1.2 turn 20 180 0"}) {
        TStage stage;
        for (const char* line : {"ground", "lamp at -3 -2 5 color 0.9 0 0", "shadows both"})
            stage.Do(line);
        const TWords words("label scale 2.4 2.4 2.4 look caster " + std::string(place));
        SetText(stage.Add<TZEPLabel>(shape, words));
        ExpectAsTraced(stage, "label");
    }
}
