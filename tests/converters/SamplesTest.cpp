#include "tests/Cases.h"
#include "tests/ErrorOf.h"
#include "tests/converters/TreeText.h"
#include <zep/ZEP3DS.h>
#include <zep/ZEPClasses.h>
#include <zep/ZEPDXF.h>
#include <zep/ZEPObjects.h>
#include <zep/ZEPRS274D.h>

#include <QImageReader>

#include <map>

namespace ZEP {
namespace {

/// What is in a tree in numbers: objects by class, what they hold, the box of what has a place.
class TNumbers {
public:
    explicit TNumbers(const TZEPObject& root) {
        std::vector<TZEPObject*> objects;
        root.ListChildren(objects);
        for (TZEPObject* object : objects) Count(*object);
    }
    [[nodiscard]] std::string Text() const {
        std::string text;
        for (const auto& [name, count] : m_counts)
            text += name + " " + std::to_string(count) + ", ";
        return text + PointText(m_min) + " to " + PointText(m_max) + "\n";
    }

private:
    void Count(TZEPObject& object) {
        ++m_counts[object.ClassName().toStdString().substr(4)];
        if (auto* mesh = qobject_cast<TZEPMesh*>(&object)) {
            m_counts["vertexes"] += mesh->Vertexes()->Count();
            m_counts["faces"] += mesh->Faces()->Count();
            for (int i = 0; i < mesh->Vertexes()->Count(); ++i) {
                const TZEPVertex3TexCI& vertex = (*mesh->Vertexes())[i];
                m_counts["textured"] += vertex.TexX() != 0 || vertex.TexY() != 0;
            }
            for (int i = 0; i < mesh->Faces()->Count(); ++i)
                m_counts["faces with material"] += (*mesh->Faces())[i].MaterialIndex() >= 0;
        }
        if (auto* polyline = qobject_cast<TZEPPolyline*>(&object))
            m_counts["vertexes"] += polyline->Vertexes()->Count();
        if (object.GetItemsCount() > 0 || object.inherits("ZEP::TZEPLabel")) return;
        MinBoundsd(m_min, object.GetAbsoluteMin());
        MaxBoundsd(m_max, object.GetAbsoluteMax());
    }

    std::map<std::string, int> m_counts;
    TGLArrayd3 m_min{1e308, 1e308, 1e308}, m_max{-1e308, -1e308, -1e308};
};

template <class TConverter>
std::string Summary(TConverter& converter, const QString& file) {
    TZEPScene scene;
    TZEPMaterialLibrary library;
    converter.SetRoot(&scene);
    if constexpr (requires { converter.SetMaterials(&library); }) converter.SetMaterials(&library);
    converter.SetFileName(file);
    const std::string error = ErrorOf([&] { converter.LoadFromFile(); });
    if (!error.empty()) return "error\n";
    std::string text = TNumbers(scene).Text();
    if (library.Materials()->Count())
        text += std::to_string(library.Materials()->Count()) + " materials\n";
    return text + ReportText(converter.Report());
}

/// In both readings where there are two.
template <class TConverter>
std::string Summaries(const QString& file) {
    std::string text;
    for (const bool extended : {false, true}) {
        TConverter converter;
        if constexpr (requires { converter.SetExtended(true); }) {
            converter.SetExtended(extended);
            text += extended ? "extended: " : "plain: ";
        } else if (extended) {
            break;
        }
        text += Summary(converter, file);
    }
    return text;
}

std::string SummaryOf(const QString& file) {
    const QString name = file.toLower();
    if (name.endsWith(QStringLiteral(".3ds"))) return Summaries<TF3DSConverter>(file);
    if (name.endsWith(QStringLiteral(".dxf"))) return Summaries<TDXFConverter>(file);
    return Summaries<TRS274DConverter>(file);
}

class Samples : public testing::TestWithParam<std::string> {};

/// The numbers are those that programs say which share nothing with these readers: scripts that
/// count entities and chunks, and an interpreter of machine programs. A sample that is new must
/// be added: its name, and with `ZEP_KEEP_CASES` what becomes of it.
TEST_P(Samples, AreReadAsOtherProgramsReadThem) {
    const QString folder = QStringLiteral(ZEP_SAMPLES "/") + QString::fromStdString(GetParam());
    if (!QDir(folder).exists()) GTEST_SKIP() << "no samples";
    QStringList known;
    ExpectCases("samples/" + GetParam() + ".txt", [&](const TCase& c) {
        known << QString::fromStdString(c.Name);
        return SummaryOf(folder + u'/' + known.back());
    });
    for (const QString& name : QDir(folder).entryList(QDir::Files)) {
        const QByteArray suffix = QFileInfo(name).suffix().toUtf8();
        const bool isPicture = QImageReader::supportedImageFormats().contains(suffix);
        EXPECT_TRUE(isPicture || known.contains(name)) << name.toStdString() << " is new";
    }
}

INSTANTIATE_TEST_SUITE_P(Format, Samples, testing::Values("dxf", "nc", "3ds"),
                         [](const auto& row) { return "Of" + row.param; });

TEST(Examples, ModelsAreRead) {
    ExpectCases("samples/models.txt", [](const TCase& c) {
        return SummaryOf(QStringLiteral(ZEP_SOURCE "/examples/models/") +
                         QString::fromStdString(c.Name));
    });
}

} // namespace
} // namespace ZEP
