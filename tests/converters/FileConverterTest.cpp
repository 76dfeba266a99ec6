#include "tests/ErrorOf.h"
#include "tests/FolderTest.h"
#include "tests/converters/dxf/DXFPairs.h"
#include "tests/converters/threeds/ThreeDSChunks.h"
#include "tests/objects/RepaintCounter.h"
#include <zep/ZEP3DS.h>
#include <zep/ZEPDXF.h>
#include <zep/ZEPRS274D.h>
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>

#include <QFileInfo>

#include <gmock/gmock.h>

#include <functional>
#include <memory>

#include <sys/stat.h>

namespace ZEP {
namespace {

/// A reader by what all readers have.
struct TAnyReader {
    const char* Name;
    const char* FullStop; ///< behind the messages that each has its published words for
    std::function<std::unique_ptr<TFileConverter>()> Make;
    std::function<void(TFileConverter&, std::string_view)> Read;
    std::function<void(TFileConverter&)> Load;
    std::string One;  ///< a file of one object below the root or below a layer of its own
    std::string Long; ///< of more than half a megabyte
};

template <class T>
TAnyReader ReaderOf(const char* name, const char* stop, void (T::*read)(std::string_view),
                    const std::string& one, const std::string& all) {
    return {name,
            stop,
            [] { return std::make_unique<T>(); },
            [read](TFileConverter& c, std::string_view text) { (static_cast<T&>(c).*read)(text); },
            [](TFileConverter& c) { static_cast<T&>(c).LoadFromFile(); },
            one,
            all};
}

std::string Repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

std::string Drawing(const std::string& entities) {
    return Pairs("0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|2 A|0 ENDTAB|0 ENDSEC|0 SECTION|"
                 "2 ENTITIES|" +
                 entities + "0 ENDSEC|0 EOF");
}

std::string Model(const std::string& chunks) {
    return BytesOfChunks("4D4D\n 3D3D\n" + chunks);
}

const std::string Mesh = "  4000 'A\n   4100\n    4110 w 1 f 1 2 3\n";

std::vector<TAnyReader> AllReaders() {
    return {ReaderOf("TDXFConverter", "", &TDXFConverter::ReadDXF, Drawing("0 POINT|8 A|"),
                     Drawing(Repeated("0 POINT|8 A|10 1.2345678901|20 2|", 20'000))),
            ReaderOf("TRS274DConverter", ".", &TRS274DConverter::ReadNC, "G1X1\n",
                     "G1\n" + Repeated("X1\nX2\n", 100'000)),
            ReaderOf("TF3DSConverter", ".", &TF3DSConverter::Read3DS, Model(Mesh),
                     Model(Repeated(Mesh + "  7001 '" + std::string(65536, '-') + "\n", 12)))};
}

class FileConverter : public FolderTest, public testing::WithParamInterface<TAnyReader> {
protected:
    FileConverter() { Converter->SetRoot(&Root); }

    std::string Error(const char* method, const std::string& text) const {
        return std::string(GetParam().Name) + "." + method + ": " + text;
    }
    void Read(const std::string& text) { GetParam().Read(*Converter, text); }
    std::string ErrorOfLoading() {
        return ErrorOf([&] { GetParam().Load(*Converter); });
    }
    std::string ErrorOfLoading(const QString& name) {
        Converter->SetFileName(name);
        return ErrorOfLoading();
    }
    QString Put(const std::string& bytes) {
        return FolderTest::Put("file", QByteArray::fromStdString(bytes));
    }
    [[nodiscard]] int Objects() const {
        std::vector<TZEPObject*> objects;
        Root.ListChildren(objects);
        return static_cast<int>(
            std::ranges::count_if(objects, [](auto* o) { return o->GetItemsCount() == 0; }));
    }

    TZEPScene Root;
    const std::unique_ptr<TFileConverter> Converter = GetParam().Make();
};

TEST_P(FileConverter, SaysWhatItLacks) {
    const std::string stop = GetParam().FullStop;
    EXPECT_EQ(ErrorOfLoading(), Error("LoadFromFile", "No file name defined" + stop));
    Converter->SetRoot(nullptr);
    EXPECT_EQ(ErrorOfLoading(), Error("LoadFromFile", "Can't load into Root=nil" + stop));
    EXPECT_THAT(ErrorOf([&] { Read(GetParam().One); }),
                testing::EndsWith(": Can't load into Root=nil" + stop));
}

TEST_P(FileConverter, TellsWhyAFileCanNotBeRead) {
    const QString pipe = Path("pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString loop = Path("loop");
    ASSERT_TRUE(QFile::link(loop, loop));
    const std::pair<QString, const char*> rows[] = {
        {Path("none"), "no such file"}, {QString(5000, u'x'), "no such file"},
        {loop, "no such file"},         {Path("."), "not a file"},
        {pipe, "not a file"},           {QStringLiteral("/dev/zero"), "not a file"}};
    for (const auto& [name, reason] : rows)
        EXPECT_EQ(ErrorOfLoading(name), Error("LoadFromFile", "Can't read \"" + name.toStdString() +
                                                                  "\": " + reason + "."));
    const QString secret = Put(GetParam().One);
    ASSERT_TRUE(QFile::setPermissions(secret, {}));
    if (QFileInfo(secret).isReadable()) GTEST_SKIP() << "this user may read everything";
    EXPECT_THAT(ErrorOfLoading(secret), testing::HasSubstr("\": Permission denied"));
}

TEST_P(FileConverter, ClearsTheRootOnlyWhenAskedTo) {
    const QString name = Put(GetParam().One);
    EXPECT_EQ(ErrorOfLoading(name), "");
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_EQ(Objects(), 1);
    Converter->SetClearBeforRead(false);
    EXPECT_EQ(ErrorOfLoading(), "");
    EXPECT_EQ(Objects(), 2);
    EXPECT_NE(ErrorOfLoading(QStringLiteral("/nowhere/a")), "");
    EXPECT_EQ(Objects(), 2);
    Converter->SetClearBeforRead(true);
    EXPECT_NE(ErrorOfLoading(), "");
    EXPECT_EQ(Objects(), 0) << "it is cleared before the file is opened";
    EXPECT_EQ(Root.UpdateLevel(), 0);
}

TEST_P(FileConverter, ForgetsARootThatIsFreed) {
    auto root = std::make_unique<TZEPObject>();
    Converter->SetRoot(root.get());
    Converter->SetRoot(&Root);
    root = std::make_unique<TZEPObject>();
    EXPECT_EQ(Converter->Root(), &Root);
    Converter->SetRoot(root.get());
    root.reset();
    EXPECT_EQ(Converter->Root(), nullptr);
}

TEST_P(FileConverter, TellsTheSceneOnceOfAWholeFile) {
    const TRepaintCounter panel(Root);
    Read(GetParam().Long);
    EXPECT_GT(Objects(), 10);
    EXPECT_EQ(panel.Count, 1);
}

TEST_P(FileConverter, TellsItsProgress) {
    const auto total = static_cast<qint64>(GetParam().Long.size());
    std::vector<qint64> places;
    Converter->SetProgress([&](qint64 done, qint64 all) {
        EXPECT_EQ(all, total);
        places.push_back(done);
        return true;
    });
    Read(GetParam().Long);
    EXPECT_THAT(places.size(), testing::AllOf(testing::Ge(total / 70'000), testing::Lt(100)));
    EXPECT_TRUE(std::ranges::is_sorted(places));
    EXPECT_LE(places.back(), total);
    EXPECT_FALSE(Converter->Cancelled());
}

TEST_P(FileConverter, KeepsWhatWasReadUntilItIsCancelled) {
    int calls = 0;
    Converter->SetProgress([&](qint64, qint64) { return ++calls > 0; });
    Read(GetParam().Long);
    const int all = Objects();
    Root.Clear();
    Converter->SetProgress([left = calls * 3 / 4](qint64, qint64) mutable { return --left > 0; });
    Read(GetParam().Long);
    EXPECT_TRUE(Converter->Cancelled());
    EXPECT_EQ(Root.UpdateLevel(), 0);
    EXPECT_GT(Objects(), all / 10);
    EXPECT_LT(Objects(), all - all / 10);
    Converter->SetProgress({});
    Read(GetParam().One);
    EXPECT_FALSE(Converter->Cancelled());
}

TEST_P(FileConverter, AnErrorOfTheHostEndsTheReadingOnly) {
    Converter->SetProgress(
        [](qint64, qint64) -> bool { throw Exception(QStringLiteral("window closed")); });
    EXPECT_EQ(ErrorOf([&] { Read(GetParam().Long); }), "window closed");
    EXPECT_EQ(Root.UpdateLevel(), 0);
}

/// What a host may do while it is asked.
TEST_P(FileConverter, EndsWhenTheRootIsFreedOrReplaced) {
    for (const bool frees : {true, false}) {
        auto* root = new TZEPObject;
        Converter->SetRoot(root);
        Converter->SetProgress([&, left = 3](qint64, qint64) mutable {
            if (--left > 0) return true;
            if (frees) delete root;
            if (!frees) Converter->SetRoot(&Root);
            return true;
        });
        Read(GetParam().Long);
        EXPECT_TRUE(Converter->Cancelled());
        EXPECT_EQ(Root.GetItemsCount(), 0);
        if (!frees) delete root;
    }
}

TEST_P(FileConverter, PutsUpWithAHostThatFreesWhatIsThere) {
    Converter->SetProgress([&](qint64, qint64) {
        Root.Clear();
        return true;
    });
    Read(GetParam().Long);
    EXPECT_FALSE(Converter->Cancelled());
}

/// What it may do when it hears of what is read.
TEST_P(FileConverter, PutsUpWithListenersThatFreeAnything) {
    using THear = std::function<void(TZEPObject&, TZEPScene*&)>;
    const std::pair<THear, bool> rows[] = {
        {[](TZEPObject& sender, TZEPScene*&) { delete &sender; }, false},
        {[](TZEPObject&, TZEPScene*& root) { root->Clear(); }, false},
        {[](TZEPObject&, TZEPScene*& root) { delete std::exchange(root, nullptr); }, true}};
    for (const auto& [hear, ends] : rows)
        for (const auto action : {saInsert, saRemove}) {
            auto* root = new TZEPScene;
            Add<TZEPObject>(Add<TZEPObject>(root));
            auto call = [&, &hear = hear](TZEPObject* sender, TZEPObjectAction told) {
                if (root && told == action && sender != root) hear(*sender, root);
            };
            root->RegisterNotify(
                {[](void* to, TZEPObject* sender, TZEPObjectAction told, const void*) {
                     (*static_cast<decltype(call)*>(to))(sender, told);
                 },
                 &call});
            Converter->SetRoot(root);
            const std::string error = ErrorOfLoading(Put(GetParam().Long));
            EXPECT_EQ(ends, !error.empty() || Converter->Cancelled()) << error;
            EXPECT_EQ(ends, root == nullptr);
            delete root;
        }
}

INSTANTIATE_TEST_SUITE_P(Reader, FileConverter, testing::ValuesIn(AllReaders()),
                         [](const auto& row) { return std::string(row.param.Name); });

} // namespace
} // namespace ZEP
