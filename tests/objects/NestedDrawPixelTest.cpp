#include "tests/gl/FourColours.h"
#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

using namespace ZEP;

namespace {

using NestedDrawPixel = OffscreenTest;

template <class T>
T Value(GLenum name) {
    T value{};
    glGetFloatv(name, reinterpret_cast<GLfloat*>(&value));
    return value;
}

/// What an object may leave behind in OpenGL.
struct TLeft {
    float Attributes = Value<float>(GL_ATTRIB_STACK_DEPTH);
    float ClientAttributes = Value<float>(GL_CLIENT_ATTRIB_STACK_DEPTH);
    float Matrices = Value<float>(GL_MODELVIEW_STACK_DEPTH);
    float LineWidth = Value<float>(GL_LINE_WIDTH);
    float PointSize = Value<float>(GL_POINT_SIZE);
    bool Arrays = glIsEnabled(GL_VERTEX_ARRAY);
    bool operator==(const TLeft&) const = default;
};

void ExpectNothingLeft(const TLeft& before, const std::string& what) {
    EXPECT_TRUE(TLeft() == before) << what;
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D)) << what;
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << what;
}

using TMake = TZEPObject* (*)(TZEPObject* parent);

/// Lines and points five pixels wide.
template <class T>
TZEPObject* Make(TZEPObject* parent) {
    T* object = Add<T>(parent);
    if constexpr (std::is_base_of_v<TZEPShape, T>) object->SetWidth(5);
    if constexpr (std::is_base_of_v<TZEPLine, T>) {
        object->P2()->SetData(1, 1, 0);
        object->SetSmooth(false);
    }
    return object;
}

TZEPObject* MakeTextured(TZEPObject* parent) {
    auto* box = Add<TZEPBox>(parent);
    box->Material()->Texture()->Image()->SetImage(FourColours());
    return box;
}

constexpr TMake Kinds[]{Make<TZEPLine>, Make<TZEPBox>, Make<TZEPSphere>, Make<TZEPPoint>,
                        MakeTextured};

/// A class of a host that keeps what its base sets to itself.
template <class T>
class Keeping : public T {
public:
    using T::T;
    void DrawSpecific(GLenum face, bool draft) override {
        glPushAttrib(GL_LINE_BIT | GL_POINT_BIT | GL_POLYGON_BIT);
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        T::DrawSpecific(face, draft);
        glPopClientAttrib();
        glPopAttrib();
    }
};

/// Notes what it is called for.
class Noting : public TZEPBox {
public:
    using TZEPBox::TZEPBox;
    void Draw(TZEPSceneContext& scene, TZEPDrawState state, TZEPDrawKind kind) override {
        ++Draws;
        TZEPBox::Draw(scene, state, kind);
    }
    void DrawLight(bool shadowed) override {
        ++Lights;
        TZEPBox::DrawLight(shadowed);
    }
    void DrawTransparent(bool draft) override {
        ++Transparents;
        TZEPBox::DrawTransparent(draft);
    }
    int Draws = 0, Lights = 0, Transparents = 0;
};

} // namespace

TEST_F(NestedDrawPixel, ACallbackDrawsOthersAndFindsAllAsItWas) {
    using TDraw = void (*)(TZEPObject&, TZEPScene&);
    const TDraw ways[]{[](TZEPObject& o, TZEPScene& s) { o.Draw(s, dsAllObjects, dkFull); },
                       [](TZEPObject& o, TZEPScene&) { o.QuickDraw(); },
                       [](TZEPObject& o, TZEPScene&) { o.DrawMain(false); },
                       [](TZEPObject& o, TZEPScene&) { o.DrawSpecific(GL_FRONT_AND_BACK, false); },
                       [](TZEPObject&, TZEPScene& s) { s.Draw(s, dsTransparent, dkFull); }};
    for (std::size_t kind = 0; kind < std::size(Kinds); ++kind)
        for (std::size_t way = 0; way < std::size(ways); ++way) {
            const std::string what =
                "kind " + std::to_string(kind) + ", way " + std::to_string(way);
            TZEPScene scene;
            TZEPNode apart;
            TZEPObject* other = Kinds[kind](&apart);
            Make<TZEPLine>(&scene);
            auto* user = Add<TZEPUser>(&scene);
            user->Material()->Texture()->Image()->SetImage(FourColours());
            Make<TZEPLine>(&scene);
            const TLeft before;
            int calls = 0;
            user->SetOnDraw([&](TZEPUser&, GLenum, bool) {
                EXPECT_EQ(Value<float>(GL_LINE_WIDTH), 1) << what;
                const TLeft within;
                ++calls;
                ways[way](*other, scene);
                EXPECT_TRUE(TLeft() == within) << what;
            });
            scene.Draw(scene, dsAllObjects, dkFull);
            EXPECT_EQ(calls, 1) << what;
            ExpectNothingLeft(before, what);
        }
}

