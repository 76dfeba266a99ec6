#include "tests/converters/threeds/ThreeDSFixture.h"

#include <QDir>

#include <algorithm>

namespace ZEP {
namespace {

/// Meshes, vertexes, faces, vertexes of meshes with texture coordinates other than 0, faces with a
/// material of the library, materials, lights, cameras.
using TCounts = std::array<int, 8>;

struct TSample {
    const char* Name;
    TCounts Counts;
    TGLArrayd3 Min, Max; ///< of all points as they are stored
    std::vector<std::string> Passed;
};

/// As counted by programs that share nothing with this reader.
const TSample Samples[] = {
    {"CameraRollAnimWithChildObject.3ds",
     {2, 52, 24, 52, 0, 0, 0, 1},
     {-54.8899, -97.4171, 0},
     {45.8689, 23.0769, 38.7464},
     {"chunk 0xB000 (animation) 1", "faces without a material 24"}},
    {"TargetCameraAnim.3ds",
     {1, 26, 12, 26, 0, 0, 0, 1},
     {-24.7863, -24.7863, 0},
     {45.8689, 23.0769, 38.7464},
     {"chunk 0xB000 (animation) 1", "faces without a material 12"}},
    {"RotatingCube.3DS",
     {1, 26, 12, 26, 0, 0, 0, 0},
     {-46.0925, -40.8152, -35.5429},
     {8.76112, 25.8876, 39.0875},
     {"chunk 0xB000 (animation) 1", "faces without a material 12"}},
    {"cube_with_diffuse_texture.3DS",
     {1, 32, 12, 32, 12, 1, 0, 0},
     {-50, 32.6177, -30.5402},
     {7.68435e-06, 82.6177, 19.4598},
     {"chunk 0xB000 (animation) 1"}},
    {"cubes_with_alpha.3DS",
     {5, 130, 60, 130, 60, 5, 0, 0},
     {-856.311, -55.1009, -268.159},
     {98.8105, 1227.14, 248.438},
     {"texture BERETTA_.JPG not found 1", "chunk 0xB000 (animation) 1"}},
    {"fels.3ds",
     {1, 386, 768, 0, 768, 1, 0, 0},
     {-2.22191, -3.08429, -2.56474},
     {1.28288, 0.121266, 2.11686},
     {}},
    {"test1.3ds",
     {9, 288, 108, 288, 108, 3, 0, 0},
     {-10.3432, -0.194162, -10.1551},
     {9.85085, 10.2303, 10.2476},
     {"chunk 0xB000 (animation) 1"}},
    {"ball-1.3ds",
     {1, 1889, 3480, 1889, 3480, 1, 1, 0},
     {-4.99326, -5.04155, -5.02437},
     {5.10165, 5.04913, 5.06977},
     {"chunk 0xB000 (animation) 1"}},
    {"gear.3ds",
     {1, 1776, 1767, 1776, 1767, 1, 0, 1},
     {-183.677, -4.39208, -179.29},
     {179.072, 53.8551, 183.47},
     {"chunk 0xB000 (animation) 1"}},
    {"hubble.3ds",
     {451, 32280, 58460, 11796, 58460, 17, 3, 0},
     {-675.448, -1601.22, -536.849},
     {680.715, 313.547, 533.809},
     {"chunk 0xA33D (self-illumination map) 7", "texture HUBBLE M.JPG not found 1",
      "texture HUBBLE N.JPG not found 1", "chunk 0xA220 (reflection map) 1",
      "texture TAIL FIN.TIF not found 1", "chunk 0xA230 (bump map) 1",
      "chunk 0xA204 (specular map) 1", "texture SOLAR PA.JPG not found 1",
      "chunk 0xB000 (animation) 1"}},
    {"king.3ds",
     {1, 808, 1342, 0, 1342, 1, 0, 0},
     {-1.38892, -1.38892, -6.07116e-08},
     {1.38892, 1.38892, 5.59436},
     {}},
};

class ThreeDSSamples : public ThreeDSTest {
protected:
    void SetUp() override {
        if (!m_folder.exists()) GTEST_SKIP() << "no samples";
    }
    void Open(const QString& name) { Converter.SetFileName(m_folder.filePath(name)); }
    [[nodiscard]] QStringList Names() const {
        return m_folder.entryList({QStringLiteral("*.3ds")}, QDir::Files);
    }
    TCounts Counts() {
        TCounts counts{};
        for (int i = 0; i < Scene.GetItemsCount(); ++i) {
            if (auto* mesh = Child<TZEPMesh>(i)) Count(*mesh, counts);
            counts[6] += Child<TZEPLight>(i) != nullptr;
            counts[7] += Child<TZEPCamera>(i) != nullptr;
        }
        counts[5] = Library.Materials()->Count();
        return counts;
    }
    void ExpectBox(const TSample& sample) {
        TGLArrayd3 min{}, max{};
        bool isFirst = true;
        for (int i = 0; i < Scene.GetItemsCount(); ++i) {
            auto* mesh = Child<TZEPMesh>(i);
            if (!mesh) continue;
            if (isFirst) min = mesh->GetMin(), max = mesh->GetMax();
            isFirst = false;
            MinBoundsd(min, mesh->GetMin());
            MaxBoundsd(max, mesh->GetMax());
        }
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_NEAR(min[k], sample.Min[k], 1e-5 * std::max(1.0, std::abs(sample.Min[k])));
            EXPECT_NEAR(max[k], sample.Max[k], 1e-5 * std::max(1.0, std::abs(sample.Max[k])));
        }
    }

private:
    static void Count(TZEPMesh& mesh, TCounts& counts) {
        ++counts[0];
        counts[1] += mesh.Vertexes()->Count();
        counts[2] += mesh.Faces()->Count();
        bool hasTexCoords = false;
        for (int i = 0; i < mesh.Vertexes()->Count(); ++i) {
            const TZEPVertex3TexCI& vertex = (*mesh.Vertexes())[i];
            hasTexCoords |= vertex.TexX() != 0 || vertex.TexY() != 0;
        }
        if (hasTexCoords) counts[3] += mesh.Vertexes()->Count();
        for (int i = 0; i < mesh.Faces()->Count(); ++i)
            counts[4] += (*mesh.Faces())[i].MaterialIndex() >= 0;
    }

    QDir m_folder{QStringLiteral(ZEP_SAMPLES "/3ds")};
};

TEST_F(ThreeDSSamples, HoldWhatOtherProgramsCount) {
    for (const TSample& sample : Samples) {
        SCOPED_TRACE(sample.Name);
        Open(QLatin1String(sample.Name));
        EXPECT_EQ(ErrorOfLoading(), "");
        EXPECT_EQ(Counts(), sample.Counts);
        EXPECT_EQ(Passed(), sample.Passed);
        ExpectBox(sample);
    }
}

TEST_F(ThreeDSSamples, AreReadOrRefusedAlsoWhenTheyAreNew) {
    for (const QString& name : Names()) {
        Open(name);
        const bool isModel = name != QLatin1String("iflamigm.3ds");
        EXPECT_EQ(ErrorOfLoading(),
                  isModel ? "" : "TF3DSConverter.LoadFromFile: main chunk not found.")
            << name.toStdString();
    }
}

} // namespace
} // namespace ZEP
