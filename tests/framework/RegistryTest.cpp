#include <zep/framework/Registry.h>

#include "tests/ErrorOf.h"
#include <zep/framework/stream/Reader.h>
#include <zep/framework/stream/StreamFile.h>
#include <zep/scene/Scene.h>

#include <gtest/gtest.h>

namespace ZEP {

namespace Other {
class TZEPScene : public TComponent {
    Q_OBJECT
public:
    using TComponent::TComponent;
};
} // namespace Other

namespace {

TEST(Registry, RefusesASecondClassOfTheSameBareName) {
    const TClassRegistry::Entry entry =
        *TClassRegistry::Instance().Find(QStringLiteral("tzepscene"));
    EXPECT_NE(ErrorOf([&] {
                  TClassRegistry::Instance().Register(
                      {&Other::TZEPScene::staticMetaObject, {}, entry.Make, 1});
              }).find("ZEP::TZEPScene has that name already"),
              std::string::npos);
    TClassRegistry::Instance().Register(entry);
    { const TRegisterClass<Other::TZEPScene> warns; }
    const auto* found = TClassRegistry::Instance().Find(QStringLiteral("TZEPScene"));
    ASSERT_TRUE(found) << "gone with the one that was refused";
    EXPECT_EQ(found->Type, &ZEP::TZEPScene::staticMetaObject);
}

TEST(Registry, ClassesThatAreNotKnownAreToldOnce) {
    const std::string_view text = "object TZEPScene object TGear object TGear end end "
                                  "object TZEPNode object TAxle end object TGear end end end";
    auto* scene = new ZEP::TZEPScene;
    QStringList names;
    qint64 all = 0;
    int times = 0;
    QObject::connect(scene, &TComponent::ClassesUnknown, scene,
                     [&](const QStringList& classes, qint64 count) {
                         names = classes;
                         all = count;
                         ++times;
                         delete scene;
                     });
    const auto source = MakeSource(TStreamForm::Text, text);
    TReader reader(*source);
    scene->LoadFromReader(reader);
    EXPECT_EQ(names, (QStringList{QStringLiteral("TAxle"), QStringLiteral("TGear")}));
    EXPECT_EQ(all, 3);
    EXPECT_EQ(times, 1);
}

} // namespace
} // namespace ZEP

#include "RegistryTest.moc"
