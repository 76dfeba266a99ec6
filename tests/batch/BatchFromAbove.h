#pragma once

#include <zep/batch/Batch.h>
#include <zep/objects/Line.h>
#include <zep/objects/Polygon.h>
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/view/Camera.h>
#include <zep/view/Panel.h>

#include <gtest/gtest.h>

namespace ZEP {

/// A batch seen from above: a unit is ten pixels, the origin in the middle.
class TBatchFromAbove : public testing::Test {
protected:
    static constexpr QRgb Nothing = qRgb(0, 0, 0);
    static constexpr QRgb Red = qRgb(255, 0, 0);
    static constexpr QRgb Green = qRgb(0, 255, 0);
    static constexpr QRgb Blue = qRgb(0, 0, 255);
    static constexpr QRgb Mark = qRgb(255, 255, 0); ///< of what is selected

    TBatchFromAbove() {
        m_scene.SetSceneAmbientColor(clWhite);
        m_batch.SetParentComponent(&m_scene);
        m_camera.SetParentComponent(&m_scene);
        m_camera.SetOrthographic(true);
        m_camera.SetFOVY(90);
        m_camera.Position()->SetData(0, -0.005, 5);
        m_panel.resize(Side, Side);
        m_panel.SetCamera(&m_camera);
    }

    static constexpr int Side = 100;

    static QRgb Rounded(QRgb color) {
        const auto rounded = [](int part) { return part > 200 ? 255 : part < 50 ? 0 : 128; };
        return qRgb(rounded(qRed(color)), rounded(qGreen(color)), rounded(qBlue(color)));
    }

    /// \param parent  null: the batch
    template <class Object>
    Object* Add(TColor color, TZEPObject* parent = nullptr) {
        auto* object = new Object(&m_batch);
        object->SetColor(color);
        if (auto* shape = qobject_cast<TZEPShape*>(object)) shape->SetWidth(5);
        object->SetParentComponent(parent ? parent : &m_batch);
        return object;
    }

    template <class T>
    static T* AddTo(TZEPObject* parent) {
        return ZEP::Add<T>(parent);
    }

    /// In its own colour.
    template <class TCorners>
    TZEPPolygon* AddFace(const TCorners& corners, TColor color, TZEPObject* parent = nullptr) {
        auto* face = Add<TZEPPolygon>(color, parent);
        face->SetColorVertexes(false);
        for (const TGLArrayd3& corner : corners) face->Vertexes()->Add()->SetPoint(corner);
        return face;
    }

    void Show(const TZEPShown& shown) { m_batch.SetShown(shown); }

    TZEPLine* AddLine(double y, TColor color = clRed, TZEPObject* parent = nullptr) {
        auto* line = Add<TZEPLine>(color, parent);
        line->P1()->SetData(-4, y, 0);
        line->P2()->SetData(4, y, 0);
        return line;
    }

    /// The colour at a place of the batch's plane.
    QRgb ColorAt(double x, double y) {
        const QImage frame = m_panel.GrabFrame();
        const double ratio = static_cast<double>(frame.width()) / 10;
        const QPoint pixel(static_cast<int>((5 + x) * ratio), static_cast<int>((5 - y) * ratio));
        return frame.valid(pixel) ? frame.pixel(pixel) : 0;
    }

    /// The same in steps that smoothing does not reach.
    QRgb At(double x, double y) { return Rounded(ColorAt(x, y)); }

    TZEPScene m_scene;
    TZEPBatch m_batch;
    TZEPCamera m_camera;
    TZEPPanel m_panel;
};

} // namespace ZEP
