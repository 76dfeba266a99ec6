#include "viewer/files/Info.h"

#include <zep/appearance/effects/Light.h>
#include <zep/batch/Batch.h>
#include <zep/objects/Arc.h>
#include <zep/objects/Circle.h>
#include <zep/objects/Line.h>
#include <zep/objects/Mesh.h>
#include <zep/objects/Point.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Add.h>
#include <zep/view/Actor.h>
#include <zep/view/Camera.h>

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace ZEP {
namespace {

template <class T, int Count>
void AddWithVertexes(TZEPObject& root) {
    T* object = Add<T>(&root);
    for (int i = 0; i < Count; ++i) object->Vertexes()->Add();
}

struct TSample {
    TSample() {
        File.Name = QStringLiteral("part.nc");
        File.Format = TFileFormat::RS274D;
        File.Seconds = 0.25;
        File.Root = &Root;
    }
    TZEPBatch Root;
    TOpenedFile File;
};

TEST(Info, AnEmptyFileHasNoBounds) {
    TSample sample;
    const QJsonObject json = ToJson(InfoOf(sample.File));
    EXPECT_TRUE(json[QStringLiteral("bounds")].isNull());
    EXPECT_TRUE(json[QStringLiteral("objects")].toObject().isEmpty());
    EXPECT_TRUE(json[QStringLiteral("messages")].toObject().isEmpty());
    EXPECT_FALSE(ToText(InfoOf(sample.File)).contains(QStringLiteral("Bounds")));
}

TEST(Info, VerticesAreCountedByKind) {
    struct TRow {
        void (*Add)(TZEPObject& root);
        const char* Class;
        int Vertices;
    };
    const TRow rows[] = {
        {[](TZEPObject& root) { Add<TZEPPoint>(&root); }, "TZEPPoint", 1},
        {[](TZEPObject& root) { Add<TZEPLine>(&root); }, "TZEPLine", 2},
        {[](TZEPObject& root) { Add<TZEPArc>(&root)->SetSegments(7); }, "TZEPArc", 8},
        {[](TZEPObject& root) { Add<TZEPCircle>(&root)->SetSegments(7); }, "TZEPCircle", 7},
        {AddWithVertexes<TZEPPolyline, 5>, "TZEPPolyline", 5},
        {AddWithVertexes<TZEPPolygon, 4>, "TZEPPolygon", 4},
        {AddWithVertexes<TZEPMesh, 6>, "TZEPMesh", 6},
    };
    for (const TRow& row : rows) {
        TSample sample;
        row.Add(sample.Root);
        row.Add(sample.Root);
        const TFileInfo info = InfoOf(sample.File);
        const QMap<QString, qint64> objects{{QLatin1String(row.Class), 2}};
        EXPECT_EQ(info.Objects, objects) << row.Class;
        EXPECT_EQ(info.Vertices, 2 * row.Vertices) << row.Class;
    }
}

TEST(Info, LayersFacesLightsAndCamerasAreCounted) {
    TSample sample;
    auto* layer = Add<TZEPActor>(&sample.Root);
    Add<TZEPPolygon>(layer);
    auto* mesh = Add<TZEPMesh>(layer);
    for (int i = 0; i < 5; ++i) mesh->Faces()->Add();
    Add<TZEPLight>(&sample.Root);
    Add<TZEPLight>(&sample.Root);
    Add<TZEPCamera>(&sample.Root)->SetIdent(QStringLiteral("Eye"));
    Add<TZEPCamera>(&sample.Root);
    sample.File.Format = TFileFormat::F3DS;
    sample.File.Materials = 7;
    const QJsonObject json = ToJson(InfoOf(sample.File));
    const auto number = [&](const char* key) { return json[QLatin1String(key)].toInt(); };
    EXPECT_EQ(number("layers"), 1);
    EXPECT_EQ(number("faces"), 6);
    EXPECT_EQ(number("lights"), 2);
    EXPECT_EQ(number("materials"), 7);
    EXPECT_EQ(json[QStringLiteral("cameras")].toArray(), (QJsonArray{"Eye", "Camera"}));
    EXPECT_TRUE(ToText(InfoOf(sample.File)).contains(QStringLiteral("Cameras: Eye, Camera\n")));
}

TEST(Info, JsonHoldsAbsoluteBoundsAndMessages) {
    TSample sample;
    auto* line = Add<TZEPLine>(&sample.Root);
    line->P1()->SetData(-1, 2, 3);
    auto* inner = Add<TZEPLine>(line);
    inner->P2()->SetData(10, 0, -0.5);
    sample.File.Messages = {{QStringLiteral("code G68"), 3, 12},
                            {QStringLiteral("texture %1.png not found"), 2, 0}};
    const QJsonObject json = ToJson(InfoOf(sample.File));
    EXPECT_EQ(
        QJsonDocument(json[QStringLiteral("bounds")].toObject()).toJson(QJsonDocument::Compact),
        R"({"max":[10,2,3],"min":[-1,0,-0.5]})");
    EXPECT_EQ(json[QStringLiteral("messages")].toObject()[QStringLiteral("code G68")].toInt(), 3);
    EXPECT_EQ(json[QStringLiteral("format")].toString(), QStringLiteral("RS-274D"));
    EXPECT_TRUE(ToText(InfoOf(sample.File))
                    .contains(QStringLiteral("code G68: 3, first in line 12\n"
                                             "  texture %1.png not found: 2\n")));
}

} // namespace
} // namespace ZEP