TEST_F(NestedDrawPixel, AHostsClassKeepsWhatItsBaseSetsToItself) {
    const auto frame = [this](TMake make) {
        TZEPScene scene;
        for (int i = 0; i < 4; ++i) make(&scene)->XForm()->Translate()->SetData(0, 0.3 * i - 1, 0);
        const TLeft before;
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        scene.Draw(scene, dsAllObjects, dkFull);
        ExpectNothingLeft(before, scene.GetItem(0)->ClassName().toStdString());
        return Context().ReadFrame();
    };
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    EXPECT_EQ(frame(Make<Keeping<TZEPLine>>), frame(Make<TZEPLine>));
    EXPECT_EQ(frame(Make<Keeping<TZEPPoint>>), frame(Make<TZEPPoint>));
    EXPECT_EQ(frame(Make<Keeping<TZEPBox>>), frame(Make<TZEPBox>));
}

TEST_F(NestedDrawPixel, AHostsClassIsCalledWhereOthersArePassedOver) {
    TZEPScene scene;
    auto* batch = Add<TZEPBatch>(&scene);
    for (TZEPObject* parent : std::initializer_list<TZEPObject*>{&scene, batch}) {
        auto* box = Add<Noting>(parent);
        box->XForm()->Translate()->SetData(1000, 0, 0); // out of view
        for (const TZEPDrawState state : {dsAllLights, dsAllObjects, dsTransparent})
            scene.Draw(scene, state, dkFull);
        EXPECT_EQ(box->Draws, 3);
        EXPECT_EQ(box->Lights, 1);
        EXPECT_EQ(box->Transparents, 1);
    }
}

TEST_F(NestedDrawPixel, ArraysOfAHostPaintNothingOfOurs) {
    TZEPScene scene;
    for (int i = 0; i < 2; ++i) Add<TZEPBox>(&scene)->XForm()->Translate()->SetData(i - 0.5, 0, 0);
    auto* mesh = Add<TZEPMesh>(&scene);
    for (const auto& [x, y] : {std::pair{-1, -1}, {0, -1}, {0, 0}})
        mesh->Vertexes()->Add()->SetPoint({1.0 * x, 1.0 * y, 0});
    for (int i = 0; i < 100; ++i) mesh->Faces()->Add()->SetCornersQuietly(0, 1, 2);
    const auto frame = [&] {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glColor3f(1, 1, 1);
        scene.Draw(scene, dsAllObjects, dkFull);
        return Context().ReadFrame();
    };
    const QImage expected = frame();
    EXPECT_EQ(expected.pixel(160, 96), 0xFFFFFFFF);
    const std::vector<GLubyte> red(3 * 300, 100);
    glColorPointer(3, GL_UNSIGNED_BYTE, 0, red.data());
    glEnableClientState(GL_COLOR_ARRAY);
    EXPECT_EQ(frame(), expected);
    EXPECT_TRUE(glIsEnabled(GL_COLOR_ARRAY)) << "it is the host's";
}

TEST_F(NestedDrawPixel, AfterArraysTheNormalIsThatOfTheLastFace) {
    TZEPScene scene;
    for (int i = 0; i < 3; ++i) Add<TZEPBox>(&scene);
    scene.Draw(scene, dsAllObjects, dkFull);
    EXPECT_EQ((Value<TGLArrayf3>(GL_CURRENT_NORMAL)), (TGLArrayf3{0, -1, 0}));
}

TEST_F(NestedDrawPixel, ACallbackClearsTheLibraryThatItIsDrawnWith) {
    TZEPMaterialLibrary library;
    TZEPScene scene;
    scene.SetMaterialLibrary(&library);
    library.Materials()->Add()->Material()->Texture()->Image()->SetImage(FourColours());
    auto* user = Add<TZEPUser>(&scene);
    user->SetMaterialIndex(0);
    user->SetOnDraw([&](TZEPUser&, GLenum, bool) { library.Materials()->Clear(); });
    const TLeft before;
    scene.Draw(scene, dsAllObjects, dkFull);
    ExpectNothingLeft(before, "a library that is cleared");
}
