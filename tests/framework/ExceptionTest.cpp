#include "tests/FolderTest.h"
#include <zep/converters/dxf/Converter.h>
#include <zep/converters/rs274d/Converter.h>
#include <zep/converters/threeds/Converter.h>
#include <zep/framework/UserError.h>
#include <zep/scene/Scene.h>

#include <functional>
#include <new>

namespace ZEP {
namespace {

class Exceptions : public FolderTest {
protected:
    template <class Converter>
    static void Read(const QString& file) {
        TZEPObject root;
        Converter converter;
        converter.SetRoot(&root);
        converter.SetFileName(file);
        if constexpr (std::is_same_v<Converter, TRS274DConverter>) converter.SetStopOnErrors(true);
        converter.LoadFromFile();
    }
};

TEST_F(Exceptions, TellTheirOriginBesideTheMessage) {
    const QString none = Path("none.nc");
    const QString program = Put("a.nc", "G21\n\nX1\n");
    const QString model = Put("a.3ds", QByteArray("MM\x05\0\0\0", 6));
    const QString text = Put("a.zept", "object TZEPScene\n  A = =\nend\n");
    const QString binary = Put("a.zep", QByteArray("TPF0\x09TZEPScene\0", 15));
    const struct {
        const char* Name;
        std::function<void()> Raise;
        const char* Method;
        QString File;
        TFilePlace Place;
    } rows[] = {
        {"no file name", [] { Read<TDXFConverter>({}); }, "TDXFConverter.LoadFromFile", {}, {}},
        {"no file",
         [&] { Read<TRS274DConverter>(none); },
         "TRS274DConverter.LoadFromFile",
         none,
         {}},
        {"a word", [&] { Read<TRS274DConverter>(program); }, "", {}, {.Line = 3}},
        {"a chunk",
         [&] { Read<TF3DSConverter>(model); },
         "TF3DSConverter.LoadFromFile",
         model,
         {.Offset = 0}},
        {"a text", [&] { TZEPScene().LoadFromTextFile(text); }, "", text, {.Line = 2, .Column = 7}},
        {"bytes", [&] { TZEPScene().LoadFromFile(binary); }, "", binary, {.Offset = 15}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        try {
            row.Raise();
            ADD_FAILURE() << "no error";
        } catch (const Exception& error) {
            const TErrorOrigin& origin = error.Origin();
            EXPECT_EQ(origin.Method, QLatin1String(row.Method));
            EXPECT_EQ(origin.File, row.File);
            EXPECT_EQ(origin.Place.Line, row.Place.Line);
            EXPECT_EQ(origin.Place.Column, row.Place.Column);
            EXPECT_EQ(origin.Place.Offset, row.Place.Offset);
            const QString head = origin.Method.isEmpty() ? QString() : origin.Method + ": ";
            EXPECT_EQ(error.Message(), head + error.Text());
        }
    }
}

TEST_F(Exceptions, AreToldToUsersInOneForm) {
    const QString none = Path("none.nc");
    const QString program = Put("a.nc", "G21\n\nX1\n");
    const QString model = Put("a.3ds", QByteArray("MM\x05\0\0\0", 6));
    const QString text = Put("a.zept", "object TZEPScene\n  A = =\nend\n");
    const QString drawing = Put("a.dxf", "AutoCAD Binary DXF\r\n");
    const struct {
        std::function<void()> Raise;
        QString File, Rest;
    } rows[] = {
        {[&] { Read<TRS274DConverter>(none); }, none,
         ": There is no such file: it may have been moved or renamed."},
        {[&] { Read<TDXFConverter>(Path(".")); }, Path("."),
         ": It is a folder: open the files in it."},
        {[&] { Read<TRS274DConverter>(program); }, program,
         ", line 3: Cannot use axis commands with no motion mode set."},
        {[&] { Read<TF3DSConverter>(model); }, model,
         ", offset 0: Chunk 0x4D4D has the length 5, but its header has 6 bytes."},
        {[&] { TZEPScene().LoadFromTextFile(text); }, text,
         ", line 2, column 7: Expected a value, but found =."},
        {[&] { Read<TDXFConverter>(drawing); }, drawing,
         ": It is binary DXF, and only its ASCII form can be read."},
        {[] { throw Exception(QStringLiteral("f: no."), {.File = QStringLiteral("f")}); }, "f",
         ": No."},
        {[] { throw std::bad_alloc(); }, "f",
         ": There is not enough memory: close other files or programs."},
        {[] { throw std::runtime_error("broken"); }, {}, "Broken."},
        {[] { throw Exception(QStringLiteral("a.nc: No.\nb.nc: No.")); },
         {},
         "a.nc: No.\nb.nc: No."},
    };
    for (const auto& row : rows) try {
            row.Raise();
            ADD_FAILURE() << "no error";
        } catch (const std::exception& error) {
            EXPECT_EQ(ErrorReport(error, row.File).toStdString(),
                      (row.File + row.Rest).toStdString());
        }
}

} // namespace
} // namespace ZEP
