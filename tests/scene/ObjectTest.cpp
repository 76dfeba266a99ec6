#include <zep/scene/Object.h>

#include <zep/appearance/materials/Material.h>
#include <zep/framework/Exception.h>
#include <zep/framework/Message.h>
#include <zep/scene/Scene.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace ZEP {
namespace {

class Panel : public TZEPScenePanel {
public:
    void Invalidate() override { ++Repaints; }
    void SceneDestroyed() override { ++Goodbyes; }
    int Repaints = 0;
    int Goodbyes = 0;
};

TZEPObject* Child(TZEPObject* parent, const char* ident = "") {
    auto* child = new TZEPObject(parent);
    child->SetIdent(QString::fromLatin1(ident));
    child->SetParentComponent(parent);
    return child;
}

QString Order(const TZEPObject& parent) {
    QString order;
    for (int i = 0; i < parent.GetItemsCount(); ++i) {
        order += parent.GetItem(i)->Ident();
        EXPECT_EQ(parent.GetItem(i)->GetItemIndex(), i);
    }
    return order;
}

/// Listens to one object and writes down what it hears.
struct Ear {
    QStringList Heard;
    static void Hear(void* context, TZEPObject* sender, TZEPObjectAction action, const void* data) {
        static const char* const Names[] = {"insert", "move", "remove", "rename"};
        QString text = sender->Ident() + QLatin1Char(' ') + QLatin1String(Names[action]);
        if (action == saMove) text += QStringLiteral(" %1").arg(*static_cast<const int*>(data));
        if (action == saRename) text += QLatin1Char(' ') + *static_cast<const QString*>(data);
        static_cast<Ear*>(context)->Heard.append(text);
    }
    TZEPObjectNotify Listener() { return {&Ear::Hear, this}; }
};

TEST(ObjectTree, MovingClampsAndTellsOnceBeforehand) {
    TZEPObject root;
    for (const char* ident : {"a", "b", "c", "d", "e"}) Child(&root, ident);
    Ear ear;
    root.RegisterNotify(ear.Listener());
    TZEPObject* c = root.GetItem(2);
    c->SetItemIndex(99);
    EXPECT_EQ(Order(root), "abdec");
    c->SetItemIndex(4);
    c->SetItemIndex(-5);
    EXPECT_EQ(Order(root), "cabde");
    c->SetItemIndex(2);
    EXPECT_EQ(Order(root), "abcde");
    EXPECT_EQ(ear.Heard, (QStringList{"c move 4", "c move 0", "c move 2"}));
    root.UnregisterNotify(ear.Listener());
    EXPECT_EQ(root.GetItemIndex(), 0);
    EXPECT_THROW(static_cast<void>(root.GetItem(5)), Exception);
    EXPECT_THROW(static_cast<void>(c->GetItem(0)), Exception);
}

TEST(ObjectTree, EveryListenerHearsWhatHappensBelow) {
    TZEPObject root;
    TZEPObject* a = Child(&root, "a");
    TZEPObject* b = Child(&root, "b");
    TZEPObject* leaf = Child(a, "leaf");
    Ear top;
    Ear second;
    Ear ofB;
    root.RegisterNotify(top.Listener());
    root.RegisterNotify(top.Listener());
    root.RegisterNotify(second.Listener());
    b->RegisterNotify(ofB.Listener());
    leaf->SetParentComponentExt(b, true);
    leaf->SetName(QStringLiteral("Leaf"));
    leaf->SetName(QStringLiteral("LEAF"));
    const QStringList all{"leaf remove", "leaf insert", "leaf rename ", "leaf rename Leaf"};
    EXPECT_EQ(top.Heard, all);
    EXPECT_EQ(second.Heard, all);
    EXPECT_EQ(ofB.Heard, all.mid(1));
    delete leaf;
    EXPECT_EQ(ofB.Heard.last(), "leaf remove");
    b->UnregisterNotify(ofB.Listener());
    root.UnregisterNotify(top.Listener());
    root.UnregisterNotify(second.Listener());
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

TEST(ObjectTree, ACircleIsNotMade) {
    TZEPObject root;
    TZEPObject* a = Child(&root, "a");
    TZEPObject* b = Child(a, "b");
    a->SetParentComponent(b);
    root.SetParentComponent(b);
    a->SetParentComponent(a);
    EXPECT_EQ(a->Parent(), &root);
    EXPECT_EQ(b->Parent(), a);
    EXPECT_EQ(root.Parent(), nullptr);
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

TEST(ObjectTree, ASubtreeEntersAndLeavesTheSceneWhole) {
    TZEPScene scene;
    TZEPObject root;
    TZEPObject* deep = Child(Child(&root));
    EXPECT_EQ(deep->Scene(), nullptr);
    root.SetParentComponent(&scene);
    EXPECT_EQ(deep->Scene(), &scene);
    root.SetParentComponent(nullptr);
    EXPECT_EQ(deep->Scene(), nullptr);
}

TEST(Invalidation, ClimbsUnlessHeldBack) {
    TZEPScene scene;
    Panel panel;
    scene.RegisterGLPanel(&panel);
    scene.RegisterGLPanel(&panel);
    TZEPObject* object = Child(Child(&scene));
    const auto repaints = [&panel](auto&& action) {
        panel.Repaints = 0;
        action();
        return panel.Repaints;
    };
    EXPECT_EQ(repaints([&] { object->SetVisible(false); }), 1);
    EXPECT_EQ(repaints([&] { object->SetVisible(false); }), 0);
    EXPECT_EQ(repaints([&] { object->SetShadows(0, true); }), 1);
    EXPECT_EQ(repaints([&] { object->SetShadows(2, true); }), 0);
    EXPECT_EQ(repaints([&] { object->SetColor(clRed); }), 0);
    EXPECT_EQ(repaints([&] { static_cast<void>(object->XForm()); }), 0);
    EXPECT_EQ(repaints([&] { object->XForm()->Rotate()->SetX(1); }), 1);
    EXPECT_EQ(repaints([&] { static_cast<void>(object->Material()); }), 0);
    EXPECT_EQ(repaints([&] { object->Material()->SetTransparency(0.5F); }), 2);
    EXPECT_EQ(repaints([&] {
                  object->Parent()->BeginUpdate();
                  object->SetVisible(true);
                  object->Parent()->BeginUpdate();
              }),
              0);
    EXPECT_EQ(repaints([&] { object->Parent()->EndUpdate(); }), 0);
    EXPECT_EQ(repaints([&] { object->Parent()->EndUpdate(); }), 1);
    EXPECT_EQ(repaints([&] { object->EndUpdate(); }), 1) << "level 0 stays 0 and invalidates";
    object->BeginUpdate();
    object->BeginUpdate();
    EXPECT_EQ(repaints([&] { object->EndUpdate(true); }), 1);
    EXPECT_EQ(repaints([&] {
                  scene.BeginUpdate();
                  object->SetVisible(false);
              }),
              0);
    EXPECT_EQ(repaints([&] { scene.EndUpdate(); }), 1);
    scene.SetManualUpdate(true);
    EXPECT_EQ(repaints([&] { object->SetVisible(true); }), 0);
    EXPECT_EQ(repaints([&] { object->EndUpdate(); }), 0);
}

TEST(Invalidation, ADestroyedSceneSaysGoodbye) {
    Panel panel;
    {
        TZEPScene scene;
        scene.RegisterGLPanel(&panel);
        Child(&scene);
    }
    EXPECT_EQ(panel.Goodbyes, 1);
}

TEST(ObjectSelection, TheSceneDecidesAndHearsOfIt) {
    TZEPScene scene;
    TZEPObject* object = Child(&scene);
    QStringList events;
    QObject::connect(&scene, &TZEPScene::BeforeSelect, [&](TZEPObject* o) {
        events << QStringLiteral("before %1").arg(o->Selected());
    });
    QObject::connect(&scene, &TZEPScene::AfterSelect, [&](TZEPObject* o) {
        events << QStringLiteral("after %1").arg(o->Selected());
    });
    object->SetSelected(true);
    object->SetSelected(true);
    EXPECT_EQ(events, (QStringList{"before 0", "after 1"}));
    scene.SetSelectionEnabled(false);
    object->SetSelected(false);
    object->SetSelected(true);
    EXPECT_FALSE(object->Selected());
    scene.SetSelectionEnabled(true);
    object->SetSelectable(false);
    events.clear();
    object->SetSelected(true);
    EXPECT_FALSE(object->Selected());
    EXPECT_TRUE(events.isEmpty());
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

TEST(ObjectMaterial, AssignCopiesTheLook) {
    TZEPObject source;
    source.SetIdent(QStringLiteral("a"));
    source.SetColor(clRed);
    source.SetVisible(false);
    source.SetSelectable(false);
    source.SetDrawType(dtLine);
    source.SetSmooth(!source.Smooth());
    source.SetShadows(0, true);
    source.SetShadows(1, true);
    TZEPObject copy;
    copy.Assign(&source);
    const auto lookOf = [](const TZEPObject& o) {
        return std::tuple(o.Ident(), o.Color(), o.Visible(), o.Selectable(), o.DrawType(),
                          o.Smooth(), o.CastsShadows(), o.ReceivesShadows());
    };
    EXPECT_EQ(lookOf(copy), lookOf(source));
    EXPECT_EQ(copy.Parent(), nullptr);
    EXPECT_THROW(copy.Assign(static_cast<const TComponent*>(nullptr)), Exception);
}

TEST(ObjectBounds, FramesAndBoxes) {
    TZEPObject root;
    TZEPObject* object = Child(&root);
    object->XForm()->Rotate()->SetZ(45);
    TGLArrayd3 min;
    TGLArrayd3 max;
    object->GetAbsoluteSize(min, max);
    EXPECT_NEAR(max[0], std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(min[1], -std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(max[2], 0.5, 1e-12);
    EXPECT_NEAR(object->GetAbsoluteRadius(), std::sqrt(0.5 + 0.5 + 0.25), 1e-12);

    root.XForm()->Translate()->SetData(10, 20, 30);
    root.XForm()->Rotate()->SetX(90);
    double x = 0;
    double y = 0;
    double z = 0;
    object->ConvertToAbsolute3Real(0, 1, 2, x, y, z);
    TGLArrayd3 byMatrix{0, 1, 2};
    Xformd(object->GetAbsoluteMatrix(), byMatrix);
    EXPECT_NEAR(x, byMatrix[0], 1e-12);
    EXPECT_NEAR(y, byMatrix[1], 1e-12);
    EXPECT_NEAR(z, byMatrix[2], 1e-12);
    object->ConvertToLocal3Real(x, y, z, x, y, z);
    EXPECT_NEAR(x, 0, 1e-12);
    EXPECT_NEAR(y, 1, 1e-12);
    EXPECT_NEAR(z, 2, 1e-12);
}

TEST(ObjectBounds, TheChangeIndexFollowsOwnAndInheritedTransforms) {
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
