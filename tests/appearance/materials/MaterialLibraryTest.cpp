#include <zep/appearance/materials/MaterialLibrary.h>

#include <zep/framework/Property.h>
#include <zep/framework/Registry.h>

#include <gmock/gmock.h>

using namespace ZEP;
using testing::Each;

namespace {

struct User : TZEPCollectionUser {
    std::vector<TObject*> Senders;
    bool WantsInvalidation() const override { return true; }
    void Invalidate(TObject* sender) override { Senders.push_back(sender); }
};

} // namespace

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
        EXPECT_THAT(user.Senders, Each(library.Materials())) << c.What;
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
