#include "tests/ErrorOf.h"
#include "tests/framework/stream/Fields.h"
#include "tests/framework/stream/StreamText.h"
#include <zep/framework/stream/TextSource.h>
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

using testing::HasSubstr;

/// Loads a text as a scene does, and saves the scene again.
qint64 ErrorsOfLoading(TZEPScene& scene, const std::string& text) {
    TTextSource source(text);
    TReader reader(source);
    scene.LoadFromReader(reader);
    return reader.ErrorCount();
}

TEST(HostileStream, TheDeepestTreeIsReadAndADeeperOneRefused) {
    const auto nested = [](int depth) {
        return Times("object TZEPObject ", depth) + Times("end ", depth);
    };
    TZEPScene scene;
    EXPECT_EQ(ErrorsOfLoading(scene, nested(MaxStreamDepth)), 0);
    int depth = 1;
    for (TZEPObject* object = &scene; object->GetItemsCount() > 0; object = object->GetItem(0))
        ++depth;
    EXPECT_EQ(depth, MaxStreamDepth);
    EXPECT_THAT(ErrorOf([&] { ErrorsOfLoading(scene, nested(100'000)); }),
                HasSubstr("nested deeper than 1000 levels"));
    EXPECT_EQ(scene.GetItemsCount(), 1) << "the tree was not touched";
}

// The counts are such that work growing with their square would not end within the suite's time.
TEST(HostileStream, ManyFaultsCostNoMoreThanTheirNumber) {
    constexpr int Many = 300'000;
    const std::string rows[] = {
        Times(" NoSuch = 1\n", Many),          Times(" No.Such.Thing = <item A = 1 end>\n", Many),
        Times(" Tag = 'x'\n", Many),           Times(" MaterialLibrary = NoSuch\n", Many),
        Times(" MaterialLibrary = S\n", Many), Times(" object A: TZEPLine end\n", Many / 3),
        Times(" object TNoSuch end\n", Many),
    };
    for (const std::string& row : rows) {
        TZEPScene scene;
        const qint64 errors = ErrorsOfLoading(scene, "object S: TZEPScene\n" + row + "end\n");
        const bool isSilent = row.find("= NoSuch") != std::string::npos;
        EXPECT_GE(errors, isSilent ? 0 : Many / 3 - 1) << row.substr(0, 30);
    }
}

TEST(HostileStream, TheSameNameTwiceGoesToTheFirst) {
    TZEPScene scene;
    const std::string text = "object S: TZEPScene object A: TZEPObject Tag = 1 end "
                             "object a: TZEPObject Tag = 2 end "
                             "object TZEPCamera TargetObject = A end end";
    EXPECT_EQ(LoadInto(scene, text).size(), 1U);
    EXPECT_EQ(static_cast<TZEPCamera*>(scene.GetItem(2))->TargetObject(), scene.GetItem(0));
    EXPECT_EQ(scene.GetItem(1)->Name(), QString());
}

TEST(HostileStream, AnErrorThatNobodyHandlesEndsTheReading) {
    TZEPObject object;
    TTextSource source("object TZEPObject Tag = 'x' Ident = 'y' end");
    TReader reader(source);
    EXPECT_THROW(reader.ReadRootComponent(object), TStreamError);
    EXPECT_EQ(object.Ident(), QString());
}

} // namespace
} // namespace ZEP
