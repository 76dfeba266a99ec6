#include "tests/ErrorOf.h"
#include "tests/objects/TextScene.h"

#include <zep/appearance/materials/Material.h>
#include <zep/framework/Exception.h>
#include <zep/framework/Message.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <cmath>
#include <random>

namespace ZEP {
namespace {

TZEPObject* Child(TZEPObject* parent, const char* ident = "") {
    auto* child = new TZEPObject(parent);
    child->SetIdent(QString::fromLatin1(ident));
    child->SetParentComponent(parent);
    return child;
}

/// Listens to one object and writes down what it hears.
struct Ear {
    QStringList Heard;
    static void Hear(void* context, TZEPObject* sender, TZEPObjectAction action, const void* data) {
        static const char* const Names[] = {"insert", "move", "remove", "rename"};
        QString text = sender->Name() + QLatin1Char(' ') + QLatin1String(Names[action]);
        if (action == saMove) text += QStringLiteral(" %1").arg(*static_cast<const int*>(data));
        if (action == saRename) text += QLatin1Char(' ') + *static_cast<const QString*>(data);
        static_cast<Ear*>(context)->Heard.append(text);
    }
    TZEPObjectNotify Listener() { return {&Ear::Hear, this}; }
};

/// A scene, told as a component stream, under the commands behind it; each answers what a listener
/// heard, which events the scene had, and how often it wanted to be drawn.
///
///     > listen A                       from then on
///     > children A
///     > get A Width                    a published property
///     > center A                       where it stands, or a camera's eye and target, in its frame
///     > number A                       of a light
///     > save A                         into a file, and with `load` from there
///     > shift A 1 0 0 0 1 0            a camera's eye and target
class TToldScene : public TTextScene, public TZEPScenePanel {
public:
    explicit TToldScene(const std::string& stream) : TTextScene(stream) {
        Scene.RegisterGLPanel(this);
        Scene.RegisterGLPanel(this); // counts once
        QObject::connect(&Scene, &TZEPScene::BeforeSelect, [this](TZEPObject* object) {
            m_ear.Heard << (object->Selected() ? "before on" : "before off");
        });
        QObject::connect(&Scene, &TZEPScene::AfterSelect, [this](TZEPObject* object) {
            m_ear.Heard << (object->Selected() ? "after on" : "after off");
        });
    }
    ~TToldScene() {
        for (TZEPObject* object : m_listened) object->UnregisterNotify(m_ear.Listener());
        Scene.UnregisterGLPanel(this);
    }
    Q_DISABLE_COPY_MOVE(TToldScene)
    void Invalidate() override { ++m_repaints; }
    void SceneDestroyed() override {}

    std::string Do(const std::string& line) {
        const TWords words(line);
        const std::string verb = words.Verb(), name = words.At(1);
        m_ear.Heard.clear();
        m_repaints = 0;
        const std::string error = ErrorOf([&] {
            Edit(words, line);
            if (verb == "save") Object(name).SaveToFile(m_folder.filePath(QStringLiteral("a")));
            if (verb == "load") Object(name).LoadFromFile(m_folder.filePath(QStringLiteral("a")));
        });
        if (!error.empty()) m_ear.Heard << "error: " + QString::fromStdString(error);
        if (verb == "listen") Listen(Object(name));
        if (verb == "children") m_ear.Heard << NamesBelow(Object(name));
        if (verb == "get") return Get(name, words.At(2));
        if (verb == "center") return CentersOf(Object(name));
        if (verb == "shift")
            dynamic_cast<TZEPCamera&>(Object(name))
                .Move(words.Number(2), words.Number(3), words.Number(4), words.Number(5),
                      words.Number(6), words.Number(7));
        if (verb == "number")
            return std::to_string(dynamic_cast<TZEPLight&>(Object(name)).LightNum());
        if (m_repaints > 0) m_ear.Heard << QStringLiteral("drawn %1").arg(m_repaints);
        return m_ear.Heard.join(QStringLiteral(", ")).toStdString();
    }

private:
    void Listen(TZEPObject& object) {
        object.RegisterNotify(m_ear.Listener());
        m_listened.push_back(&object);
    }
    static std::string CentersOf(const TZEPObject& object) {
        const auto* camera = qobject_cast<const TZEPCamera*>(&object);
        TGLArrayd3 target = zero3d;
        if (camera) camera->GetTarget3Real(target[0], target[1], target[2]);
        QString text;
        for (const TGLArrayd3& point : {object.GetCenter(), target})
            for (const double number : point)
                text += QString::number(std::abs(number) < 1e-9 ? 0 : number, 'g', 6) + u' ';
        return text.toStdString();
    }
    static QString NamesBelow(const TZEPObject& parent) {
        QStringList names;
        for (int i = 0; i < parent.GetItemsCount(); ++i) {
            names << parent.GetItem(i)->Name();
            EXPECT_EQ(parent.GetItem(i)->GetItemIndex(), i);
        }
        return names.join(u' ');
    }

