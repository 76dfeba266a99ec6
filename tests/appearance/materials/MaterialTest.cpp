#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/appearance/materials/SharedMaterials.h>

#include <zep/framework/Exception.h>
#include <zep/framework/Property.h>

#include <gmock/gmock.h>

#include <limits>

using namespace ZEP;
using testing::ElementsAre;

namespace {

struct User : TZEPCollectionUser {
    std::vector<TObject*> Senders;
    bool WantsInvalidation() const override { return true; }
    void Invalidate(TObject* sender) override { Senders.push_back(sender); }
};

struct Listener : TObject {
    std::vector<TObject*> Senders;
    void Changed(TObject* sender) { Senders.push_back(sender); }
    TNotifyEvent Event() { return Notify<&Listener::Changed>(this); }
};

std::vector<float> Alphas(const TZEPFaceMaterial& face) {
    std::vector<float> alphas;
    for (int i = TZEPFaceMaterial::AmbientColor; i <= TZEPFaceMaterial::EmissionColor; ++i)
        alphas.push_back(face.RGBA(static_cast<TZEPFaceMaterial::ColorIndex>(i))[3]);
    return alphas;
}

} // namespace

TEST(Material, TransparencyIsKeptAndReachesTheFacesClamped) {
    struct Case {
        float Value, Alpha;
        bool Transparent;
    };
    for (const Case& c : {Case{0.25F, 0.75F, true}, Case{1, 0, true}, Case{2, 0, true},
                          Case{-1, 1, false}, Case{1e-5F, 1 - 1e-5F, true}}) {
        Listener listener;
        TZEPMaterial material(listener.Event());
        material.SetTransparency(c.Value);
        material.SetTransparency(c.Value);
        EXPECT_EQ(material.Transparency(), c.Value);
        EXPECT_EQ(material.IsTransparent(), c.Transparent) << c.Value;
        for (const TZEPFaceMaterial* face : {material.FrontFace(), material.BackFace()})
            EXPECT_THAT(Alphas(*face), ElementsAre(c.Alpha, c.Alpha, c.Alpha, c.Alpha)) << c.Value;
        EXPECT_THAT(listener.Senders, ElementsAre(material.FrontFace(), material.BackFace()));
    }
}

TEST(FaceMaterial, ParametersAreClampedAndTold) {
    struct Case {
        float Value, Shininess, Transparency;
    };
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    for (const Case& c : {Case{200, 128, 1}, Case{-5, 0, 0}, Case{0.5F, 0.5F, 0.5F},
                          Case{infinite, 128, 1}, Case{none, 0, 0}}) {
        Listener listener;
        TZEPFaceMaterial face(GL_BACK, listener.Event());
        face.SetShininess(c.Value);
        face.SetParam(TZEPFaceMaterial::TransparencyParam, c.Value);
        EXPECT_EQ(face.Shininess(), c.Shininess) << c.Value;
        EXPECT_EQ(face.Transparency(), c.Transparency) << c.Value;
        EXPECT_EQ(face.RGBA(TZEPFaceMaterial::SpecularColor)[3], 1 - c.Transparency);
        face.SetParam(2, 1);
        face.SetParam(-1, 1);
        EXPECT_THAT(listener.Senders, ElementsAre(&face, &face));
    }
}

TEST(FaceMaterial, ColoursAreSetByIndexSilently) {
    struct Case {
        int Index;
        TColor Ambient, Diffuse, Specular, Emission;
    };
    constexpr TColor A = 0x404040;
    constexpr TColor D = 0xC0C0C0;
    constexpr TColor New = 0x3366CC;
    for (const Case& c : {Case{0, New, D, 0, 0}, Case{1, A, New, 0, 0}, Case{2, A, D, New, 0},
                          Case{3, A, D, 0, New}, Case{10, New, New, 0, 0}, Case{4, A, D, 0, 0},
                          Case{9, A, D, 0, 0}, Case{11, A, D, 0, 0}, Case{-1, A, D, 0, 0}}) {
        Listener listener;
        TZEPFaceMaterial face(GL_FRONT, listener.Event());
        face.SetAlpha(0.5F);
        face.SetColor(c.Index, New);
        EXPECT_EQ(face.Ambient(), c.Ambient) << c.Index;
        EXPECT_EQ(face.Diffuse(), c.Diffuse) << c.Index;
        EXPECT_EQ(face.Specular(), c.Specular) << c.Index;
        EXPECT_EQ(face.Emission(), c.Emission) << c.Index;
        EXPECT_EQ(face.RGBA(TZEPFaceMaterial::DiffuseColor), ToGLColor(c.Diffuse, 0.5F)) << c.Index;
        EXPECT_TRUE(listener.Senders.empty()) << c.Index;
    }
}

TEST(FaceMaterial, ResolvesSystemColours) {
    TZEPFaceMaterial face(GL_FRONT, {});
    face.SetDiffuse(clWindow);
    EXPECT_EQ(face.Diffuse(), clWindow);
    EXPECT_EQ(face.RGBA(TZEPFaceMaterial::DiffuseColor), ToGLColor(ColorToRGB(clWindow), 0));
}

