#include "tests/events/World.h"
#include <zep/converters/dxf/Converter.h>
#include <zep/framework/Exception.h>
#include <zep/framework/Message.h>
#include <zep/scene/XForm.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

using TAct = std::function<void(TWorld&)>;

/// Calls back whenever one of the signals that a class of the library adds is emitted.
class TSignalTap : public QObject {
public:
    TSignalTap(QObject& sender, std::function<void()> call) : m_call(std::move(call)) {
        const QMetaObject& type = *sender.metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i)
            if (type.method(i).methodType() == QMetaMethod::Signal && !IsOfWidgets(type, i))
                QMetaObject::connect(&sender, i, this, QObject::staticMetaObject.methodCount());
    }
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override {
        id = QObject::qt_metacall(call, id, arguments);
        if (id == 0 && call == QMetaObject::InvokeMetaMethod) m_call();
        return id - 1;
    }

private:
    static bool IsOfWidgets(const QMetaObject& type, int method) {
        return type.inherits(&QWidget::staticMetaObject) &&
               method < QWidget::staticMetaObject.methodCount();
    }

    std::function<void()> m_call;
};

/// Where something of the host is called.
struct TEvent {
    const char* Name;
    std::function<QObject*(TWorld&)> Sender; ///< of all its signals
    std::function<void(TWorld&, std::function<void()>)> Hook;
};

void Listen(TWorld& world, std::function<void()> call) {
    auto* kept = new std::function<void()>(std::move(call));
    QObject::connect(world.Scene, &QObject::destroyed, [kept] { delete kept; });
    world.Scene->RegisterNotify({[](void* context, TZEPObject*, TZEPObjectAction, const void*) {
                                     const auto copy =
                                         *static_cast<std::function<void()>*>(context);
                                     copy();
                                 },
                                 kept});
}

/// Hears that the box goes.
class TMourner : public TComponent {
public:
    TMourner(TWorld& world, std::function<void()> call)
        : TComponent(world.Library), m_call(std::move(call)) {
        world.Box->FreeNotification(this);
        world.Scene->FreeNotification(this);
    }

protected:
    void Notification(TComponent* component, TOperation operation) override {
        const auto call = m_call;
        TComponent::Notification(component, operation);
        call();
    }

private:
    std::function<void()> m_call;
};

const TEvent Events[] = {{"scene", [](TWorld& w) { return w.Scene.data(); }, {}},
                         {"panel", [](TWorld& w) { return w.Panel.data(); }, {}},
                         {"camera", [](TWorld& w) { return w.Camera.data(); }, {}},
                         {"model", [](TWorld& w) { return w.Model.data(); }, {}},
                         {"actor", [](TWorld& w) { return w.Group.data(); }, {}},
                         {"listener", {}, Listen},
                         {"notification", {}, [](TWorld& w, auto call) { new TMourner(w, call); }},
                         {"draw", {}, [](TWorld& w, auto call) {
                              w.User->SetOnDraw([call](TZEPUser&, GLenum, bool) {
                                  glRectf(-1, -1, 1, 1);
                                  call();
                              });
                          }}};

struct TDeed {
    const char* Name;
    TAct Do;
};

template <auto Member>
void Free(TWorld& world) {
    delete (world.*Member).data();
}

/// There, and not on its way out.
template <class T>
bool Stands(const QPointer<T>& object) {
    return object && !object->IsDestroying();
}

void OpenAnother(TWorld& world) {
    if (world.Panel) world.Panel->Paint();
    if (world.Panel) static_cast<void>(world.Panel->GrabFrame());
    if (Stands(world.Scene) && Stands(world.Camera))
        world.Scene->Render(world.Camera, 30, 30, false);
    if (Stands(world.Scene) && Stands(world.Camera))
        static_cast<void>(world.Scene->Pick(world.Camera, 90, 70, 45, 35, 4, 4, 9));
}

const TDeed Deeds[] = {
    {"frees the box", Free<&TWorld::Box>},
    {"frees what is below it", Free<&TWorld::Below>},
    {"frees the user object", Free<&TWorld::User>},
    {"frees the field", Free<&TWorld::Field>},
    {"frees the group", Free<&TWorld::Group>},
    {"frees the line", Free<&TWorld::Line>},
    {"frees the batch", Free<&TWorld::Batch>},
    {"frees the light", Free<&TWorld::Light>},
    {"frees the camera", Free<&TWorld::Camera>},
    {"frees the scene", Free<&TWorld::Scene>},
    {"frees the panel", Free<&TWorld::Panel>},
    {"frees the library", Free<&TWorld::Library>},
    {"frees the model", // Qt goes on with a model after its signals
     [](TWorld& w) {
         if (w.Model) w.Model->deleteLater();
     }},
    {"clears the library",
     [](TWorld& w) {
         if (Stands(w.Library)) w.Library->Materials()->Clear();
     }},
    {"clears the scene",
     [](TWorld& w) {
         if (Stands(w.Scene)) w.Scene->Clear();
     }},
    {"takes the group out",
     [](TWorld& w) {
         if (Stands(w.Group)) w.Group->SetParentComponent(nullptr);
     }},
    {"puts the box elsewhere",
     [](TWorld& w) {
         if (Stands(w.Box) && Stands(w.Batch)) w.Box->SetParentComponent(w.Batch);
     }},
    {"adds another",
     [](TWorld& w) {
         if (Stands(w.Group)) Add<TZEPBox>(w.Group);
     }},
    {"draws and picks", OpenAnother},
    {"closes the context",
     [](TWorld& w) {
         if (w.Panel) w.Panel->Context()->DestroyContext();
     }},
};

