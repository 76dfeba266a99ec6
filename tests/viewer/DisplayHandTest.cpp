#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

namespace ZEP {
namespace {

/// A server that ends with its last connection, as others begin anew then.
TEST(DisplayServer, KeepsAConnectionUntilTheProgramEnds) {
    QProcess server;
    server.start(
        QStringLiteral("Xvfb"),
        QStringLiteral("-terminate -displayfd 1 -nolisten tcp -screen 0 640x480x24").split(u' '));
    if (!server.waitForReadyRead()) GTEST_SKIP() << "no Xvfb here";
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"),
                       u':' + QString::fromLatin1(server.readAll().trimmed()));
    // Leaks are looked for when the driver has been unloaded, and its memory has no owner any more.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    const QTemporaryDir folder;
    QProcess zepview;
    zepview.setProcessEnvironment(environment);
    zepview.start(QStringLiteral(ZEP_PROGRAMS "/zepview"),
                  {QStringLiteral("--picture"), folder.filePath(QStringLiteral("p.png")),
                   QStringLiteral("--size"), QStringLiteral("9x9"),
                   QStringLiteral(ZEP_SOURCE "/examples/parts/drill-plate.nc")});
    ASSERT_TRUE(zepview.waitForFinished());
    EXPECT_EQ(zepview.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(zepview.exitCode(), 0) << zepview.readAllStandardError().toStdString();
    EXPECT_TRUE(server.waitForFinished());
}

} // namespace
} // namespace ZEP
