#include "tests/Cases.h"
#include "tests/framework/stream/Fields.h"
#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/gl/Names.h>

#include <gmock/gmock.h>

namespace ZEP {
namespace {

/// Draws a scene, which is a component stream, as the commands behind it say:
///
///     > draw dsAllObjects dkFull       a pass
///     > specific Box1 GL_FRONT         an object alone, with "draft" at the end as an outline
///     > set Box1 SlicesX = 3           published properties
///     > smooth Mesh1                   what only some classes publish
class TDrawnScene {
public:
    explicit TDrawnScene(const std::string& stream) {
        Library.SetName(QStringLiteral("Library"));
        Owner.InsertComponent(&Library);
        Owner.InsertComponent(&Scene);
        EXPECT_THAT(LoadInto(Scene, stream), testing::IsEmpty()) << stream;
    }
    ~TDrawnScene() {
        Owner.RemoveComponent(&Scene);
        Owner.RemoveComponent(&Library);
    }
    Q_DISABLE_COPY_MOVE(TDrawnScene)

    std::string Run(const std::string& command) {
        std::istringstream words(command);
        std::string verb, name;
        words >> verb >> name;
        const GlCalls calls;
        if (verb == "set") {
            Set(name, command.substr(verb.size() + name.size() + 2));
        } else if (verb == "smooth") {
            Object(name).SetSmooth(true);
        } else if (verb == "draw") {
            std::string kind;
            words >> kind;
            Scene.Draw(Scene, Value<TZEPDrawState>(name), Value<TZEPDrawKind>(kind));
        } else {
            std::string face, draft;
            words >> face >> draft;
            Object(name).DrawSpecific(face == "GL_FRONT"  ? GL_FRONT
                                      : face == "GL_BACK" ? GL_BACK
                                                          : GL_FRONT_AND_BACK,
                                      draft == "draft");
        }
        std::string text;
        for (const std::string& call : calls.List()) text += "  " + WithoutName(call) + "\n";
        return text;
    }

private:
    template <class T>
    static T Value(const std::string& name) {
        bool known = false;
        const int value = QMetaEnum::fromType<T>().keyToValue(name.c_str(), &known);
        EXPECT_TRUE(known) << name;
        return static_cast<T>(value);
    }
    /// The driver chooses the names of lists and textures.
    static std::string WithoutName(const std::string& call) {
        for (const std::string_view function :
             {"glNewList(", "glCallList(", "glDeleteLists(", "glBindTexture(", "glDeleteTextures("})
            if (call.starts_with(function)) return std::string(function) + "...)";
        return call;
    }
    TZEPObject& Object(const std::string& name) {
        auto* object = qobject_cast<TZEPObject*>(Scene.FindComponent(QString::fromStdString(name)));
        EXPECT_TRUE(object) << name;
        return object ? *object : Scene;
    }
    void Set(const std::string& name, const std::string& values) {
        TComponent& component =
            name == "Library" ? static_cast<TComponent&>(Library) : Object(name);
        const std::string stream =
            "object " + name + ": " + component.ClassName().toStdString() + " " + values + " end";
        EXPECT_THAT(LoadInto(component, stream), testing::IsEmpty()) << stream;
    }

    TComponent Owner;
    TZEPMaterialLibrary Library;
    TZEPScene Scene;
};

class DrawnCasesCall : public OffscreenTest, public testing::WithParamInterface<std::string> {
protected:
    DrawnCasesCall() : OffscreenTest(64, 64) {}
    void SetUp() override {
        OffscreenTest::SetUp();
        SetContextIsCurrent(true);
    }
    ~DrawnCasesCall() override { SetContextIsCurrent(false); }
};

TEST_P(DrawnCasesCall, MakeTheseCalls) {
    ExpectCases(GetParam(), [](const TCase& c) {
        const auto first = c.Input.find("> ");
        TDrawnScene scene(c.Input.substr(0, first));
        std::istringstream lines(c.Input.substr(first));
        std::string text;
        for (std::string line; std::getline(lines, line);)
            text += line + "\n" + scene.Run(line.substr(2));
        return text;
    });
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

INSTANTIATE_TEST_SUITE_P(File, DrawnCasesCall, testing::ValuesIn(CaseFiles("calls")), CaseName);

} // namespace
} // namespace ZEP
