#include "tests/gl/CallRecorder.h"
#include <zep/appearance/effects/LineShape.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/scene/Scene.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct TestShape : TZEPLineShape {
    using TZEPLineShape::TZEPLineShape;
    void DrawShape(GLenum face, bool draft) override {
        GlCalls::Note("shape " + std::to_string(face) + (draft ? " draft" : " full"));
    }
    void DrawSelection() override { GlCalls::Note("selection"); }
};

/// The diffuse alphas that were set, one for each application of a material, and what was drawn.
std::vector<std::string> Drawn(const GlCalls& calls) {
    std::vector<std::string> list;
    for (const std::string& call : calls.List()) {
        if (call.starts_with("glMaterialfv(GL_FRONT, GL_DIFFUSE")) list.push_back("material");
        if (call.starts_with("shape") || call == "selection") list.push_back(call);
    }
    return list;
}

} // namespace

TEST(ShapeCall, LineAttributesStandAroundTheLinesInOrder) {
    struct Case {
        TPenStyle Style;
        const char* Stipple;
    };
    for (const Case& c : {Case{psSolid, nullptr}, Case{psDash, "0xffc3"}, Case{psDot, "0xcccc"},
                          Case{psDashDot, "0xffcc"}, Case{psDashDotDot, "0xfccc"},
                          Case{psClear, "0x0"}, Case{psInsideFrame, "0xffff"}}) {
        for (const bool smooth : {true, false}) {
            TestShape shape;
            shape.SetStyle(c.Style);
            shape.SetSmooth(smooth);
            shape.SetWidth(2.5F);
            std::vector<std::string> expected{"glPushAttrib(GL_LINE_BIT)", "glLineWidth(2.5)"};
            if (c.Stipple) {
                expected.push_back("glLineStipple(1, " + std::string(c.Stipple) + ")");
                expected.emplace_back("glEnable(GL_LINE_STIPPLE)");
            }
            expected.emplace_back("glNormal3b(127, 0, 0)");
            if (smooth) expected.emplace_back("glEnable(GL_LINE_SMOOTH)");
            expected.emplace_back("shape 1032 draft");
            expected.emplace_back("glPopAttrib()");
            const GlCalls calls;
            shape.DrawSpecific(GL_FRONT_AND_BACK, true);
            ExpectCalls(calls, expected);
        }
    }
}

TEST(ShapeCall, IsDrawnInThePassThatItsMaterialAndSmoothnessAskFor) {
    struct Case {
        const char* Name;
        bool Smooth;
        float Transparency;
        std::vector<std::string> Main, Transparent;
    };
    const std::vector<std::string> nothing;
    const std::vector<std::string> once{"material", "shape 1032 full"};
    for (const Case& c :
         {Case{"opaque", false, 0, once, nothing}, Case{"smooth", true, 0, nothing, once},
          Case{"transparent", false, 0.5F, nothing, once},
          Case{"smooth and transparent", true, 0.5F, nothing, once}}) {
        TestShape shape;
        shape.SetSmooth(c.Smooth);
        if (c.Transparency > 0) shape.Material()->SetTransparency(c.Transparency);
        GlCalls calls;
        shape.DrawMain(false);
        EXPECT_EQ(Drawn(calls), c.Main) << c.Name;
        calls.Clear();
        shape.DrawTransparent(false);
        EXPECT_EQ(Drawn(calls), c.Transparent) << c.Name;
    }
}

TEST(ShapeCall, SmoothingLeavesATinyTransparencyInTheMaterial) {
    for (const bool ownMaterial : {true, false}) {
        TestShape shape;
        shape.SetColor(clRed);
        if (ownMaterial) shape.Material()->SetTransparency(0);
        const GlCalls calls;
        shape.DrawTransparent(false);
        EXPECT_THAT(calls.Of({"glMaterialfv"}),
                    testing::Contains("glMaterialfv(GL_BACK, GL_DIFFUSE, 1 0 0 0.99999)"));
        EXPECT_EQ(shape.Material()->Transparency(), 1e-5F);
        EXPECT_EQ(shape.Material()->FrontFace()->Diffuse(), clRed);

        shape.SetSmooth(false);
        const GlCalls later;
        shape.DrawMain(false);
        EXPECT_THAT(Drawn(later), IsEmpty()) << "its material counts as transparent now";
    }
}

TEST(ShapeCall, SmoothingReachesTheMaterialOfTheLibrary) {
    TZEPMaterialLibrary library;
    library.Materials()->Add();
    TZEPScene scene;
    scene.SetMaterialLibrary(&library);
    TestShape shape;
    TestShape opaque;
    for (TestShape* s : {&shape, &opaque}) {
        s->SetParentComponent(&scene);
        s->SetMaterialIndex(0);
    }
    opaque.SetSmooth(false);
    shape.DrawTransparent(false);
    EXPECT_EQ(library.Materials()->Item(0)->Material()->Transparency(), 1e-5F);
    const GlCalls calls;
    opaque.DrawMain(false);
    EXPECT_THAT(Drawn(calls), IsEmpty());
    opaque.DrawTransparent(false);
    EXPECT_THAT(Drawn(calls), ElementsAre("material", "shape 1032 full"));
    scene.SetMaterialLibrary(nullptr);
}

TEST(ShapeCall, TheSelectionIsDrawnAfterTheShape) {
    TestShape shape;
    shape.SetSelected(true);
    const GlCalls calls;
    shape.DrawTransparent(true);
    EXPECT_THAT(Drawn(calls), ElementsAre("material", "shape 1032 draft", "selection"));
    EXPECT_EQ(calls.List().back(), "selection");
}
