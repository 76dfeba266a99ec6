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
