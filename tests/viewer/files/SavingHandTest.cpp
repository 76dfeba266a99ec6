#include "tests/FolderTest.h"
#include "tests/viewer/SampleFiles.h"
#include "viewer/drawing/LookChoices.h"
#include "viewer/files/Document.h"
#include "viewer/files/Picture.h"
#include <zep/batch/Batch.h>

#include <QImage>
#include <QProcess>

namespace ZEP {
namespace {

/// What is saved and opened again looks as before.
class Saving : public FolderTest {
protected:
    [[nodiscard]] static QString Example(const char* name) {
        return QStringLiteral(ZEP_SOURCE "/examples/") + QLatin1String(name);
    }
    [[nodiscard]] QImage Picture(TDocument& document) const {
        document.LookBest(4.0 / 3);
        WritePicture(document, {}, {.Size = {320, 240}}, Path("picture.png"));
        return QImage(Path("picture.png"));
    }
    /// Saves what is shown, and that once more: as text, which then stays.
    void ExpectSame(TDocument& document, const char* what) {
        SCOPED_TRACE(what);
        const QImage before = Picture(document);
        document.Save(Path("a.zept"));
        TDocument again;
        ASSERT_TRUE(again.Open({Path("a.zept")}, false));
        EXPECT_TRUE(again.Files().front().Messages.empty());
        EXPECT_EQ(Picture(again), before);
        again.Save(Path("b.zept"));
        EXPECT_EQ(Contents("b.zept"), Contents("a.zept"));
    }
    QString PutTexts() {
        using namespace Sample;
        const auto text = [](const char* along, const char* across) {
            return Pairs({{0, "TEXT"},
                          {8, "p"},
                          {1, "Wide"},
                          {40, "2"},
                          {72, along},
                          {73, across},
                          {11, "9"},
                          {21, "3"}});
        };
        return Put("texts.dxf",
                   Drawing(Layer("p", 3) + Layer("off", -1), LineOn("p") + LineOn("off") +
                                                                 text("1", "0") + text("2", "3") +
                                                                 Pairs({{0, "MTEXT"},
                                                                        {8, "p"},
                                                                        {1, "two\\Plines"},
                                                                        {40, "1"},
                                                                        {71, "5"},
                                                                        {10, "4"},
                                                                        {20, "7"}})));
    }
};

TEST_F(Saving, KeepsThePictureOfEachKindOfFile) {
    const QStringList rows[] = {
        {Example("parts/drill-plate.nc")},
        {Example("drawings/flange.dxf")},
        {Example("models/lighthouse.3ds")},
        {PutTexts()},
        {Example("parts/bracket.nc"), Example("models/gears.3ds"), Example("models/gears.3ds"),
         PutTexts()},
    };
    for (const QStringList& files : rows) {
        TDocument document;
        ASSERT_TRUE(document.Open(files, false));
        ExpectSame(document, qPrintable(files.first()));
    }
}

TEST_F(Saving, TakesWhatIsShownAndNotWhatIsOnTheDisk) {
    TDocument document;
    ASSERT_TRUE(document.Open({PutTexts()}, false));
    document.Files()[0].Root->GetItem(0)->SetVisible(false);
    const QImage seen = Picture(document);
    QFile::remove(Path("texts.dxf"));
    ExpectSame(document, "what is hidden stays hidden, and the drawing is gone");
    EXPECT_EQ(Picture(document), seen) << "saving changes nothing";
}

TEST_F(Saving, WithoutADisplayIsTheSame) {
    TDocument document;
    ASSERT_TRUE(document.Open({PutTexts()}, false));
    document.Files()[0].Root->GetItem(0)->SetSelected(true);
    ASSERT_TRUE(document.Files()[0].Root->GetItem(0)->Selected());
    document.Save(Path("a.zept"));
    QProcess zepview;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    zepview.setProcessEnvironment(environment);
    zepview.start(QStringLiteral(ZEP_PROGRAMS "/zepview"),
                  {QStringLiteral("--save"), Path("b.zept"), Path("texts.dxf")});
    ASSERT_TRUE(zepview.waitForFinished());
    EXPECT_EQ(zepview.exitCode(), 0) << zepview.readAllStandardError().toStdString();
    EXPECT_EQ(Contents("b.zept"), Contents("a.zept"));
}

} // namespace
} // namespace ZEP