TEST(Material, AssignCopiesValuesButNeitherSideNorEvent) {
    Listener listener;
    TZEPMaterial source({});
    source.FrontFace()->SetColor(TZEPFaceMaterial::BaseColor, clRed);
    source.BackFace()->SetShininess(64);
    source.SetTransparency(2);
    TZEPMaterial copy(listener.Event());
    EXPECT_FALSE(copy.SameAs(source));
    copy.Assign(&source);
    EXPECT_TRUE(copy.SameAs(source));
    EXPECT_EQ(copy.FrontFace()->Ambient(), clRed);
    EXPECT_EQ(copy.BackFace()->Face(), GLenum{GL_BACK});
    EXPECT_EQ(copy.Transparency(), 2);
    EXPECT_EQ(copy.BackFace()->Transparency(), 1);

    listener.Senders.clear();
    copy.FrontFace()->Assign(source.BackFace());
    EXPECT_TRUE(listener.Senders.empty());
    EXPECT_EQ(copy.FrontFace()->Face(), GLenum{GL_FRONT});
    copy.FrontFace()->SetShininess(1);
    EXPECT_THAT(listener.Senders, ElementsAre(copy.FrontFace()));
}

TEST(Material, AssignRefusesOtherClasses) {
    TZEPMaterial material({});
    EXPECT_THROW(material.Assign(material.FrontFace()), Exception);
    EXPECT_THROW(material.FrontFace()->Assign(&material), Exception);
    EXPECT_THROW(material.SetTexture(nullptr), Exception);
}

TEST(Material, SharedOnesAreTrimmedWhenTheyAreTooMany) {
    const TColor first = clRed;
    TZEPMaterial* last = &SharedMaterial(&first, false);
    last->SetTransparency(0.5F); // marks it
    EXPECT_EQ(SharedMaterial(&first, false).Transparency(), 0.5F);
    TrimSharedMaterials();
    EXPECT_EQ(SharedMaterial(&first, false).Transparency(), 0.5F) << "there are not many";
    for (std::uint32_t i = 0; i < 65'540; ++i) {
        const TColor color{i};
        static_cast<void>(SharedMaterial(&color, i % 2 == 0));
    }
    static_cast<void>(SharedMaterial(&first, false));
    TrimSharedMaterials();
    TZEPMaterial& anew = SharedMaterial(&first, false);
    EXPECT_EQ(anew.Transparency(), 0);
    anew.SetTransparency(0.25F);
    const TColor other = clBlue;
    static_cast<void>(SharedMaterial(&other, false));
    EXPECT_EQ(SharedMaterial(&first, false).Transparency(), 0.25F)
        << "nothing of before is handed out";
}

TEST(Material, SameAsComparesWhatOpenGLGets) {
    TZEPMaterial one({});
    TZEPMaterial other({});
    EXPECT_TRUE(one.SameAs(other));
    other.BackFace()->SetEmission(clBlue);
    EXPECT_FALSE(one.SameAs(other));
    one.BackFace()->SetEmission(clBlue);
    EXPECT_TRUE(one.SameAs(other));
    one.FrontFace()->SetShininess(3);
    EXPECT_FALSE(one.SameAs(other));
    one.FrontFace()->SetShininess(0);
    one.SetTransparency(0.5F);
    EXPECT_FALSE(one.SameAs(other));
    other.SetTransparency(0.5F);
    EXPECT_TRUE(one.SameAs(other));
    one.Texture()->Image()->SetImage(QImage(1, 1, QImage::Format_RGB32));
    EXPECT_FALSE(one.SameAs(other));
    EXPECT_FALSE(other.SameAs(one));
    EXPECT_FALSE(one.SameAs(one));
}

TEST(MaterialLibrary, EveryChangeOfAMaterialReachesTheUsers) {
    TZEPMaterialLibrary library;
    TZEPMaterialCI* item = library.Materials()->Add();
    User user;
    library.Materials()->RegisterObject(&user);
    struct Case {
        const char* What;
        void (*Change)(TZEPMaterial&);
        std::size_t Told;
    };
    for (const Case& c :
         {Case{"transparency", [](TZEPMaterial& m) { m.SetTransparency(0.5F); }, 2},
          Case{"shininess", [](TZEPMaterial& m) { m.BackFace()->SetShininess(4); }, 1},
          Case{"texture", [](TZEPMaterial& m) { m.Texture()->SetAngle(4); }, 1},
          Case{"colour", [](TZEPMaterial& m) { m.FrontFace()->SetAmbient(clRed); }, 0}}) {
        user.Senders.clear();
        c.Change(*item->Material());
        EXPECT_EQ(user.Senders.size(), c.Told) << c.What;
        EXPECT_THAT(user.Senders, testing::Each(library.Materials())) << c.What;
    }
}

TEST(MaterialLibrary, CopiesTellTheirOwnCollection) {
    TZEPMaterialLibrary source;
    TZEPMaterialLibrary copy;
    source.Materials()->Add()->SetIdent(QStringLiteral("steel"));
    source.Materials()->Item(0)->Material()->SetTransparency(0.25F);
    copy.Materials()->Assign(source.Materials());
    ASSERT_EQ(copy.Materials()->Count(), 1);
    TZEPMaterialCI* item = copy.Materials()->Item(0);
    EXPECT_EQ(item->Ident(), QStringLiteral("steel"));
    EXPECT_EQ(item->Material()->Transparency(), 0.25F);

    User sourceUser;
    User copyUser;
    source.Materials()->RegisterObject(&sourceUser);
    copy.Materials()->RegisterObject(&copyUser);
    item->Material()->FrontFace()->SetShininess(9);
    EXPECT_EQ(sourceUser.Senders.size(), 0U);
    EXPECT_EQ(copyUser.Senders.size(), 1U);
    EXPECT_EQ(source.Materials()->Item(0)->Material()->FrontFace()->Shininess(), 0);
}