    Ear m_ear;
    QTemporaryDir m_folder;
    std::vector<TZEPObject*> m_listened;
    int m_repaints = 0;
};

TEST(ObjectTree, TellsWhatIsWrittenDown) {
    for (const char* file : {"tree.txt", "following.txt"})
        ExpectCases(file, [](const TCase& c) { return Answers<TToldScene>(c); });
}

TEST(ObjectTree, AForgottenListenerIsReportedAsTwoEntries) {
    QString shown;
    auto former =
        SetMessageHandler([&shown](const QString& text, const QString& title, TMessageIcon) {
            shown = title + QLatin1String(": ") + text;
        });
    Ear ear;
    {
        TZEPObject object;
        object.RegisterNotify(ear.Listener());
    }
    SetMessageHandler(std::move(former));
    EXPECT_EQ(shown, "Warning: There is ZEP-Notifies leek (2)");
}

TEST(ObjectTree, ListsAndIteration) {
    TZEPObject root;
    root.SetIdent(QStringLiteral("root"));
    TZEPObject* a = Child(&root, "a");
    auto* colored = new TZEPScene(&root);
    colored->SetIdent(QStringLiteral("s"));
    colored->SetParentComponent(a);
    TZEPObject* deep = Child(a, "deep");
    Child(&root, "BOX");
    std::vector<TZEPObject*> list;
    deep->ListParents(list);
    EXPECT_EQ(list, (std::vector<TZEPObject*>{&root, a}));
    const auto idents = [](const std::vector<TZEPObject*>& objects) {
        QString all;
        for (const TZEPObject* object : objects) all += object->Ident() + QLatin1Char(' ');
        return all;
    };
    list.clear();
    root.ListChildren(list);
    EXPECT_EQ(idents(list), "s deep a BOX ");
    list.clear();
    root.ListChildren(list, {&TZEPScene::staticMetaObject});
    EXPECT_EQ(idents(list), "s ");
    QString visited;
    root.Iterate([](TZEPObject* o, void* text) { *static_cast<QString*>(text) += o->Ident(); },
                 &visited);
    EXPECT_EQ(visited, "rootasdeepBOX");
    EXPECT_EQ(root.ItemByIdent(QStringLiteral("box")), root.GetItem(1));
    EXPECT_EQ(root.ItemByIdent(QStringLiteral("deep")), nullptr);
}

TEST(ObjectTree, RandomRemovalAgreesWithAPlainList) {
    TZEPObject root;
    std::vector<TZEPObject*> model;
    std::mt19937 random(7);
    const auto check = [&] {
        ASSERT_EQ(root.GetItemsCount(), static_cast<int>(model.size()));
        for (std::size_t i = 0; i < model.size(); i += 1 + random() % 7) {
            ASSERT_EQ(root.GetItem(static_cast<int>(i)), model[i]);
            ASSERT_EQ(model[i]->GetItemIndex(), static_cast<int>(i));
        }
    };
    for (int round = 0; round < 40; ++round) {
        for (int i = 0; i < 300; ++i) model.push_back(Child(&root));
        for (int i = 0; i < 260; ++i) {
            const auto at = random() % 3 == 0 ? 0 : random() % model.size();
            delete model[at];
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
        }
        if (round % 8 == 3) {
            auto* first = new TZEPObject(&root);
            first->SetParentComponentExt(&root, false);
            model.insert(model.begin(), first);
            model[5]->SetItemIndex(static_cast<int>(model.size()) / 2);
            auto* moved = model[5];
            model.erase(model.begin() + 5);
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(model.size() + 1) / 2, moved);
        }
        check();
    }
    const int before = TZEPObject::LiveObjects();
    root.Clear();
    EXPECT_EQ(TZEPObject::LiveObjects(), before - static_cast<int>(model.size()));
}

TEST(ObjectTree, ChildrenMayGoAndComeDuringIteration) {
    TZEPObject root;
    for (int i = 0; i < 3000; ++i) Child(&root, "x");
    struct State {
        TZEPObject* Root;
        int Visits = 0;
    } state{&root};
    root.IterateOnChildren(
        [](TZEPObject* child, void* data) {
            auto* s = static_cast<State*>(data);
            if (++s->Visits == 3) Child(s->Root, "new");
            delete child;
        },
        &state);
    EXPECT_EQ(state.Visits, 3001);
    EXPECT_EQ(root.GetItemsCount(), 0);
}

TEST(Invalidation, ADestroyedSceneSaysGoodbye) {
    struct : TZEPScenePanel {
        void Invalidate() override {}
        void SceneDestroyed() override { ++Goodbyes; }
        int Goodbyes = 0;
    } panel;
    {
        TZEPScene scene;
        scene.RegisterGLPanel(&panel);
        Child(&scene);
    }
    EXPECT_EQ(panel.Goodbyes, 1);
}

TEST(ObjectMaterial, ColourReachesAMaterialThatIsMadeLater) {
    TZEPObject early;
    TZEPObject late;
    static_cast<void>(early.Material());
    for (TZEPObject* object : {&early, &late}) {
        object->SetColor(0x112233);
        EXPECT_EQ(object->Material()->FrontFace()->Ambient(), TColor{0x112233});
        EXPECT_EQ(object->Material()->BackFace()->Diffuse(), TColor{0x112233});
    }
    TZEPObject untouched;
    EXPECT_EQ(untouched.Material()->FrontFace()->Ambient(), TColor{0x404040});
}

TEST(ObjectFrames, PointsGoOutByTheMatrixAndComeBack) {
    TZEPObject root;
    TZEPObject* object = Child(&root);
    object->XForm()->Rotate()->SetZ(45);
    root.XForm()->Translate()->SetData(10, 20, 30);
    root.XForm()->Rotate()->SetX(90);
    TGLArrayd3 point, byMatrix{0, 1, 2};
    object->ConvertToAbsolute3Real(0, 1, 2, point[0], point[1], point[2]);
    Xformd(object->GetAbsoluteMatrix(), byMatrix);
    EXPECT_LT(Distance(point, byMatrix), 1e-12);
    object->ConvertToLocal3Real(point[0], point[1], point[2], point[0], point[1], point[2]);
    EXPECT_LT(Distance(point, {0, 1, 2}), 1e-12);
}

TEST(ObjectFrames, TheChangeIndexFollowsOwnAndInheritedTransforms) {
    TZEPObject root;
    TZEPObject* middle = Child(&root);
    TZEPObject* leaf = Child(middle);
    const int start = leaf->GetChangeIndex();
    EXPECT_EQ(leaf->GetChangeIndex(), start);
    root.XForm()->Translate()->SetX(1);
    const int moved = leaf->GetChangeIndex();
    EXPECT_NE(moved, start);
    EXPECT_EQ(leaf->GetChangeIndex(), moved);
    leaf->SetVisible(false);
    EXPECT_EQ(leaf->GetChangeIndex(), moved);
    leaf->XForm()->mScale(2, 2, 2);
    EXPECT_NE(leaf->GetChangeIndex(), moved);
}

} // namespace
} // namespace ZEP
