#include "tests/Cases.h"
#include "tests/ErrorOf.h"
#include "tests/converters/TreeText.h"
#include "tests/converters/dxf/DXFPairs.h"
#include "tests/converters/threeds/ThreeDSChunks.h"
#include <zep/ZEP3DS.h>
#include <zep/ZEPDXF.h>
#include <zep/ZEPRS274D.h>
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/scene/Scene.h>

#include <QImage>
#include <QTemporaryDir>

namespace ZEP {
namespace {

bool Has(const std::string& name, std::string_view option) {
    return name.find(option) != std::string::npos;
}

/// What became of an input: the tree, what was passed over, the fault that ended it.
struct TReading {
    TZEPScene Scene;
    TZEPObject* Root = new TZEPObject(&Scene);
    TZEPMaterialLibrary Library;

    TReading() { Root->SetParentComponent(&Scene); }

    template <class TConverter, class TRead>
    std::string Text(TConverter& converter, TRead read) {
        converter.SetRoot(Root);
        const std::string error = ErrorOf([&] { read(); });
        EXPECT_EQ(Root->UpdateLevel(), 0);
        for (int i = 0; i < Scene.ComponentCount(); ++i) EXPECT_EQ(Scene.Components(i), Root);
        std::string text = TreeText(*Root) + SceneText();
        if (Library.Materials()->Count()) text += "library" + DifferencesOf(Library) + "\n";
        text += ReportText(converter.Report());
        return error.empty() ? text : text + "error: " + error + "\n";
    }

private:
    std::string SceneText() {
        const std::string text = DifferencesOf(Scene);
        return text.empty() ? text : "scene" + text + "\n";
    }
};

/// In the extended reading, unless the name of the case says "plain".
template <class TConverter>
void Choose(TConverter& converter, const std::string& name) {
    converter.SetExtended(!Has(name, "plain"));
}

std::string ReadDXF(const TCase& c, const std::string& text) {
    TDXFConverter converter;
    Choose(converter, c.Name);
    converter.SetCreateLayersIfNotExists(!Has(c.Name, "without new layers"));
    TReading reading;
    std::string result = reading.Text(converter, [&] { converter.ReadDXF(text); });
    if (converter.get_max_extent() != zero3d)
        result += "extent " + PointText(converter.get_min_extent()) + " " +
                  PointText(converter.get_max_extent()) + "\n";
    return result;
}

/// What a reader writes of its way through a file of these bytes.
template <class TConverter>
std::string Dumped(TConverter& converter, const std::string& bytes) {
    const QTemporaryDir folder;
    QImage(4, 4, QImage::Format_RGB32).save(folder.filePath(QStringLiteral("Wall.png")));
    QFile file(folder.filePath(QStringLiteral("file.in")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(bytes));
    file.close();
    converter.SetFileName(file.fileName());
    converter.SetDoDump(true);
    const std::string error = ErrorOf([&] { converter.LoadFromFile(); });
    QFile dump(folder.filePath(QStringLiteral("file.dmp")));
    EXPECT_TRUE(dump.open(QIODevice::ReadOnly));
    QByteArray text = dump.readAll();
    EXPECT_EQ(text.count('\n'), text.count("\r\n"));
    return text.replace("\r", "").replace(folder.path().toUtf8() + '/', "").toStdString() +
           QString::fromStdString(error).remove(folder.path() + u'/').toStdString();
}

std::string ReadRS274D(const TCase& c, const std::string& text) {
    TRS274DConverter converter;
    Choose(converter, c.Name);
    converter.SetStopOnErrors(Has(c.Name, "strict"));
    if (Has(c.Name, "Fanuc")) converter.SetDialect(TRS274DDialect::Fanuc);
    converter.SetShowQuickMove(!Has(c.Name, "without rapids"));
    TReading reading;
    converter.SetRoot(reading.Root);
    if (Has(c.Name, "trace")) return Dumped(converter, text);
    return reading.Text(converter, [&] { converter.ReadNC(text); });
}

std::string Read3DS(const TCase& c, const std::string& text) {
    TF3DSConverter converter;
    converter.SetExtended(Has(c.Name, "extended"));
    TReading reading;
    if (!Has(c.Name, "without a library")) converter.SetMaterials(&reading.Library);
    converter.SetRoot(reading.Root);
    if (Has(c.Name, "dump")) return Dumped(converter, text);
    return reading.Text(converter, [&] { converter.Read3DS(text); });
}

struct TReader {
    const char* Folder;
    std::string (*Bytes)(const std::string& input);
    std::string (*Read)(const TCase& c, const std::string& bytes);
};

/// Without the line feed that ends the file of cases, not the program.
std::string BytesOfProgram(const std::string& input) {
    return input.substr(0, input.size() - 1);
}

const TReader Readers[] = {{"dxf", BytesOfPairs, ReadDXF},
                           {"rs274d", BytesOfProgram, ReadRS274D},
                           {"threeds", BytesOfChunks, Read3DS}};

const TReader& ReaderOf(const std::string& file) {
    return *std::ranges::find_if(Readers, [&](auto& r) { return file.starts_with(r.Folder); });
}

class Reading : public testing::TestWithParam<std::string> {};

TEST_P(Reading, MakesWhatIsExpected) {
    const TReader& reader = ReaderOf(GetParam());
    ExpectCases(GetParam(), [&](const TCase& c) { return reader.Read(c, reader.Bytes(c.Input)); });
}

/// Nothing is left open or over, wherever a file is cut.
TEST_P(Reading, EndsQuietlyWhereTheFileEnds) {
    if (Has(GetParam(), "dialects")) GTEST_SKIP() << "a jump back without its end runs for long";
    const TReader& reader = ReaderOf(GetParam());
    for (const TCase& c : ReadCases(ZEP_TEST_DATA "/cases/" + GetParam())) {
        const std::string bytes = reader.Bytes(Unescaped(c.Input));
        for (std::size_t size = 0; size < bytes.size(); size += 1 + bytes.size() / 100)
            reader.Read(c, bytes.substr(0, size));
    }
}

std::vector<std::string> AllCases() {
    std::vector<std::string> files;
    for (const TReader& reader : Readers)
        for (const std::string& file : CaseFiles(reader.Folder)) files.push_back(file);
    return files;
}

INSTANTIATE_TEST_SUITE_P(File, Reading, testing::ValuesIn(AllCases()), [](const auto& row) {
    std::string name = row.param;
    std::erase_if(name, [](unsigned char c) { return !std::isalnum(c); });
    return name;
});

} // namespace
} // namespace ZEP
