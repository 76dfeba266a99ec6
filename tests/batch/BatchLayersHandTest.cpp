#include "tests/batch/BatchFromAbove.h"

#include <zep/appearance/effects/Light.h>
#include <zep/objects/Box.h>
#include <zep/objects/Label.h>
#include <zep/objects/Polygon.h>
#include <zep/objects/Polyline.h>
#include <zep/view/Actor.h>

namespace ZEP {
namespace {

/// Children that only hold others.
class BatchLayers : public TBatchFromAbove {
protected:
    TZEPActor* AddLayer(TZEPObject* parent = nullptr) {
        return AddTo<TZEPActor>(parent ? parent : &m_batch);
    }

    TZEPPolygon* AddFace(const std::vector<TGLArrayd3>& corners, TColor color,
                         TZEPObject* parent = nullptr) {
        return TBatchFromAbove::AddFace(corners, color, parent);
    }
};

TEST_F(BatchLayers, OpenAndClosedChainsAreToldApart) {
    for (const bool closed : {false, true}) {
        auto* chain = Add<TZEPPolyline>(clRed, AddLayer());
        chain->SetOrigColor(clRed);
        chain->SetSmooth(false);
        chain->SetClosed(closed);
        for (const TGLArrayd3& corner :
             {TGLArrayd3{-3, -3, 0}, TGLArrayd3{3, -3, 0}, TGLArrayd3{3, 3, 0}})
            chain->Vertexes()->Add()->SetPoint(corner);
        EXPECT_EQ(At(0, -3), Red);
        EXPECT_EQ(At(0, 0), closed ? Red : Nothing);
    }
}

TEST_F(BatchLayers, ColoursThatCouldNotBeToldFromTheBackgroundGiveWay) {
    TZEPActor* layer = AddLayer();
    AddLine(2, clWhite, layer);
    AddLine(0, clBlack, layer);
    AddLine(-2, clBlue, layer);
    AddFace({{2, 3, 0}, {4, 3, 0}, {4, 4, 0}, {2, 4, 0}}, clWhite, layer);
    struct TRow {
        TColor Background;
        QRgb White, Black, Blue;
    };
    constexpr QRgb White = qRgb(255, 255, 255);
    for (const TRow& row :
         {TRow{clBlack, White, White, qRgb(128, 128, 255)}, TRow{clWhite, Nothing, Nothing, Blue},
          TRow{TColor{0x909090}, White, Nothing, Blue}}) {
        m_scene.SetBackgroundColor(row.Background);
        Show({.Background = row.Background});
        EXPECT_EQ(At(1, 2), row.White) << ToQColor(row.Background).name().toStdString();
        EXPECT_EQ(At(3, 3.5), row.White) << ToQColor(row.Background).name().toStdString();
        EXPECT_EQ(At(1, 0), row.Black) << ToQColor(row.Background).name().toStdString();
        EXPECT_EQ(At(1, -2), row.Blue) << ToQColor(row.Background).name().toStdString();
    }
}

TEST_F(BatchLayers, FacesAreLitAndLinesAreNot) {
    TZEPActor* layer = AddLayer();
    TZEPPolygon* face = AddFace({{1, 1, 0}, {3, 1, 0}, {3, 3, 0}, {1, 3, 0}}, clWhite, layer);
    AddLine(-2, clWhite, layer);
    m_scene.SetSceneAmbientColor(clBlack);
    EXPECT_EQ(At(2, 2), Nothing);
    EXPECT_EQ(At(1, -2), qRgb(255, 255, 255));
    auto* light = AddTo<TZEPLight>(&m_scene); // from above
    light->Position()->SetData(0, 0, 1);
    light->SetColor(clRed);
    EXPECT_EQ(At(2, 2), Red);
    m_batch.SetEvenLight(true);
    EXPECT_EQ(At(2, 2), qRgb(255, 255, 255));
    face->SetDrawType(dtLine);
    EXPECT_EQ(At(2, 2), Nothing);
}

TEST_F(BatchLayers, FacesAreLitInAnyOrderOfTheirCorners) {
    const std::vector<TGLArrayd3> corners{{1, 1, 0}, {3, 1, 0}, {3, 3, 0}, {1, 3, 0}};
    m_scene.SetSceneAmbientColor(clBlack);
    auto* light = AddTo<TZEPLight>(&m_scene);
    light->Position()->SetData(0, 0, 1);
    light->SetColor(clLime);
    for (const bool turned : {false, true})
        for (const bool repeated : {false, true}) {
            std::vector<TGLArrayd3> order = corners;
            if (turned) std::reverse(order.begin(), order.end());
            if (repeated) order[3] = order[2];
            const std::unique_ptr<TZEPPolygon> face(AddFace(order, clWhite, AddLayer()));
            EXPECT_EQ(turned ? At(1.5, 2.5) : At(2.5, 1.5), Green) << turned << repeated;
        }
}

TEST_F(BatchLayers, ADentIsNotFilled) {
    AddFace({{-3, -3, 0}, {0, 2, 0}, {3, -3, 0}, {0, -1, 0}}, clRed, AddLayer());
    EXPECT_EQ(At(0, 1), Red);
    EXPECT_EQ(At(0, -2), Nothing);
    delete m_batch.GetItem(0);
    AddFace({{0, -1, 0}, {-3, -3, 0}, {0, 2, 0}, {3, -3, 0}}, clRed, AddLayer());
    EXPECT_EQ(At(0, 1), Red);
    EXPECT_EQ(At(0, -2), Nothing);
}

TEST_F(BatchLayers, WhatABatchCannotHoldDrawsItselfInItsPlace) {
    TZEPActor* layer = AddLayer();
    layer->XForm()->Translate()->SetData(0, 3, 0);
    TZEPActor* block = AddLayer(layer);
    block->XForm()->Translate()->SetData(-3, 0, 0);
    auto* box = Add<TZEPBox>(clBlue, block);
    auto* curve = Add<TZEPPolyline>(clRed, block); // a spline
    curve->SetOrigColor(clRed);
    for (const double x : {-1.0, 3.0, 7.0}) curve->Vertexes()->Add()->SetPoint({x, -3, 0});
    m_scene.SetSceneAmbientColor(clBlack);
    EXPECT_NE(At(1, 0), Nothing); // no light falls on a line
    EXPECT_EQ(At(-3, 3), Nothing);
    m_scene.SetSceneAmbientColor(clWhite);
    EXPECT_EQ(At(-3, 3), Blue);
    box->SetSelected(true);
    EXPECT_NE(At(-3.5, 3.5), Nothing);
    delete box;
    EXPECT_EQ(At(-3, 3), Nothing);
}

TEST_F(BatchLayers, TextIsDrawnInItsColourOnceItCanBeRead) {
    auto* label = Add<TZEPLabel>(clRed, AddLayer());
    label->SetCaption(QStringLiteral("I"));
    label->Font()->SetName(QStringLiteral("DejaVu Sans"));
    label->XForm()->Scale()->SetData(8, 8, 8);
    label->XForm()->Translate()->SetData(-1, -4, 0);
    m_scene.SetSceneAmbientColor(clBlack);
    TGLArrayd3 min, max;
    label->GetSize(min, max);
    const double stem = -1 + 4 * (min[0] + max[0]); // its middle
    EXPECT_EQ(At(stem, 3), Red);
    EXPECT_EQ(At(stem, -3), Red);
    EXPECT_EQ(At(4, 0), Nothing);
    label->XForm()->Scale()->SetData(0.2, 0.2, 0.2); // two pixels: a line in its place
    label->SetCaption(QStringLiteral("IIIIIIIIIIIIIIIIIIII"));
    EXPECT_EQ(At(stem, 3), Nothing);
    const QImage frame = m_panel.GrabFrame();
    int coloured = 0;
    for (int y = 0; y < frame.height(); ++y)
        for (int x = 0; x < frame.width(); ++x) coloured += qRed(frame.pixel(x, y)) > 60 ? 1 : 0;
    EXPECT_GT(coloured, 15);
}

TEST_F(BatchLayers, APartOfLargeLayersStillShowsTheForm) {
    TZEPActor* layer = AddLayer();
    for (int i = 0; i < 20'000; ++i) {
        const double x = -4 + i * 4e-4;
        AddFace({{x, 2, 0}, {x + 0.1, 2, 0}, {x, 3, 0}}, clRed, layer);
        AddLine(-2 - i * 1e-4, clBlue, layer);
    }
    EXPECT_NE(At(0, 2.3), Nothing);
    EXPECT_TRUE(m_batch.IsLarge());
    for (const double share : {0.9, 0.5, 0.1}) {
        Show({.Share = share});
        EXPECT_EQ(At(0, 2.3), Red) << share;
        EXPECT_EQ(At(0, -3), Blue) << share;
    }
    layer->SetVisible(false);
    EXPECT_FALSE(m_batch.IsLarge());
}

} // namespace
} // namespace ZEP
