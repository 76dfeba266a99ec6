#include "converters/RS274D.h"

#include "framework/Exception.h"
#include "framework/Property.h"
#include "objects/Arc.h"
#include "objects/Line.h"
#include "objects/Point.h"
#include "objects/Polyline.h"
#include "scene/Scene.h"
#include "scene/XForm.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <clocale>
#include <cmath>
#include <numbers>

namespace ZEP {
namespace {

using testing::ElementsAre;
using TTexts = std::vector<std::string>;

std::string Text(const TGLArrayd3& point) {
    std::string text;
    for (const double value : point) {
        const double rounded = std::round(value * 1e6) / 1e6;
        text +=
            (text.empty() ? "" : " ") + QString::number(rounded == 0 ? 0 : rounded).toStdString();
    }
    return text;
}

/// "TZEPLine 0 0 0 > 1 2 0 ffffff @Line 1".
std::string Describe(TZEPObject* object) {
    QString text = object->ClassName() + u' ';
    if (auto* line = qobject_cast<TZEPLine*>(object)) {
        text += QString::fromStdString(Text(line->P1()->Data()) + " > " + Text(line->P2()->Data()));
        if (line->Style() != psSolid) text += QStringLiteral(" style%1").arg(line->Style());
    }
    if (auto* point = qobject_cast<TZEPPoint*>(object))
        text += QString::fromStdString(Text(point->P()->Data())) +
                QStringLiteral(" w%1").arg(point->Width());
    if (auto* arc = qobject_cast<TZEPArc*>(object))
        text += QStringLiteral("%1 x%2 %3..%4")
                    .arg(QString::fromStdString(Text(arc->XForm()->Translate()->Data())))
                    .arg(arc->XForm()->Scale()->X())
                    .arg(arc->StartAngle())
                    .arg(arc->EndAngle());
    if (auto* polyline = qobject_cast<TZEPPolyline*>(object))
        text += QStringLiteral("%1 points").arg(polyline->Vertexes()->Count());
    text += QStringLiteral(" %1 @").arg(object->Color().Value, 6, 16, QLatin1Char('0'));
    return (text + object->Ident()).toStdString();
}

class RS274D : public testing::Test {
protected:
    RS274D() { Converter.SetRoot(&Root); }

