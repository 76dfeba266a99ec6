#include "tests/framework/stream/StreamText.h"
#include <zep/appearance/materials/MaterialLibrary.h>
#include <zep/framework/Registry.h>
#include <zep/framework/SharedCollection.h>
#include <zep/framework/stream/Reader.h>
#include <zep/scene/Object.h>

#include <QImage>
#include <QPointer>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

/// An item of a host's own, whose `Do` says what its host does when it is read.
class TStep : public TZEPCollectionItem {
    Q_GADGET
    Q_PROPERTY(ZEP::TComponent* Target MEMBER Target WRITE SetTarget)
    Q_PROPERTY(QString Do READ Do WRITE SetDo)
public:
    [[nodiscard]] const QMetaObject* MetaObject() const override { return &staticMetaObject; }
    void SetTarget(TComponent* target) { Target = target; }
    [[nodiscard]] QString Do() const { return m_do; }
    void SetDo(const QString& text);

    TComponent* Target = nullptr;

private:
    QString m_do;
};

class TSteps : public TComponent {
    Q_OBJECT
    Q_PROPERTY(ZEP::TZEPCollection* Steps READ Steps)
public:
    TSteps() : TComponent(nullptr) {}
    [[nodiscard]] TZEPCollection* Steps() { return &Items; }

    TZEPCollectionOf<TStep> Items{nullptr};
};

QPointer<TSteps> g_steps; // that are read

void TStep::SetDo(const QString& text) {
    m_do = text;
    if (text == u"clear") return g_steps->Items.Clear();
    if (text == u"remove") return g_steps->Items.Delete(0);
    if (text == u"free") delete g_steps;
}

/// Who hears of an item may remove it, others, or all that is read: references are set in the
/// places that are left.
TEST(Reading, ItemsMayGoWhileTheyAreRead) {
    struct TRow {
        const char* Do;
        std::vector<bool> Left; // with whether they have their target
    };
    const TRow rows[] = {
        {"", {true, true, true}}, {"clear", {true}}, {"remove", {true, true}}, {"free", {}}};
    for (const TRow& row : rows) {
        g_steps = new TSteps;
        const std::string text = std::string("object R: TSteps Steps = < item Target = R end item "
                                             "Target = R Do = '") +
                                 row.Do + "' Target = R end item Target = R end > end";
        const auto source = MakeSource(TStreamForm::Text, text);
        TReader(*source).ReadRootComponent(*g_steps);
        std::vector<bool> left;
        for (int i = 0; g_steps && i < g_steps->Items.Count(); ++i)
            left.push_back(g_steps->Items[i].Target == g_steps);
        EXPECT_EQ(left, row.Left) << row.Do;
        delete g_steps;
    }
}

/// Six pictures that take 68 megabytes each, of which a small stream has room for three.
TEST(Reading, PicturesTakeWhatTheStreamAllows) {
    QImage picture(4000, 4000, QImage::Format_Mono);
    picture.fill(0);
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    picture.save(&png, "PNG");
    std::string text = "object TZEPMaterialLibrary\n Materials = <\n";
    for (int i = 0; i < 6; ++i)
        text +=
            " item Material.Texture.Image.Data = {" + png.data().toHex().toStdString() + "} end\n";
    const auto source = MakeSource(TStreamForm::Text, text += " >\nend\n");
    TZEPMaterialLibrary library;
    TReader reader(*source);
    reader.OnError = [](TReader&, const QString&, bool& handled) { handled = true; };
    reader.ReadRootComponent(library);
    ASSERT_EQ(library.Materials()->Count(), 6);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(library.Materials()->Item(i)->Material()->HasTexture(), i < 3) << i;
    EXPECT_EQ(reader.ErrorCount(), 3);
    EXPECT_TRUE(reader.FirstError().startsWith(
        QStringLiteral("line 6, column 7: The picture of 4000 x 4000 pixels is larger")))
        << reader.FirstError().toStdString();
}

/// Who hears that an object comes may free it, its parent, or all that is read.
TEST(Reading, GoesOnWithWhatIsLeft) {
    struct TRow {
        const char* Inserted;
        const char* Freed;
        const char* Left;
    };
    const TRow rows[] = {
        {"b", "b", "root c a e"},   {"b", "a", "root e"},     {"c", "a", "root e"},
        {"d", "d", "root b c a e"}, {"d", "b", "root c a e"}, {"e", "e", "root d b c a"},
        {"a", "root", ""},          {"d", "root", ""},        {"none", "", "root d b c a e"}};
    const std::string_view text = "object TZEPNode Ident = 'root' object TZEPNode Ident = 'a' "
                                  "object B: TZEPProxy Ident = 'b' Proxy = D "
                                  "object D: TZEPNode Ident = 'd' end end "
                                  "object TZEPNode Ident = 'c' end end "
                                  "object TZEPProxy Ident = 'e' Proxy = D end end";
    for (const TRow& row : rows) {
        struct TContext {
            QString Inserted, Freed;
        } context{QLatin1String(row.Inserted), QLatin1String(row.Freed)};
        const QPointer<TZEPObject> root = static_cast<TZEPObject*>(
            TClassRegistry::Instance().Find(QStringLiteral("TZEPNode"))->Make(nullptr));
        const TZEPObjectNotify listener{
            [](void* data, TZEPObject* sender, TZEPObjectAction action, const void*) {
                const auto& wanted = *static_cast<TContext*>(data);
                if (action != saInsert || sender->Ident() != wanted.Inserted) return;
                while (sender && sender->Ident() != wanted.Freed) sender = sender->Parent();
                delete sender;
            },
            &context};
        root->RegisterNotify(listener);
        const auto source = MakeSource(TStreamForm::Text, text);
        TReader reader(*source);
        root->LoadFromReader(reader);
        QStringList left;
        std::vector<TZEPObject*> objects;
        if (root) root->ListChildren(objects);
        if (root) left << root->Ident();
        for (const TZEPObject* object : objects) left << object->Ident();
        EXPECT_EQ(left.join(u' ').toStdString(), row.Left)
            << row.Inserted << " frees " << row.Freed;
        if (root) root->UnregisterNotify(listener);
        delete root;
    }
}

} // namespace
} // namespace ZEP

#include "ReadingTest.moc"
