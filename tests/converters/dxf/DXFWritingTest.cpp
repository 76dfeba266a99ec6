#include "tests/Cases.h"
#include "tests/converters/dxf/DXFFixture.h"
#include <zep/framework/Exception.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Box.h>
#include <zep/objects/Circle.h>
#include <zep/objects/DashedPolyline.h>
#include <zep/objects/Label.h>
#include <zep/objects/Line.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Node.h>
#include <zep/scene/Add.h>
#include <zep/view/Actor.h>

#include <QBuffer>

#include <cerrno>
#include <cmath>
#include <cstring>

namespace ZEP {
namespace {

class DXFWriting : public DXF {
protected:
    DXFWriting() { Converter.SetExtended(true); }

    std::string Written() {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        TZEPObject* root = &Root;
        Converter.WriteDXF(buffer, {&root, 1});
        return buffer.data().toStdString();
    }
    /// The values of the entities behind those codes, one behind the other.
    static std::string Entities(const std::string& drawing, const std::vector<int>& codes) {
        std::istringstream lines(drawing.substr(drawing.find("ENTITIES")));
        std::string code, value, values;
        std::getline(lines, code);
        while (std::getline(lines, code) && std::getline(lines, value) && value != "ENDSEC")
            if (std::ranges::find(codes, std::stoi(code)) != codes.end()) values += value + " ";
        return values;
    }
};

/// Line by line; numbers may differ as rounding makes them.
::testing::AssertionResult AreSame(const std::string& a, const std::string& b) {
    std::istringstream first(a), second(b);
    std::string x, y;
    for (int number = 1; std::getline(first, x); ++number) {
        const bool isThere = bool(std::getline(second, y));
        bool isNumber = false;
        const double value = QByteArray::fromStdString(x).toDouble(&isNumber);
        const double other = QByteArray::fromStdString(y).toDouble();
        const double tolerance = 1e-9 * std::max(1.0, std::abs(value));
        if (isThere && (x == y || (isNumber && std::abs(value - other) < tolerance))) continue;
        return ::testing::AssertionFailure() << "line " << number << ": " << x << " and " << y;
    }
    return ::testing::AssertionSuccess();
}

TEST_F(DXFWriting, WhatIsReadAgainIsWrittenTheSame) {
    for (const std::string& file : CaseFiles("dxf"))
        for (const TCase& c : ReadCases(ZEP_TEST_DATA "/cases/" + file)) {
            SCOPED_TRACE(c.Name);
            Root.Clear();
            if (!ErrorOf([&] { Converter.ReadDXF(BytesOfPairs(Unescaped(c.Input))); }).empty())
                continue;
            const std::string first = Written();
            Root.Clear();
            Converter.ReadDXF(first);
            EXPECT_THAT(Passed(), ::testing::IsEmpty());
            EXPECT_TRUE(AreSame(first, Written()));
        }
}

TEST_F(DXFWriting, TransformsAreApplied) {
    auto* layer = Add<TZEPActor>(&Root);
    layer->SetIdent(QStringLiteral("a/b"));
    layer->SetColor(clRed);
    auto* turned = Add<TZEPNode>(layer);
    turned->XForm()->Translate()->SetData(10, 0, 0);
    turned->XForm()->Rotate()->SetData(0, 180, 0);
    turned->XForm()->Scale()->SetData(2, 2, 2);
    auto* arc = Add<TZEPArc>(turned);
    arc->SetColor(TColor{0x123456});
    arc->SetEndAngle(90);
    // Seen from behind it runs about -z, whose plane has its x to the left.
    EXPECT_EQ(Entities(Written(), {0, 8, 62, 420, 10, 40, 50, 51, 230}),
              "ARC a_b 46 5649426 -10.0 1.0 -1.0 0.0 90.0 ");
    turned->XForm()->Scale()->SetData(2, 1, 2);
    EXPECT_EQ(Entities(Written(), {0, 40, 41, 42}), "ELLIPSE 0.5 0.0 1.5707963267948966 ");
}

TEST_F(DXFWriting, WhatDrawingsCannotHoldIsCounted) {
    Add<TZEPBox>(&Root);
    Add<TZEPLine>(&Root)->P1()->SetData(NAN, 0, 0);
    Add<TZEPCircle>(&Root)->XForm()->Translate()->SetData(0, NAN, 0);
    Add<TZEPLabel>(&Root)->SetBitmapFont(true);
    EXPECT_EQ(Entities(Written(), {0}), "");
    EXPECT_THAT(Passed(),
                ::testing::UnorderedElementsAre("TZEPBox, which drawings have no entity for 1",
                                                "objects with coordinates that are no numbers 2",
                                                "texts as high as pixels say 1"));
}

TEST_F(DXFWriting, TextsAreWrittenAsTheyRead) {
    for (const char* text : {"100 %% sure", "%%c", "\\U+0041", "Größe Ω", "a\tb", "5%"}) {
        Root.Clear();
        Add<TZEPLabel>(&Root)->SetCaption(QString::fromUtf8(text));
        const std::string written = Written();
        EXPECT_TRUE(std::ranges::all_of(written, [](char c) { return c > 0; }));
        Root.Clear();
        Converter.ReadDXF(written);
        const auto* label = qobject_cast<TZEPLabel*>(Root.GetItem(0)->GetItem(0));
        ASSERT_TRUE(label) << text;
        EXPECT_EQ(label->Caption().toStdString(), std::string(text) == "a\tb" ? "a b" : text);
    }
}

TEST_F(DXFWriting, LargeMeshesAreDivided) {
    auto* mesh = Add<TZEPMesh>(&Root);
    constexpr int count = 40'000;
    mesh->Vertexes()->AddEach(count, [](TZEPVertex3TexCI& vertex, std::size_t i) {
        vertex.SetPointQuietly({static_cast<double>(i), std::sqrt(i), 0});
    });
    for (int i = 0; i + 2 < count; ++i) mesh->Faces()->Add()->SetCornersQuietly(i, i + 1, i + 2);
    mesh->Faces()->Add()->SetCornersQuietly(0, 1, count); // is not drawn
    const std::string written = Written();
    Root.Clear();
    Converter.ReadDXF(written);
    int faces = 0;
    TZEPObject& layer = *Root.GetItem(0);
    for (int i = 0; i < layer.GetItemsCount(); ++i)
        faces += qobject_cast<TZEPMesh*>(layer.GetItem(i))->Faces()->Count();
    EXPECT_EQ(layer.GetItemsCount(), 2);
    EXPECT_EQ(faces, count - 2);
}

TEST_F(DXFWriting, AnOldFileStandsUntilTheNewOneIsWhole) {
    Converter.SetRoot(nullptr);
    EXPECT_EQ(ErrorOf([&] { Converter.SaveToFile(); }),
              "TDXFConverter.SaveToFile: Can't save Root=nil");
    Converter.SetRoot(&Root);
    EXPECT_EQ(ErrorOf([&] { Converter.SaveToFile(); }),
              "TDXFConverter.SaveToFile: No file name defined");
    for (int i = 0; i < 3000; ++i) Add<TZEPLine>(&Root);
    const QString name = Put("a.dxf", "old");
    Converter.SetFileName(name);
    const auto saved = [&](const TProgress& progress) {
        Converter.SetProgress(progress);
        Converter.SaveToFile();
        return Converter.Cancelled() ? Contents("a.dxf").toStdString() : "";
    };
    EXPECT_EQ(saved([](qint64 done, qint64 total) { return done < 2000 || total != 3000; }), "old");
    EXPECT_EQ(saved([&](qint64, qint64) { return delete Root.GetItem(0), true; }), "old");
    EXPECT_EQ(saved({}), "");
    EXPECT_TRUE(Contents("a.dxf").startsWith("0\nSECTION\n"));
    Converter.SetFileName(name + QStringLiteral("/b.dxf"));
    EXPECT_EQ(ErrorOf([&] { Converter.SaveToFile(); }),
              "TDXFConverter.SaveToFile: Can't write \"" + name.toStdString() +
                  "/b.dxf\": " + std::strerror(ENOTDIR) + ".");
}

} // namespace
} // namespace ZEP