    TTexts Objects() {
        TTexts texts;
        for (int i = 0; i < Root.GetItemsCount(); ++i) texts.push_back(Describe(Root.GetItem(i)));
        return texts;
    }
    TTexts Read(std::string_view text) {
        Root.Clear();
        Converter.ReadNC(text);
        return Objects();
    }
    std::string ErrorOfLoading() {
        try {
            Converter.LoadFromFile();
        } catch (const Exception& error) {
            return error.what();
        }
        return {};
    }
    /// A file of the given content in a folder of the test's own.
    QString Written(const QString& name, const QByteArray& content) {
        QFile file(Folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    static QByteArray Content(const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    static QString Data(const char* name) {
        return QStringLiteral(ZEP_TEST_DATA "/nc/") + QLatin1String(name);
    }

    QTemporaryDir Folder;
    TZEPScene Scene;
    TZEPObject Root{&Scene};
    TRS274DConverter Converter;
};

TEST_F(RS274D, PublishesItsPropertiesInOrder) {
    QStringList names;
    for (const QMetaProperty& property : PublishedProperties(TRS274DConverter::staticMetaObject)) {
        names << QLatin1String(property.name());
        const QVariant standard = DeclaredDefault(TRS274DConverter::staticMetaObject, property);
        EXPECT_TRUE(!standard.isValid() || property.read(&Converter) == standard)
            << property.name();
    }
    EXPECT_EQ(names.mid(2).join(u' ').toStdString(),
              "DoDump Root ClearBeforRead FileName ShowQuickMove StopOnErrors Extended");
}

TEST_F(RS274D, APlainProgramBecomesLinesArcsAndPoints) {
    Converter.SetFileName(Data("plate.nc"));
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 10 0 5 style2 808080 @Line 5",
                                       "TZEPLine 10 0 5 > 10 0 -1 0000ff @Line 6",
                                       "TZEPArc 0 0 -1 x20 0..90 0000ff @Line 7",
                                       "TZEPLine 0 10 -1 > -10 10 -1 0000ff @Line 8",
                                       "TZEPPoint 0 0 -4 w5 00ff00 @Line 10",
                                       "TZEPPoint 5 0 -4 w5 00ff00 @Line 11",
                                       "TZEPLine 5 0 -4 > 5 0 20 style2 808080 @Line 13"));
    for (int i = 0; i < Root.GetItemsCount(); ++i) EXPECT_EQ(Root.GetItem(i)->Owner(), &Root);
    EXPECT_TRUE(Converter.Report().Entries().empty());
}

TEST_F(RS274D, AnExtendedProgramHasWholeHoles) {
    Converter.SetFileName(Data("plate.nc"));
    Converter.SetExtended(true);
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 10 0 5 style2 808080 @Line 5",
                                       "TZEPLine 10 0 5 > 10 0 -1 0000ff @Line 6",
                                       "TZEPArc 0 0 -1 x20 0..90 0000ff @Line 7",
                                       "TZEPLine 0 10 -1 > -10 10 -1 0000ff @Line 8",
                                       "TZEPLine -10 10 -1 > -10 10 2 style2 808080 @Line 10",
                                       "TZEPLine -10 10 2 > 0 0 2 style2 808080 @Line 10",
                                       "TZEPLine 0 0 2 > 0 0 -4 00ff00 @Line 10",
                                       "TZEPLine 0 0 -4 > 0 0 2 style2 808080 @Line 10",
                                       "TZEPLine 0 0 2 > 5 0 2 style2 808080 @Line 11",
                                       "TZEPLine 5 0 2 > 5 0 -4 00ff00 @Line 11",
                                       "TZEPLine 5 0 -4 > 5 0 2 style2 808080 @Line 11",
                                       "TZEPLine 5 0 2 > 5 0 20 style2 808080 @Line 13"));
    EXPECT_THAT(Read("G2X1I.5Z3"), ElementsAre("TZEPPolyline 37 points ffffff @Line 1"));
}

TEST_F(RS274D, ToolColorsGoRound) {
    const struct {
        int Changes;
        std::uint32_t Color;
    } rows[] = {{0, 0xFFFFFF}, {1, 0x0000FF}, {2, 0x00FF00}, {3, 0xFF0000}, {4, 0xFFFF00},
                {5, 0xFF00FF}, {6, 0x00FFFF}, {7, 0xFFFFFF}, {8, 0x0000FF}};
    for (const auto& row : rows) {
        std::string program;
        for (int i = 0; i < row.Changes; ++i) program += "M6\n";
        Read(program + "G1X1");
        EXPECT_EQ(Root.GetItem(0)->Color(), TColor(row.Color)) << row.Changes;
        EXPECT_EQ(Converter.PathColor(), TColor(row.Color)) << row.Changes;
    }
}

TEST_F(RS274D, HiddenRapidsStillMoveThePosition) {
    Converter.SetShowQuickMove(false);
    EXPECT_THAT(Read("G0X1\nG1X2"), ElementsAre("TZEPLine 1 0 0 > 2 0 0 ffffff @Line 2"));
}

/// Where an arc object has its points in the scene.
TGLArrayd3 OnArc(TZEPArc* arc, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    TGLArrayd3 point;
    arc->ConvertToAbsolute({0.5 * std::cos(angle), 0.5 * std::sin(angle), 0}, point);
    return point;
}

void ExpectNear(const TGLArrayd3& point, const TGLArrayd3& expected, const std::string& what) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(point[i], expected[i], 1e-9) << what;
}

