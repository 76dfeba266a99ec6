#include <zep/ZEP3DS.h>
#include <zep/ZEPAssimp.h>
#include <zep/ZEPClasses.h>
#include <zep/ZEPDXF.h>
#include <zep/ZEPGeom.h>
#include <zep/ZEPObjects.h>
#include <zep/ZEPRS274D.h>
#include <zep/ZEPTextures.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

/// A class of the host's own: published, streamed, with a signal.
class Shape : public ZEP::TZEPBox {
    Q_OBJECT
    Q_PROPERTY(int Age READ Age WRITE SetAge)
    Q_CLASSINFO("Age", "0")
public:
    using TZEPBox::TZEPBox;

    [[nodiscard]] int Age() const { return m_age; }
    void SetAge(int age) {
        m_age = age;
        Q_EMIT Aged(age);
    }

Q_SIGNALS:
    void Aged(int age);

private:
    int m_age = 0;
};

namespace {

const ZEP::TRegisterObject<Shape> Registered;

/// Whether a class of the library that nobody names here, and one of the host's, come back.
bool ScenesComeBack() {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("scene.zep"));
    ZEP::TZEPScene stored;
    ZEP::Add<Shape>(&stored)->SetAge(7);
    const auto* torus = ZEP::TClassRegistry::Instance().Find(QStringLiteral("TZEPTorus"));
    if (!torus) return false;
    static_cast<ZEP::TZEPObject*>(torus->Make(&stored))->SetParentComponent(&stored);
    stored.SaveToFile(file);

    ZEP::TZEPScene scene;
    scene.LoadFromFile(file);
    return scene.GetItemsCount() == 2 && qobject_cast<Shape*>(scene.GetItem(0)) &&
           qobject_cast<Shape*>(scene.GetItem(0))->Age() == 7 &&
           dynamic_cast<ZEP::TZEPShadowedObject*>(scene.GetItem(1));
}

bool ErrorsAreCaught() {
    try {
        ZEP::TDXFConverter(nullptr).LoadFromFile();
    } catch (const ZEP::Exception&) {
        return true;
    }
    return false;
}

bool SignalsReachTheHost() {
    Shape shape;
    int age = 0;
    QObject::connect(&shape, &Shape::Aged, [&age](int now) { age = now; });
    shape.SetAge(3);
    return age == 3;
}

} // namespace

// Needs both libraries, a display at no time.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const ZEP::TZEPContext context;
    const bool passed = ScenesComeBack() && ErrorsAreCaught() && SignalsReachTheHost() &&
                        ZEP::LibraryVersion() == QLatin1String(ZEP_VERSION_STR) &&
                        context.MetaObject() == &ZEP::TZEPContext::staticMetaObject;
    if (!passed) std::puts("The installed library does not do what it should.");
    return passed ? 0 : 1;
}

#include "Main.moc"
