#include "tests/viewer/WindowTest.h"

#include <QMessageBox>
#include <QTimer>

namespace ZEP {
namespace {

class WindowFailures : public WindowTest {};

TEST_F(WindowFailures, AreToldWhileTheOtherFilesAreShown) {
    Show({});
    QString told;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        told = box->text();
        box->close();
    });
    timer.start(20);
    m_window->OpenFiles({Put("bad.3ds", "text"), PutDrawing(), Path("none.nc")});
    EXPECT_TRUE(told.contains(QStringLiteral("bad.3ds"))) << told.toStdString();
    EXPECT_TRUE(told.contains(QStringLiteral("none.nc"))) << told.toStdString();
    ASSERT_EQ(Document().Files().size(), 1U);
    EXPECT_EQ(Document().Files()[0].Name, Path("a.dxf"));
}

} // namespace
} // namespace ZEP