TEST_F(RS274D, ArcObjectsEndOnTheProgrammedPoints) {
    const struct {
        const char* Arc;
        TGLArrayd3 End;
        bool FromEnd[2]; // the object starts at the arc's end: plain, extended
    } rows[] = {
        {"G17G3X0Y4R3", {0, 4, 0}, {false, false}}, {"G17G2X0Y4R3", {0, 4, 0}, {true, true}},
        {"G18G3X0Z4R3", {0, 0, 4}, {false, true}},  {"G18G2X0Z4R3", {0, 0, 4}, {true, false}},
        {"G19G3Y1Z4R3", {3, 1, 4}, {false, false}}, {"G19G2Y1Z4R3", {3, 1, 4}, {true, true}},
    };
    const TGLArrayd3 start{3, 0, 0};
    for (const bool extended : {false, true})
        for (const auto& row : rows) {
            Converter.SetExtended(extended);
            Read(std::string("G0X3\n") + row.Arc);
            auto* arc = qobject_cast<TZEPArc*>(Root.GetItem(1));
            ASSERT_NE(arc, nullptr) << row.Arc;
            const bool fromEnd = row.FromEnd[extended];
            ExpectNear(OnArc(arc, arc->StartAngle()), fromEnd ? row.End : start, row.Arc);
            ExpectNear(OnArc(arc, arc->EndAngle()), fromEnd ? start : row.End, row.Arc);
            EXPECT_NEAR(arc->XForm()->Scale()->X(), 6, 1e-9);
        }
}

TEST_F(RS274D, AFullCircleGoesAroundItsStatedCenter) {
    for (const bool extended : {false, true}) {
        Converter.SetExtended(extended);
        Read("G0X3Y1\nG2I2J0");
        auto* circle = qobject_cast<TZEPArc*>(Root.GetItem(1));
        ASSERT_NE(circle, nullptr);
        EXPECT_EQ(circle->StartAngle(), circle->EndAngle());
        TGLArrayd3 min, max;
        circle->GetAbsoluteSize(min, max);
        ExpectNear(min, {3, -1, 0}, "min");
        ExpectNear(max, {7, 3, 0}, "max");
    }
}

TEST_F(RS274D, RefusesWhatItCanNotDo) {
    Converter.SetRoot(nullptr);
    EXPECT_EQ(ErrorOfLoading(), "TRS274DConverter.LoadFromFile: Can't load into Root=nil.");
    Converter.SetRoot(&Root);
    EXPECT_EQ(ErrorOfLoading(), "TRS274DConverter.LoadFromFile: No file name defined.");
    EXPECT_THROW(
        {
            try {
                Converter.SaveToFile();
            } catch (const Exception& error) {
                EXPECT_STREQ(error.what(),
                             "TRS274DConverter.SaveToFile: Only import is supported.");
                throw;
            }
        },
        Exception);
    for (const QString& name : {Folder.filePath(QStringLiteral("none.nc")), Folder.path(),
                                QStringLiteral("/dev/zero"), QString(5000, u'x')}) {
        Converter.SetFileName(name);
        EXPECT_THAT(ErrorOfLoading(),
                    testing::StartsWith("TRS274DConverter.LoadFromFile: Can't read \"" +
                                        name.toStdString() + "\": "));
    }
}

TEST_F(RS274D, ClearsTheRootOnlyWhenAskedTo) {
    Converter.SetFileName(Written(QStringLiteral("a.nc"), "G1X1"));
    Converter.LoadFromFile();
    Converter.LoadFromFile();
    EXPECT_EQ(Root.GetItemsCount(), 1);
    Converter.SetClearBeforRead(false);
    Converter.LoadFromFile();
    EXPECT_EQ(Root.GetItemsCount(), 2);
    Converter.SetFileName(Written(QStringLiteral("empty.nc"), ""));
    Converter.SetClearBeforRead(true);
    Converter.LoadFromFile();
    EXPECT_EQ(Root.GetItemsCount(), 0);
}

TEST_F(RS274D, KeepsWhatWasReadBeforeAnError) {
    Converter.SetFileName(Written(QStringLiteral("a.nc"), "G1X1\nX2L99999\nX3"));
    EXPECT_EQ(ErrorOfLoading(), "Repeat count 99999 is larger than 9999. Line: 2");
    EXPECT_EQ(Root.GetItemsCount(), 1);
    EXPECT_EQ(Root.UpdateLevel(), 0);
    Converter.SetStopOnErrors(true);
    Converter.SetFileName(Written(QStringLiteral("b.nc"), "G0X1\nG2X9R1\nG1X1"));
    EXPECT_EQ(ErrorOfLoading(), "Cannot reach destination with specified radius. Line: 2");
    EXPECT_EQ(Root.GetItemsCount(), 1);
    Converter.SetStopOnErrors(false);
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_EQ(Root.GetItemsCount(), 3);
}

