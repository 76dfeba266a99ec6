#pragma once

#include "tests/view/NativeWindow.h"
#include <zep/ZEPClasses.h>

#include <QTest>

#include <gtest/gtest.h>

namespace ZEP {

inline constexpr unsigned int Red = 0xFF0000;
inline constexpr unsigned int Green = 0x00FF00;
inline constexpr unsigned int Blue = 0x0000FF;
inline constexpr unsigned int Black = 0;

/// Notes how it is drawn.
class DraftProbe : public TZEPObject {
public:
    using TZEPObject::TZEPObject;
    void DrawMain(bool draft) override { Drafts.push_back(draft); }
    std::vector<bool> Drafts;
};

/// A window with a panel that shows a red scene.
class Panel : public testing::Test {
protected:
    void SetUp() override {
        if (!NativeWindow::HasDisplay()) GTEST_SKIP() << "there is no X display";
        Scene = std::make_unique<TZEPScene>();
        Scene->SetBackgroundColor(clRed);
        Camera = Add<TZEPCamera>(Scene.get());
        View = new TZEPPanel(&Window);
        View->SetAlign(TZEPPanel::alClient);
        View->SetCamera(Camera);
        QObject::connect(View, &TZEPPanel::AfterDraw, [this] { ++Frames; });
        Window.setGeometry(20, 30, 160, 120);
    }

    void Show() {
        Window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&Window));
        Settle();
    }
    /// Until everything that is on its way has arrived.
    static void Settle() { QTest::qWait(60); }

    [[nodiscard]] unsigned int Shown(double x, double y) const {
        const int px = static_cast<int>(x * (View->Width() - 1));
        const int py = static_cast<int>(y * (View->Height() - 1));
        return NativeWindow::ScreenPixel(View->winId(), px, py);
    }
    /// All corners and the middle of the panel have that colour on the screen.
    void ExpectShown(unsigned int color, const char* what) const {
        for (const auto& [x, y] : {std::pair{0., 0.}, {1., 0.}, {0., 1.}, {1., 1.}, {.5, .5}})
            EXPECT_EQ(Shown(x, y), color) << what << " at " << x << ", " << y;
    }

    std::unique_ptr<TZEPScene> Scene;
    TZEPCamera* Camera = nullptr;
    QWidget Window;
    TZEPPanel* View = nullptr;
    int Frames = 0;
};

} // namespace ZEP
