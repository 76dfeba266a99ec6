#include "viewer/files/FileWatch.h"

#include "tests/FolderTest.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

namespace ZEP {
namespace {

constexpr int Longest = 5000; // ms until a change is told
constexpr int Quiet = 700;    // in which something would have been told

/// Watches "a.nc", and "b.nc" in the same folder.
class FileWatch : public FolderTest {
protected:
    FileWatch() { m_watch.Watch({Opened("a.nc"), Opened("b.nc")}); }

    TOpenedFile Opened(const char* name) {
        TOpenedFile file;
        file.Name = Put(name, "G1 X1\n");
        file.State = TFileState::Of(file.Name);
        return file;
    }
    /// Files that are told as changed, from now on.
    QStringList NextChange() {
        if (m_changed.isEmpty()) m_changed.wait(Longest);
        return m_changed.isEmpty() ? QStringList() : m_changed.takeFirst()[0].toStringList();
    }

    TFileWatch m_watch;
    QSignalSpy m_changed{&m_watch, &TFileWatch::Changed};
    QSignalSpy m_vanished{&m_watch, &TFileWatch::Vanished};
};

TEST_F(FileWatch, TellsOfAFileThatIsWrittenReplacedOrComesBack) {
    EXPECT_FALSE(m_changed.wait(Quiet)) << "nothing has changed";
    Put("a.nc", "G1 X20\n");
    EXPECT_EQ(NextChange(), QStringList{Path("a.nc")});
    // As editors do: another file takes its name.
    for (const char* text : {"G1 X300\n", "G1 X4000\n"}) {
        Put("a.nc.new", text);
        ASSERT_TRUE(QFile::remove(Path("a.nc")));
        ASSERT_TRUE(QFile::rename(Path("a.nc.new"), Path("a.nc")));
        EXPECT_EQ(NextChange(), QStringList{Path("a.nc")});
    }
    EXPECT_TRUE(m_vanished.isEmpty()) << "it was away for a moment only";
    ASSERT_TRUE(QFile::remove(Path("b.nc")));
    ASSERT_TRUE(m_vanished.wait(Longest));
    EXPECT_EQ(m_vanished[0][0].toString(), Path("b.nc"));
    Put("b.nc", "G1 X1 Y1\n");
    EXPECT_EQ(NextChange(), QStringList{Path("b.nc")});
    EXPECT_FALSE(m_changed.wait(Quiet)) << "told twice";
}

TEST_F(FileWatch, WaitsUntilAFileIsWrittenToItsEnd) {
    QFile file(Path("a.nc"));
    ASSERT_TRUE(file.open(QIODevice::Append));
    for (int i = 0; i < 8; ++i) {
        file.write("G1 X2\n");
        file.flush();
        EXPECT_FALSE(m_changed.wait(100)) << "told while it grows";
    }
    file.close();
    EXPECT_EQ(NextChange(), QStringList{Path("a.nc")});
    EXPECT_FALSE(m_changed.wait(Quiet)) << "told twice";
}

TEST_F(FileWatch, TellsWhatChangedWhileItWasRead) {
    TOpenedFile file = Opened("a.nc");
    Put("a.nc", "G1 X1\nG1 X2\n"); // after reading began
    m_watch.Watch({file});
    EXPECT_EQ(NextChange(), QStringList{Path("a.nc")});
}

TEST_F(FileWatch, TellsNothingOfWhatItNoLongerWatches) {
    m_watch.Watch({Opened("b.nc")});
    Put("a.nc", "G1 X20 Y3\n");
    EXPECT_FALSE(m_changed.wait(Quiet));
}

} // namespace
} // namespace ZEP