TEST_F(RS274D, ForgetsARootThatIsFreed) {
    auto* root = new TZEPObject(&Scene);
    Converter.SetRoot(root);
    Converter.SetRoot(&Root);
    delete root;
    EXPECT_EQ(Converter.Root(), &Root);
    root = new TZEPObject(&Scene);
    Converter.SetRoot(root);
    delete root;
    EXPECT_EQ(Converter.Root(), nullptr);
}

TEST_F(RS274D, ReadingEndsWhenTheHostSaysSoOrFreesTheRoot) {
    std::string program = "G1";
    while (program.size() < 300'000) program += "X1\nX2\n";
    Converter.SetProgress([](qint64 done, qint64) { return done < 100'000; });
    Converter.ReadNC(program);
    EXPECT_TRUE(Converter.Cancelled());
    EXPECT_GT(Root.GetItemsCount(), 0);
    auto* root = new TZEPObject(&Scene);
    Converter.SetRoot(root);
    Converter.SetProgress([root](qint64, qint64) {
        delete root;
        return true;
    });
    Converter.ReadNC(program);
    EXPECT_TRUE(Converter.Cancelled());
    Converter.SetRoot(&Root);
    Converter.SetProgress({});
    Converter.ReadNC("G1X1");
    EXPECT_FALSE(Converter.Cancelled());
}

/// The same in every locale, the trace too.
class RS274DTrace : public RS274D, public testing::WithParamInterface<const char*> {
protected:
    RS274DTrace() {
        QLocale::setDefault(QLocale(QLatin1String(GetParam())));
        // Where the system has it; where it has not, nothing changes.
        std::setlocale(LC_ALL, (std::string(GetParam()) + ".UTF-8").c_str());
    }
    ~RS274DTrace() override {
        QLocale::setDefault(QLocale::c());
        std::setlocale(LC_ALL, "C");
    }
};

TEST_P(RS274DTrace, StandsBesideTheProgram) {
    const QString program = Written(QStringLiteral("path.v1.nc"), Content(Data("crcrlf.nc")));
    Converter.SetFileName(program);
    Converter.SetDoDump(true);
    Converter.LoadFromFile();
    EXPECT_THAT(Objects(), ElementsAre("TZEPLine 0 0 0 > 1 0 0 style2 808080 @Line 1",
                                       "TZEPLine 1 0 0 > 1 0.5 0 ffffff @Line 2",
                                       "TZEPLine 1 0.5 0 > 1 0.5 0 ffffff @Line 2"));
    EXPECT_EQ(Content(Folder.filePath(QStringLiteral("path.v1.dmp"))).toStdString(),
              "quick move\r\n"
              "X=1.000000, Y=0.000000, Z=0.000000\r\n"
              "linear interpolation\r\n"
              "X=1.000000, Y=0.500000, Z=0.000000\r\n"
              "X=1.000000, Y=0.500000, Z=0.000000\r\n"
              "skip word (G40)\r\n"
              "next tool\r\n");
    Converter.Dump("after the reading");
}

INSTANTIATE_TEST_SUITE_P(Locales, RS274DTrace, testing::Values("C", "de_DE"));

TEST_F(RS274D, TheTraceNeverReplacesTheProgram) {
    Converter.SetDoDump(true);
    Converter.SetFileName(Written(QStringLiteral("a.dmp"), "G1X1"));
    EXPECT_THAT(ErrorOfLoading(), testing::HasSubstr("it is the program"));
    EXPECT_EQ(Content(Converter.FileName()), "G1X1");
    Converter.SetFileName(Written(QStringLiteral("noextension"), "G1X1"));
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_TRUE(QFile::exists(Folder.filePath(QStringLiteral("noextension.dmp"))));
    EXPECT_TRUE(QDir(Folder.path()).mkpath(QStringLiteral("b.dmp")));
    Converter.SetFileName(Written(QStringLiteral("b.nc"), "G1X1"));
    EXPECT_THAT(ErrorOfLoading(), testing::StartsWith("TRS274DConverter.Dump: Can't write \""));
}

} // namespace
} // namespace ZEP
