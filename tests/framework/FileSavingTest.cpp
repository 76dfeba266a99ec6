#include <zep/framework/FileSaving.h>

#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include <zep/framework/FileText.h>

#include <QDir>

#include <gmock/gmock.h>

#include <csignal>
#include <system_error>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ZEP {
namespace {

constexpr uid_t Nobody = 65534;

/// In the words of the system, which speaks the user's language.
std::string ReasonOf(int error) {
    return std::generic_category().message(error);
}

class FileSaving : public FolderTest {
protected:
    static std::string Save(const QString& name, const QByteArray& bytes = "new") {
        return ErrorOf([&] { SaveFile(name, [&](QIODevice& device) { device.write(bytes); }); });
    }
    [[nodiscard]] struct stat StateOf(const char* name) const {
        struct stat state {};
        EXPECT_EQ(lstat(QFile::encodeName(Path(name)).constData(), &state), 0);
        return state;
    }
    [[nodiscard]] qsizetype FileCount() const {
        return QDir(Path(""))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .size();
    }
};

TEST_F(FileSaving, KeepsWhatTheOldFileIs) {
    const QString name = Put("old", "something longer");
    ASSERT_EQ(chmod(QFile::encodeName(name).constData(), 0640), 0);
    const bool isRoot = chown(QFile::encodeName(name).constData(), Nobody, Nobody) == 0;
    EXPECT_EQ(Save(name), "");
    EXPECT_EQ(Contents("old"), "new");
    EXPECT_EQ(StateOf("old").st_mode & 07777U, 0640U);
    EXPECT_EQ(StateOf("old").st_uid, isRoot ? Nobody : getuid());
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(FileSaving, GoesThroughLinks) {
    const QString name = Put("old", "old");
    ASSERT_TRUE(QFile::link(QStringLiteral("old"), Path("a")));
    ASSERT_TRUE(QFile::link(QStringLiteral("a"), Path("link")));
    ASSERT_TRUE(QFile::link(QStringLiteral("none yet"), Path("ahead")));
    ASSERT_TRUE(QFile::link(QStringLiteral("loop"), Path("loop")));
    EXPECT_EQ(Save(Path("link")), "");
    EXPECT_EQ(Save(Path("ahead")), "");
    EXPECT_THAT(Save(Path("loop")), testing::HasSubstr(ReasonOf(ELOOP)));
    EXPECT_EQ(Contents("old"), "new");
    EXPECT_EQ(Contents("none yet"), "new");
    for (const char* link : {"a", "link", "ahead"}) EXPECT_TRUE(S_ISLNK(StateOf(link).st_mode));
    EXPECT_TRUE(IsSameFile(name, Path("link")));
    EXPECT_FALSE(IsSameFile(name, Path("ahead")));
    EXPECT_FALSE(IsSameFile(Path("no"), Path("no")));
}

TEST_F(FileSaving, WritesIntoPipesAndDevices) {
    const QByteArray pipe = QFile::encodeName(Path("pipe"));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    QByteArray read;
    std::thread reader([&] {
        QFile file(Path("pipe"));
        if (file.open(QIODevice::ReadOnly)) read = file.readAll();
    });
    EXPECT_EQ(Save(Path("pipe")), "");
    reader.join();
    EXPECT_EQ(read, "new");
    EXPECT_TRUE(S_ISFIFO(StateOf("pipe").st_mode));
    EXPECT_EQ(Save(QStringLiteral("/dev/full")),
              "Can't write \"/dev/full\": No space left on device."); // in words of Qt's own
    EXPECT_EQ(Save(Path(".")),
              "Can't write \"" + Path(".").toStdString() + "\": " + ReasonOf(EISDIR) + ".");
}

TEST_F(FileSaving, LeavesTheOldFileWhereTheDiskIsFull) {
    const QString name = Put("old", "old");
    const auto signal = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    for (const rlim_t size : {0U, 1000U, 99'999U}) {
        const rlimit small{size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const std::string error = Save(name, QByteArray(100'000, 'x'));
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_EQ(error, "Can't write \"" + name.toStdString() + "\": " + ReasonOf(EFBIG) + ".");
    }
    std::signal(SIGXFSZ, signal);
    EXPECT_EQ(Contents("old"), "old");
    const auto fails = [](QIODevice&) { throw Exception(QStringLiteral("no")); };
    EXPECT_EQ(ErrorOf([&] { SaveFile(name, fails); }), "no");
    EXPECT_EQ(Contents("old"), "old");
    EXPECT_EQ(FileCount(), 1);
}

/// A user who may write the file, but not the folder.
TEST_F(FileSaving, WritesInPlaceWhereTheFolderIsClosed) {
    const QString name = Put("old", "something longer");
    ASSERT_EQ(chmod(QFile::encodeName(name).constData(), 0666), 0);
    ASSERT_EQ(chmod(QFile::encodeName(Path(".")).constData(), 0555), 0);
    const uid_t user = geteuid();
    ASSERT_EQ(setresuid(user == 0 ? Nobody : user, user == 0 ? Nobody : user, user), 0);
    const std::string errors[] = {Save(name), Save(Path("none"))};
    ASSERT_EQ(setresuid(user, user, user), 0);
    ASSERT_EQ(chmod(QFile::encodeName(Path(".")).constData(), 0755), 0);
    EXPECT_EQ(errors[0], "");
    EXPECT_THAT(errors[1], testing::EndsWith("Permission denied."));
    EXPECT_EQ(Contents("old"), "new");
    EXPECT_EQ(FileCount(), 1);
}

/// Whoever maps a file dies here.
TEST_F(FileSaving, TextsStayAsTheyWereRead) {
    const QByteArray bytes(1 << 20, 'x');
    const TFileText text(Put("text", bytes));
    Put("text", "");
    EXPECT_EQ(text.Text(), std::string_view(bytes.constData(), 1 << 20));
    EXPECT_EQ(TFileText(Path("text")).Text(), "");
}

} // namespace
} // namespace ZEP