void Draw(TWorld& w) {
    if (w.Panel) static_cast<void>(w.Panel->GrabFrame());
}

void Tell(TWorld& w) {
    if (w.Box) w.Box->SetSelected(true);
    if (w.Scene) w.Scene->DeselectAll();
    if (w.Box) w.Box->SetName("Renamed");
    if (w.Box) w.Box->SetItemIndex(1);
    if (w.Box) w.Box->XForm()->Translate()->SetX(1);
}

/// What users and hosts do, each with what is left.
const TAct Doings[] = {
    [](TWorld& w) {
        if (w.Panel) QTest::mouseMove(w.Panel, {40, 30});
    },
    [](TWorld& w) {
        if (w.Panel) QTest::mouseClick(w.Panel, Qt::LeftButton, {}, {45, 35});
    },
    [](TWorld& w) {
        if (w.Panel) QTest::mousePress(w.Panel, Qt::LeftButton, {}, {2, 2});
        if (w.Panel) QTest::mouseMove(w.Panel, {80, 60});
        if (w.Panel) QTest::mouseRelease(w.Panel, Qt::LeftButton, {}, {80, 60});
    },
    [](TWorld& w) {
        if (w.Panel) QTest::mouseDClick(w.Panel, Qt::RightButton, {}, {45, 35});
        QWheelEvent wheel({45, 35}, {45, 35}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        if (w.Panel) QCoreApplication::sendEvent(w.Panel, &wheel);
    },
    Draw,
    [](TWorld& w) {
        try {
            if (w.Panel) static_cast<void>(w.Panel->RenderToCanvas({40, 30}, true));
        } catch (const Exception&) { // there is no context any more
        }
    },
    [](TWorld& w) {
        if (w.Scene) w.Scene->Action(1);
    },
    Tell,
    [](TWorld& w) {
        QTemporaryDir folder;
        const QString file = folder.filePath("scene.txt");
        if (w.Group) w.Group->SaveToTextFile(file);
        if (w.Group) w.Group->LoadFromTextFile(file);
    },
    [](TWorld& w) {
        QTemporaryDir folder;
        QFile file(folder.filePath("drawing.dxf"));
        file.open(QIODevice::WriteOnly);
        file.write("0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nA\n0\nCIRCLE\n8\nB\n0\nENDSEC\n0\nEOF\n");
        file.close();
        if (!w.Batch) return;
        TDXFConverter reader;
        reader.SetRoot(w.Batch);
        reader.SetFileName(file.fileName());
        try {
            reader.LoadFromFile();
        } catch (const Exception&) { // the root has gone
        }
    },
    [](TWorld& w) { delete w.Box; },
    [](TWorld& w) { delete w.Group; },
    [](TWorld& w) {
        if (w.Camera) w.Camera->SetParentComponent(nullptr);
    },
};

class EventWalk : public testing::TestWithParam<TEvent> {
protected:
    ~EventWalk() override { SetMessageHandler(m_messages); }

    /// One world, in which the handler does `deed` while `doing` is done.
    /// \return  the event came
    static bool Walk(const TAct& doing, const TAct& deed) {
        TWorld world;
        QCoreApplication::processEvents();
        int calls = 0;
        bool ready = false;
        const auto call = [&] {
            if (!ready || ++calls > 2) return; // no endless talk
            ready = false;
            deed(world);
            ready = true;
        };
        std::optional<TSignalTap> tap;
        if (GetParam().Sender)
            tap.emplace(*GetParam().Sender(world), call);
        else
            GetParam().Hook(world, call);
        ready = true;
        doing(world);
        QCoreApplication::processEvents();
        Draw(world);
        Tell(world);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return calls > 0;
    }

    // A scene that goes with a listener says so in a box, which would wait here.
    const TMessageHandler m_messages =
        SetMessageHandler([](const QString&, const QString&, TMessageIcon) {});
};

/// All pairs of doings and deeds take minutes: one in eight is enough for every day. Where
/// ZEP_EVERY_EVENT is set, it is every one.
bool IsDue(std::size_t pair) {
    static const bool all = qEnvironmentVariableIsSet("ZEP_EVERY_EVENT");
    return all || (pair + pair / std::size(Deeds)) % 8 == 0;
}

// No check but that it runs to its end: valgrind or the sanitizers look at what it touches.
TEST_P(EventWalk, AHandlerMayDoAnything) {
    if (!NativeWindow::HasDisplay()) GTEST_SKIP() << "there is no X display";
    int comes = 0;
    std::size_t pair = 0;
    for (const TAct& doing : Doings) {
        if (!Walk(doing, [](TWorld&) {})) continue;
        ++comes;
        for (const TDeed& deed : Deeds) {
            if (!IsDue(pair++)) continue;
            SCOPED_TRACE(testing::Message() << deed.Name << " in doing " << &doing - Doings);
            Walk(doing, deed.Do);
        }
    }
    EXPECT_GT(comes, 0);
}

INSTANTIATE_TEST_SUITE_P(Each, EventWalk, testing::ValuesIn(Events),
                         [](const auto& test) { return std::string(test.param.Name); });

} // namespace
} // namespace ZEP
