#include "tests/gl/OffscreenTest.h"
#include "tests/objects/RandomScene.h"
#include <zep/sheets/Viewport.h>

#include <QScopeGuard>

namespace ZEP {
namespace {

constexpr int Side = 64;
/// Where a driver's buffer gets full it cuts what is drawn, and then rounds in another way: drawing
/// the same twice gives such a shade once in thousands.
constexpr int Rounding = 8;

/// `ZEP_RANDOM_SCENES=1000` asks for more.
int Seeds() {
    const int asked = qEnvironmentVariableIntValue("ZEP_RANDOM_SCENES");
    return asked > 0 ? asked : 150;
}

class RandomScenesHand : public OffscreenTest {
protected:
    RandomScenesHand() : OffscreenTest(Side, Side) {}

    /// \param before  what was drawn last: its normal, place in a picture and colour
    template <class DrawPass>
    QImage Frame(TRandomScene& random, double before, DrawPass&& drawPass) {
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        const auto done = qScopeGuard([] { glPopAttrib(); });
        glNormal3d(before, 1 - before, 0.3);
        glTexCoord2d(before, before);
        glColor3d(before, before, before);
        glEnable(GL_LIGHTING);
        glEnable(GL_DEPTH_TEST);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
        random.Eye.Apply(Side, Side, -1);
        for (const TZEPDrawState state : {dsAllLights, dsAllObjects, dsTransparent})
            drawPass(state);
        return Context().ReadFrame();
    }
};

/// Each object for itself, in the plain order of calls, whether it is seen or not.
void DrawAlone(TZEPObject& object, TRandomScene& random, TZEPDrawState state) {
    if (!object.Visible()) return;
    if (qobject_cast<TZEPProxy*>(&object) || qobject_cast<TZEPBatch*>(&object) ||
        qobject_cast<TZEPViewport*>(&object) || qobject_cast<TZEPLogicalObject*>(&object))
        return object.Draw(random.Scene, state, random.Kind); // in ways of their own
    glPushMatrix();
    glMultMatrixd(object.GetMatrix()[0].data());
    const bool draft = random.Kind == dkDraft || object.DrawType() == dtLine;
    if (state == dsAllLights) object.DrawLight(false);
    if (state == dsAllObjects) object.DrawMain(draft);
    if (state == dsTransparent) object.DrawTransparent(draft);
    for (int i = 0; i < object.GetItemsCount(); ++i) DrawAlone(*object.GetItem(i), random, state);
    glPopMatrix();
}

void DrawAllAlone(TRandomScene& random, TZEPDrawState state) {
    if (state == dsAllLights)
        for (GLenum light = GL_LIGHT0; light <= GL_LIGHT7; ++light) glDisable(light);
    if (state == dsTransparent) {
        glEnable(GL_BLEND);
        glDepthMask(GL_FALSE);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    for (int i = 0; i < random.Scene.GetItemsCount(); ++i)
        DrawAlone(*random.Scene.GetItem(i), random, state);
    if (state == dsTransparent) glDepthMask(GL_TRUE);
}

} // namespace

TEST_F(RandomScenesHand, LookAsTheirObjectsDrawnAlone) {
    int drawn = 0;
    for (int seed = 1; seed <= Seeds(); ++seed) {
        TRandomScene random(static_cast<unsigned>(seed));
        const auto alone = [&](TZEPDrawState state) { DrawAllAlone(random, state); };
        const auto together = [&](TZEPDrawState state) {
            random.Scene.Draw(random.Scene, state, random.Kind);
        };
        Frame(random, 0, alone); // the first draw of smooth shapes changes their materials
        const QImage expected = Frame(random, 0, alone);
        EXPECT_EQ(Different(Frame(random, 1, together), expected, Rounding), 0) << "seed " << seed;
        random.KeepTextures();
        Frame(random, 1, together);
        EXPECT_EQ(Different(Frame(random, 1, together), expected, Rounding), 0) << "kept " << seed;
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "seed " << seed;
        QImage empty(Side, Side, QImage::Format_RGB32);
        empty.fill(Qt::black);
        drawn += Different(expected, empty, Rounding);
    }
    EXPECT_GT(drawn, Seeds() * Side * Side / 20);
}

TEST_F(RandomScenesHand, BatchesShowWhatTheyGatherAsItIsAlone) {
    constexpr int EdgeShade = 40; // places are rounded in another way, which may move an edge
    constexpr int FewPixels = 16;
    for (int seed = 1; seed <= Seeds(); ++seed) {
        const auto frame = [&](const QString& root) {
            TRandomScene random(static_cast<unsigned>(seed), root);
            glEnable(GL_LIGHTING);
            glEnable(GL_DEPTH_TEST);
            random.Scene.Render(&random.Eye, Side, Side, false);
            random.Scene.Render(&random.Eye, Side, Side, false);
            return Context().ReadFrame();
        };
        const QImage alone = frame(QStringLiteral("TZEPNode"));
        const QImage batched = frame(QStringLiteral("TZEPBatch"));
        EXPECT_LE(Different(batched, alone, EdgeShade), FewPixels) << "seed " << seed;
    }
}

} // namespace ZEP
