#include "tests/framework/stream/Fields.h"
#include "tests/fuzz/StreamInput.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/framework/Message.h>
#include <zep/framework/Registry.h>

#include <QGuiApplication>
#include <QRegularExpression>

#include <climits>
#include <cmath>
#include <cstdint>

namespace ZEP {
namespace {

constexpr std::size_t MostComponents = 150;
constexpr int DeepestEvents = 3;

/// A saved tree without what is lost: a reference may lead out of the tree, a stream keeps a name
/// once, and the angle of a lens, which stands last there, decides its focal length.
QString Kept(const QByteArray& text) {
    static const QRegularExpression lost(
        "(?<=object) \\w+:|^ *([\\w.]+ = (N|Materials)\\d*|FocalLength = .*)\n",
        QRegularExpression::MultilineOption);
    return QString::fromUtf8(text).remove(lost);
}

/// What is loaded is what was saved.
void CheckStorage(TZEPObject& object, TStreamForm form) {
    const QByteArray text = Saved(TStreamForm::Text, object);
    // One of several, or one without a name in a scene below, is not found again.
    if (text.count("TZEPMaterialLibrary") > 1 || text.contains("    object TZEPMaterialLibrary"))
        return;
    if (text.contains("TZEPHeadlight")) return; // comes to the front again
    const auto* entry = TClassRegistry::Instance().Find(object.ClassName());
    const std::unique_ptr<TComponent> made(entry->Make(nullptr));
    auto& loaded = static_cast<TZEPObject&>(*made);
    Load(form, ViewOf(Saved(form, object)), loaded);
    Require(Kept(Saved(TStreamForm::Text, loaded)) == Kept(text));
}

/// Trees to which the bytes do one thing after the other, also in the middle of any event.
class TGarden {
public:
    explicit TGarden(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {
        auto* scene = new TZEPScene(&m_ground);
        auto* library = new TZEPMaterialLibrary(scene);
        QImage picture(2, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        library->Materials()->Add()->Material()->Texture()->Image()->SetImage(picture);
        scene->SetMaterialLibrary(library);
        Listen(*Add<TZEPCamera>(scene));
        Listen(*scene);
    }

    void Tend() {
        while (!m_bytes.empty()) {
            Do();
            Check();
        }
    }

private:
    /// Hears that a component goes.
    struct TMourner : TComponent {
        explicit TMourner(TGarden& garden) : TComponent(&garden.m_ground), Garden(garden) {}
        void Notification(TComponent* gone, TOperation) override { Garden.Hear(gone); }
        TGarden& Garden;
    };

    /// The next byte's choice; the first one when all are used up.
    int Below(std::size_t count) {
        if (m_bytes.empty()) return 0;
        const std::size_t byte = m_bytes.front();
        m_bytes = m_bytes.subspan(1);
        return static_cast<int>(byte % count);
    }
    const auto& OneOf(const auto& all) {
        return *std::next(std::begin(all), Below(static_cast<std::size_t>(std::size(all))));
    }

    /// All but what is on its way out: first the sender of the present event and its parent.
    std::vector<TComponent*> All() const {
        std::vector<TComponent*> all{m_sender, m_sender ? m_sender->GetParentComponent() : nullptr};
        ForEachOwned(m_ground, [&all](TComponent& one) { all.push_back(&one); });
        std::erase_if(all, [](TComponent* one) { return !one || one->IsDestroying(); });
        return all;
    }
    template <class Visit>
    static void ForEachOwned(const TComponent& owner, const Visit& visit) {
        for (int i = 0; i < owner.ComponentCount(); ++i) {
            visit(*owner.Components(i));
            ForEachOwned(*owner.Components(i), visit);
        }
    }
    TComponent& Any(const QMetaObject& type) {
        std::vector<TComponent*> all = All();
        std::erase_if(all, [&](TComponent* one) { return !one->metaObject()->inherits(&type); });
        if (all.empty()) throw Exception(QStringLiteral("There is no %1").arg(type.className()));
        return *OneOf(all);
    }
    template <class T = TZEPObject>
    T& Any() {
        return static_cast<T&>(Any(T::staticMetaObject));
    }

    void Listen(TComponent& component) {
        const auto hear = [this](TComponent* sender) { Hear(sender); };
        if (auto* object = qobject_cast<TZEPObject*>(&component))
            object->RegisterNotify(
                {[](void* garden, TZEPObject* sender, TZEPObjectAction, const void*) {
                     static_cast<TGarden*>(garden)->Hear(sender);
                 },
                 this});
        if (auto* actor = qobject_cast<TZEPActor*>(&component))
            QObject::connect(actor, &TZEPActor::OnAction, hear);
        if (auto* camera = qobject_cast<TZEPCamera*>(&component))
            QObject::connect(camera, &TZEPCamera::SceneChanged, [=] { hear(camera); });
        if (auto* user = qobject_cast<TZEPUser*>(&component))
            user->SetOnDraw([hear](TZEPUser& sender, GLenum, bool) { hear(&sender); });
        auto* scene = qobject_cast<TZEPScene*>(&component);
        if (!scene) return;
        QObject::connect(scene, &TZEPScene::BeforeSelect, hear);
        QObject::connect(scene, &TZEPScene::AfterSelect, hear);
        QObject::connect(scene, &TZEPScene::AfterCamera, hear);
    }
    /// An event: after so many that pass, something is done in one.
    void Hear(TComponent* sender) {
        if (m_bytes.empty() || m_depth == DeepestEvents || m_passing-- > 0) return;
        m_passing = Below(8);
        const QPointer<TComponent> outer = std::exchange(m_sender, sender);
        ++m_depth;
        Do();
        --m_depth;
        m_sender = outer;
    }

    void Do();
    void Plant();
    void SetAny();
    void Set(const TField& field, const TInstance& instance);
    void Check() const;

    const int m_before = TZEPObject::LiveObjects();
    std::span<const std::uint8_t> m_bytes;
    QByteArray m_saved;
    QPointer<TComponent> m_sender;
    int m_passing = 0;
    int m_depth = 0;
    int m_names = 0;
    TComponent m_ground; ///< owns all
};

void TGarden::Do() {
    using T = TGarden&;
    static constexpr void (*Deeds[])(T) = {
        [](T t) { t.Plant(); }, [](T t) { t.SetAny(); }, [](T t) { delete &t.Any<TComponent>(); },
        [](T t) { t.Any().SetParentComponent(&t.Any()); },
        [](T t) { t.Any().SetParentComponentExt(&t.Any(), false); },
        [](T t) { t.Any().SetParentComponent(nullptr); },
        [](T t) { t.Any().SetItemIndex(t.Below(8)); },
        [](T t) { t.Any<TComponent>().InsertComponent(&t.Any<TComponent>()); },
        [](T t) { (new TMourner(t))->FreeNotification(&t.Any<TComponent>()); },
        // No name comes twice, or the second would be lost in a stream.
        [](T t) { t.Any<TComponent>().SetName(QStringLiteral("N%1").arg(++t.m_names)); },
        [](T t) { t.Any().SetSelected(t.Below(2)); }, [](T t) { t.Any<TZEPScene>().DeselectAll(); },
        [](T t) { t.Any().SetMaterialIndex(t.Below(3) - 1); }, [](T t) { t.Any().Clear(); },
        [](T t) { t.Any<TComponent>().Assign(&t.Any<TComponent>()); },
        [](T t) { t.m_saved = Saved(TStreamForm::Binary, t.Any()); },
        [](T t) {
            TZEPObject& object = t.Any();
            if (!t.m_saved.isEmpty() && t.All().size() < MostComponents)
                Load(TStreamForm::Binary, ViewOf(QByteArray(t.m_saved)), object);
        },
        [](T t) { CheckStorage(t.Any(), t.Below(2) ? TStreamForm::Binary : TStreamForm::Text); },
        [](T t) { t.Any().QuickDraw(); },
        [](T t) { t.Any<TZEPScene>().Render(&t.Any<TZEPCamera>(), 40, 30, false); },
        [](T t) {
            TZEPObject& object = t.Any();
            const auto state = static_cast<TZEPDrawState>(t.Below(dsPost + 1));
            object.Draw(t.Any<TZEPScene>(), state, dkFull);
        },
        [](T t) {
            TZEPScene& scene = t.Any<TZEPScene>();
            static_cast<void>(scene.Pick(&t.Any<TZEPCamera>(), 40, 30, 20, 15, 4, 4, 9));
        },
        [](T t) { t.Any().Action(1); }, [](T t) { static_cast<void>(t.Any().GetAbsoluteRadius()); },
        [](T t) {
            const QPointer<TZEPObject> object = &t.Any();
            object->BeginUpdate();
            t.Do();
            if (object) object->EndUpdate();
        }};
    try {
        OneOf(Deeds)(*this);
    } catch (const Exception&) { // what cannot be is told
    }
}

void TGarden::Plant() {
    if (All().size() >= MostComponents) return;
    const QStringList names = TClassRegistry::Instance().ClassNames();
    const QString& name = OneOf(names);
    TComponent& owner = Below(4) ? Any<TComponent>() : m_ground;
    TComponent* made = TClassRegistry::Instance().Find(name)->Make(&owner);
    if (Below(4)) Listen(*made);
    made->SetParentComponent(Below(4) ? &owner : &Any<TComponent>());
}

/// Any published property, those of parts and items included.
void TGarden::SetAny() {
    std::vector<std::pair<const TField*, TInstance>> fields;
    ForEachField(TInstance(&Any<TComponent>()),
                 [&](const std::string&, const TField& field, const TInstance& instance) {
                     if (field.IsStored()) fields.emplace_back(&field, instance);
                 });
    const auto& [field, instance] = OneOf(fields);
    Set(*field, instance);
}

void TGarden::Set(const TField& field, const TInstance& instance) {
    static constexpr double Floats[] = {0, 1, -1, 0.5, 30, 1e-9, 1e9, 1e300, NAN};
    static constexpr qint64 Integers[] = {0, 1, 2, 3, 8, -1, 0xFF00FF, INT_MAX};
    switch (field.Kind()) {
    case TFieldKind::Single:
    case TFieldKind::Double:
        return field.SetFloat(instance, OneOf(Floats));
    case TFieldKind::String:
        return field.SetString(instance, QStringLiteral("ab\nc").left(Below(5)));
    case TFieldKind::Reference:
        return field.SetReference(instance, Below(4) ? &Any(*field.Type()) : nullptr);
    case TFieldKind::Collection: {
        auto& items = *static_cast<TCollection*>(field.SubObject(instance));
        if (Below(4) == 0) return items.Delete(Below(4));
        return static_cast<void>(items.Add());
    }
    case TFieldKind::Boolean:
        return static_cast<void>(field.SetOrdinal(instance, Below(2)));
    case TFieldKind::Integer:
    case TFieldKind::Color:
        return static_cast<void>(field.SetOrdinal(instance, OneOf(Integers)));
    default:
        if (const auto names = static_cast<std::size_t>(field.Names().keyCount()))
            static_cast<void>(field.SetOrdinal(instance, field.Names().value(Below(names))));
    }
}

void CheckPlace(TZEPObject& object) {
    TZEPObject* parent = object.Parent();
    auto* scene = qobject_cast<TZEPScene*>(parent);
    Require(object.Scene() == (parent && !scene ? parent->Scene() : scene));
    Require(!parent || parent->GetItem(object.GetItemIndex()) == &object);
    for (int i = 0; i < object.GetItemsCount(); ++i)
        Require(object.GetItem(i)->Parent() == &object);
    Require(object.UpdateLevel() == 0);
}

/// Whatever happened, owners, names, parents, children and scenes agree.
void TGarden::Check() const {
    int objects = 0;
    ForEachOwned(m_ground, [&objects](TComponent& one) {
        Require(!one.IsDestroying());
        Require(one.Name().isEmpty() || one.Owner()->FindComponent(one.Name()) == &one);
        auto* object = qobject_cast<TZEPObject*>(&one);
        if (!object) return;
        ++objects;
        CheckPlace(*object);
    });
    Require(TZEPObject::LiveObjects() == m_before + objects);
}

/// Labels need fonts, and animations a timer.
int StartApplication() {
    static int argc = 1;
    static char name[] = "TreeFuzz";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    SetMessageHandler([](const QString&, const QString&, TMessageIcon) {});
    static const QGuiApplication application(argc, argv);
    return TZEPObject::LiveObjects();
}

} // namespace
} // namespace ZEP

/// Does to trees of objects what the bytes say.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int before = ZEP::StartApplication();
    ZEP::TGarden({data, size}).Tend();
    ZEP::Require(ZEP::TZEPObject::LiveObjects() == before);
    return 0;
}
