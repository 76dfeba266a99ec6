#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/gl/BlendEntry.h"
#include "tests/gl/CallRecorder.h"
#include "tests/gl/OffscreenTest.h"
#include "tests/objects/TextScene.h"
#include <zep/gl/Names.h>

namespace ZEP {

/// Notes each hook that draws it.
class TNotedObject : public TZEPShadowedObject {
    Q_OBJECT
    Q_PROPERTY(bool Visible READ Visible WRITE SetVisible)
    Q_PROPERTY(bool ReceiveShadows READ ReceivesShadows WRITE SetReceiveShadows)
    Q_PROPERTY(ZEP::TZEPDrawType DrawType READ DrawType WRITE SetDrawType)
    Q_PROPERTY(bool InQuickDraw MEMBER m_inQuickDraw)

public:
    using TZEPShadowedObject::TZEPShadowedObject;
    void DrawPre() override { Note("pre"); }
    void DrawLight(bool shadowed) override { Note(shadowed ? "light shadowed" : "light"); }
    void DrawMain(bool draft) override { Note(draft ? "main draft" : "main"); }
    void DrawTransparent(bool draft) override { Note(draft ? "transparent draft" : "transparent"); }
    void DrawReflections() override { Note("reflections"); }
    void BuildShadowVolumes() override { Note("build"); }
    void DrawShadowVolumes() override { Note("volumes"); }
    void DrawShadows(bool draft) override { Note(draft ? "shadows draft" : "shadows"); }
    void DrawPost() override { Note("post"); }
    void DrawSpecific(GLenum, bool) override { Note("specific"); }

protected:
    [[nodiscard]] bool DrawsInQuickDraw() const override { return m_inQuickDraw; }

private:
    void Note(const char* hook) const { GlCalls::Note(hook + (" " + Name()).toStdString()); }

    bool m_inQuickDraw = false;
};

/// Sets its material and notes its drawing.
class TNotedDot : public TZEPColoredObject {
    Q_OBJECT
    Q_PROPERTY(bool Shares MEMBER m_shares)

public:
    using TZEPColoredObject::TZEPColoredObject;
    void DrawSpecific(GLenum, bool draft) override { GlCalls::Note(draft ? "dot draft" : "dot"); }

protected:
    [[nodiscard]] bool SharesDrawRun() const override { return m_shares; }

private:
    bool m_shares = false;
};

/// A mirror in its plane z = 0 that notes what it is asked to draw.
class TNotedMirror : public TZEPReflexedObject {
    Q_OBJECT

public:
    using TZEPReflexedObject::TZEPReflexedObject;
    [[nodiscard]] std::array<TGLArrayd3, 3> MirrorPoints() const override {
        return {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    }
    void DrawSpecific(GLenum face, bool) override {
        GlCalls::Note(face == GL_FRONT  ? "mirror's front"
                      : face == GL_BACK ? "mirror's back"
                                        : "mirror");
    }
};

namespace {

// Not as objects of the library, which are asked for their passes: any may be theirs.
const TRegisterClass<TNotedObject> RegisteredObject("Tests");
const TRegisterClass<TNotedDot> RegisteredDot("Tests");
const TRegisterClass<TNotedMirror> RegisteredMirror("Tests");

/// Draws a scene as the commands behind its stream say, beside those that edit it:
///
///     > draw dsAllObjects dkFull       a pass
///     > passes                         those of lights and objects
///     > frame                          by the camera "Eye", with `draft` as such
///     > apply 400 200 -1               the camera alone
///     > specific Box1 GL_FRONT         an object alone, with `draft` at the end as an outline
///     > stencil-wrap off
///
/// Behind `only` stand the functions of which the calls are told, behind `count` those of which
/// their number is.
class TDrawnScene : public TTextScene {
public:
    using TTextScene::TTextScene;
    ~TDrawnScene() { StencilWrapEXT = true; }
    Q_DISABLE_COPY_MOVE(TDrawnScene)

    std::string Run(const std::string& command) {
        const TWords words(command);
        const GlCalls calls;
        Do(words, command);
        std::string text;
        for (std::size_t i = words.After("count"); i > 0 && i < words.Count(); ++i)
            text += "  " + std::to_string(calls.Count(words.At(i))) + " " + words.At(i) + "\n";
        if (words.Has("count")) return text;
        for (const std::string& call : calls.List())
            if (IsTold(call, words)) text += "  " + WithoutName(call) + "\n";
        return text;
    }

private:
    void Do(const TWords& words, const std::string& command) {
        Edit(words, command);
        const std::string verb = words.Verb(), name = words.At(1);
        if (verb == "stencil-wrap") StencilWrapEXT = name != "off";
        if (verb == "passes")
            for (const TZEPDrawState state : {dsAllLights, dsAllObjects, dsTransparent})
                Scene.Draw(Scene, state, dkFull);
        if (verb == "draw")
            Scene.Draw(Scene, Value<TZEPDrawState>(name), Value<TZEPDrawKind>(words.At(2)));
        if (verb == "frame")
            Scene.Render(&dynamic_cast<TZEPCamera&>(Object("Eye")), 64, 64, name == "draft");
        if (verb == "apply")
            dynamic_cast<TZEPCamera&>(Object("Eye"))
                .Apply(words.Int(1), words.Int(2), words.Int(3));
        if (verb == "specific")
            Object(name).DrawSpecific(words.Has("GL_FRONT")  ? GL_FRONT
                                      : words.Has("GL_BACK") ? GL_BACK
                                                             : GL_FRONT_AND_BACK,
                                      words.Has("draft"));
    }
    template <class T>
    static T Value(const std::string& name) {
        bool known = false;
        const int value = QMetaEnum::fromType<T>().keyToValue(name.c_str(), &known);
        EXPECT_TRUE(known) << name;
        return static_cast<T>(value);
    }
    /// Of functions that it names, where it names any; a name may end in `*`.
    static bool IsTold(const std::string& call, const TWords& words) {
        const std::string function = call.substr(0, call.find('('));
        for (std::size_t i = words.After("only"); i > 0 && i < words.Count(); ++i) {
            const std::string name = words.At(i);
            if (name.ends_with('*') ? call.starts_with(name.substr(0, name.size() - 1))
                                    : function == name)
                return true;
        }
        return !words.Has("only");
    }
    /// The driver chooses the names of lists and textures.
    static std::string WithoutName(const std::string& call) {
        for (const std::string_view function :
             {"glNewList(", "glCallList(", "glDeleteLists(", "glBindTexture(", "glDeleteTextures("})
            if (call.starts_with(function)) return std::string(function) + "...)";
        return call;
    }
};

class DrawnCasesCall : public OffscreenTest, public testing::WithParamInterface<std::string> {
protected:
    DrawnCasesCall() : OffscreenTest(64, 64) {}
    void SetUp() override {
        OffscreenTest::SetUp();
        SetContextIsCurrent(true);
    }
    ~DrawnCasesCall() override { SetContextIsCurrent(false); }

private:
    const TBlendEntry m_entry;
};

TEST_P(DrawnCasesCall, MakeTheseCalls) {
    ExpectCases(GetParam(), [](const TCase& c) {
        const auto first = CommandsIn(c.Input);
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

#include "DrawnCasesCallTest.moc"
