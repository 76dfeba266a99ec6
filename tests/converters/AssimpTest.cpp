#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/converters/TreeText.h"
#include <zep/ZEPAssimp.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/scene/Scene.h>

#include <QImage>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::HasSubstr;

const char* const Triangle = "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                             "vertex 0 2 0\nendloop\nendfacet\nendsolid a\n";

class Assimp : public FolderTest {
protected:
    Assimp() {
        Converter.SetRoot(&Root);
        Converter.SetMaterials(&Library);
    }
    void SetUp() override {
        if (!TAssimpConverter::IsAvailable()) GTEST_SKIP() << "without Assimp";
    }

    std::string ErrorOfLoading(const char* name, const QByteArray& bytes) {
        Converter.SetFileName(Put(name, bytes));
        return ErrorOf([&] { Converter.LoadFromFile(); });
    }
    std::string Loaded(const char* name, const QByteArray& bytes) {
        const std::string error = ErrorOfLoading(name, bytes);
        return error.empty() ? TreeText(Root) + ReportText(Converter.Report()) : error;
    }
    [[nodiscard]] TZEPMaterial& MaterialAt(int index) {
        return *Library.Materials()->Item(index)->Material();
    }

    TZEPScene Scene;
    TZEPObject Root{&Scene};
    TZEPMaterialLibrary Library;
    TAssimpConverter Converter;
};

TEST_F(Assimp, ReadsWhatEachFormatHas) {
    const struct {
        const char* Name;
        const char* Bytes;
        const char* Expected;
    } rows[] = {
        {"a.STL", Triangle, "TZEPMesh Ident='a' [0] [1 X=1] [2 Y=2] [0 B=1 C=2 MaterialIndex=0]\n"},
        // y is up there
        {"a.obj", "o part\nv 0 0 0\nv 1 0 0\nv 0 2 0\nf 1 2 3\n",
         "TZEPMesh Ident='part' [0] [1 X=1] [2 Z=2] [0 B=1 C=2 MaterialIndex=1]\n"},
        {"edges.obj", "v 0 0 0\nv 1 0 0\nl 1 2\n",
         "TZEPLine Ident='defaultobject' Color=999999 P2{X=1}\n"},
        {"a.ply",
         "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nproperty float y\n"
         "property float z\nend_header\n3 4 5\n",
         "TZEPPoint Color=ffffff P{X=3 Y=4 Z=5}\n"},
    };
    for (const auto& row : rows) EXPECT_THAT(Loaded(row.Name, row.Bytes), HasSubstr(row.Expected));
    Converter.SetUpAxis(TAssimpConverter::uaZ);
    EXPECT_THAT(Loaded("a.obj", rows[1].Bytes), HasSubstr("[2 Y=2]"));
}

TEST_F(Assimp, MaterialsComeBehindThoseThatAreThereWithPicturesBesideTheModel) {
    QImage(2, 2, QImage::Format_RGB32).save(Path("Wall.PNG"));
    Put("a.mtl", "newmtl red\nKd 1 0 0\nKs 1 1 1\nNs 20\nd 0.75\nnewmtl wall\nKd 0 1 0\n"
                 "map_Kd C:\\pictures\\wall.png\nnewmtl lost\nmap_Kd none.png\n");
    Library.Materials()->Add();
    EXPECT_EQ(ErrorOfLoading("a.obj", "mtllib /elsewhere/a.mtl\nv 0 0 0\nv 1 0 0\nv 0 2 0\n"
                                      "vt 0 0\nusemtl red\nf 1 2 3\nusemtl wall\nf 1/1 2/1 3/1\n"
                                      "usemtl lost\nf 1 2 3\n"),
              "");
    EXPECT_THAT(TreeText(Root), testing::AllOf(HasSubstr("MaterialIndex=2"), HasSubstr("=3")));
    EXPECT_EQ(MaterialAt(2).FrontFace()->Diffuse(), clRed);
    EXPECT_EQ(MaterialAt(2).FrontFace()->Shininess(), 20);
    EXPECT_NEAR(MaterialAt(2).Transparency(), 0.25, 1e-6);
    EXPECT_EQ(MaterialAt(3).FrontFace()->Diffuse(), clWhite);
    EXPECT_EQ(MaterialAt(3).Texture()->Image()->Image().width(), 2);
    EXPECT_THAT(ReportText(Converter.Report()), HasSubstr("textures that cannot be loaded 1"));
}

TEST_F(Assimp, BrokenFilesAndHostsThatCancelLeaveNoOpenBracket) {
    EXPECT_THAT(ErrorOfLoading("a.stl", "MZ"), HasSubstr("Can't read \""));
    EXPECT_THAT(ErrorOfLoading("a.glb", QByteArray("glTF\2\0\0\0\xff\xff\xff\xff", 12)),
                HasSubstr("Can't read \""));
    Converter.SetProgress([](qint64, qint64) { return false; });
    EXPECT_EQ(ErrorOfLoading("b.stl", Triangle), "");
    EXPECT_TRUE(Converter.Cancelled());
    Converter.SetProgress([](qint64, qint64) -> bool { throw Exception(QStringLiteral("mine")); });
    EXPECT_THAT(ErrorOfLoading("b.stl", Triangle), HasSubstr("mine"));
    Converter.SetProgress([&](qint64, qint64) {
        Converter.SetRoot(nullptr);
        return true;
    });
    EXPECT_EQ(ErrorOfLoading("b.stl", Triangle), "");
    EXPECT_EQ(Root.UpdateLevel(), 0);
    EXPECT_EQ(Root.GetItemsCount(), 0);
}

} // namespace
} // namespace ZEP
