#include "tests/gl/CallRecorder.h"
#include <zep/appearance/materials/Material.h>

#include <gtest/gtest.h>

using namespace ZEP;

namespace {

const std::vector<std::string> Front{
    "glMaterialfv(GL_FRONT, GL_AMBIENT, 1 0 0 0.75)",
    "glMaterialfv(GL_FRONT, GL_DIFFUSE, 0 1 0 0.75)",
    "glMaterialfv(GL_FRONT, GL_SPECULAR, 0 0 1 0.75)",
    "glMaterialfv(GL_FRONT, GL_EMISSION, 0.2 0.4 0.6 0.75)",
    "glMaterialfv(GL_FRONT, GL_SHININESS, 12.5)",
};
const std::vector<std::string> Back{
    "glMaterialfv(GL_BACK, GL_AMBIENT, 0.25098 0.25098 0.25098 0.75)",
    "glMaterialfv(GL_BACK, GL_DIFFUSE, 0.752941 0.752941 0.752941 0.75)",
    "glMaterialfv(GL_BACK, GL_SPECULAR, 0 0 0 0.75)",
    "glMaterialfv(GL_BACK, GL_EMISSION, 0 0 0 0.75)",
    "glMaterialfv(GL_BACK, GL_SHININESS, 0)",
};

std::vector<std::string> Both() {
    std::vector<std::string> calls = Front;
    calls.insert(calls.end(), Back.begin(), Back.end());
    return calls;
}

} // namespace

TEST(MaterialCall, EachSideIsAppliedAloneOrBothWithTheFrontFirst) {
    TZEPMaterial material({});
    material.SetTransparency(0.25F);
    material.FrontFace()->SetAmbient(clRed);
    material.FrontFace()->SetDiffuse(clLime);
    material.FrontFace()->SetSpecular(clBlue);
    material.FrontFace()->SetEmission(0x996633);
    material.FrontFace()->SetShininess(12.5F);
    struct Case {
        GLenum Face;
        std::vector<std::string> Calls;
    };
    for (const Case& c :
         {Case{GL_FRONT, Front}, Case{GL_BACK, Back}, Case{GL_FRONT_AND_BACK, Both()}}) {
        const GlCalls calls;
        material.ApplayMaterial(c.Face);
        ExpectCalls(calls, c.Calls);
    }
    const GlCalls calls;
    material.CancelMaterial();
    ExpectNoCalls(calls);
}

TEST(MaterialCall, ANewOneHasNoAlphaAtAll) {
    TZEPMaterial material({});
    const GlCalls calls;
    material.ApplayMaterial(GL_BACK);
    EXPECT_EQ(calls.List()[1], "glMaterialfv(GL_BACK, GL_DIFFUSE, 0.752941 0.752941 0.752941 0)");
}
