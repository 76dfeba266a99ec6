#include "tests/framework/stream/Fields.h"
#include <zep/framework/Color.h>
#include <zep/framework/stream/StreamFile.h>
#include <zep/objects/Line.h>
#include <zep/scene/Scene.h>

#include <QGuiApplication>
#include <QPalette>

#include <gtest/gtest.h>

using namespace ZEP;

namespace {

class ScenePalette : public testing::Test {
protected:
    ~ScenePalette() override { QGuiApplication::setPalette(m_before); }

    static void UsePalette(const QColor& window, const QColor& button) {
        QPalette palette;
        palette.setColor(QPalette::Base, window);
        palette.setColor(QPalette::Button, button);
        QGuiApplication::setPalette(palette);
    }

    static void Fill(TZEPScene& scene) {
        scene.SetBackgroundColor(clWindow);
        auto* line = new TZEPLine(&scene);
        line->SetColor(clBtnFace);
        line->SetParentComponent(&scene);
    }

private:
    QPalette m_before = QGuiApplication::palette();
};

} // namespace

TEST_F(ScenePalette, SystemColoursAreStoredAsSuch) {
    for (const TStreamForm form : {TStreamForm::Binary, TStreamForm::Text}) {
        UsePalette(Qt::white, Qt::lightGray);
        TZEPScene light;
        Fill(light);
        const std::string saved = SavedAs(form, light);
        const TGLColor before = ToGLColor(light.BackgroundColor(), 1);

        UsePalette(Qt::black, Qt::darkBlue);
        ASSERT_NE(ToGLColor(light.BackgroundColor(), 1), before) << "the palettes do not differ";
        TZEPScene dark;
        Fill(dark);
        EXPECT_EQ(SavedAs(form, dark), saved);
        EXPECT_EQ(SavedAs(form, light), saved);
        TZEPScene loaded;
        LoadInto(loaded, saved);
        EXPECT_EQ(SavedAs(form, loaded), saved);
    }
}
