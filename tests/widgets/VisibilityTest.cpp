#include <zep/widgets/Visibility.h>

#include "tests/Cases.h"
#include "tests/Words.h"
#include <zep/scene/Add.h>
#include <zep/scene/Scene.h>
#include <zep/sheets/Layout.h>
#include <zep/view/Actor.h>

namespace ZEP {
namespace {

/// Two files below a scene, "a" with the layers "p" (objects 1, 2) and "q" (3), "b" with 4 and 5,
/// under the commands of `tests/data/cases/visibility.txt`. Each answers the boxes in the order of
/// the tree, a p 1 2 q 3 b 4 5, "x" checked, "-" partially, "." not, and the leaves that are seen.
class TVisibleFiles {
public:
    TVisibleFiles() {
        for (const auto& [parent, ident] : {std::pair{"", "a"},
                                            {"a", "p"},
                                            {"p", "1"},
                                            {"p", "2"},
                                            {"a", "q"},
                                            {"q", "3"},
                                            {"", "b"},
                                            {"b", "4"},
                                            {"b", "5"}}) {
            auto* object = new TZEPObject(&m_scene);
            object->SetIdent(QLatin1String(ident));
            object->SetParentComponent(&Find(parent));
            m_objects.push_back(object);
        }
    }

    std::string Do(const std::string& line) {
        const TWords words(line);
        const std::string verb = words.Verb();
        TZEPObject& object = Find(words.At(1));
        const bool on = !words.Has("off");
        if (verb == "visible" || verb == "change") object.SetVisible(on);
        if (verb == "change") m_visibility.Update(object);
        if (verb == "click") m_visibility.SetShown(object, on);
        if (verb == "show-all") m_visibility.ShowAll(object);
        if (verb == "forget") m_visibility.Forget();
        if (verb == "visible") return {};
        if (verb != "only") return Boxes() + " " + Seen();
        std::vector<TZEPObject*> shown;
        for (std::size_t i = 1; i < words.Count(); ++i) shown.push_back(&Find(words.At(i)));
        m_visibility.ShowOnly({&Find("a"), &Find("b")}, shown);
        return Seen();
    }

private:
    /// The scene where there is no such object.
    TZEPObject& Find(const std::string& ident) {
        for (TZEPObject* object : m_objects)
            if (object->Ident().toStdString() == ident) return *object;
        return m_scene;
    }
    [[nodiscard]] std::string Boxes() const {
        std::string boxes;
        for (const TZEPObject* object : m_objects) boxes += ".-x"[m_visibility.StateOf(*object)];
        return boxes;
    }
    std::string Seen() {
        std::string seen;
        for (const char* leaf : {"1", "2", "3", "4", "5"}) {
            bool shown = true;
            for (const TZEPObject* object = &Find(leaf); object; object = object->Parent())
                shown = shown && object->Visible();
            if (shown) seen += leaf;
        }
        return seen;
    }

    TZEPScene m_scene;
    std::vector<TZEPObject*> m_objects;
    TZEPVisibility m_visibility;
};

TEST(Visibility, IsAsItIsWrittenDown) {
    ExpectCases("visibility.txt", [](const TCase& c) {
        TVisibleFiles files;
        return EachLine(c, [&](const std::string& line) { return files.Do(line); });
    });
}

TEST(Visibility, SheetsCountAsShown) {
    TZEPScene scene;
    auto* drawing = Add<TZEPActor>(&scene);
    Add<TZEPActor>(drawing);
    auto* sheet = Add<TZEPLayout>(drawing);
    sheet->SetVisible(false);
    auto* part = Add<TZEPActor>(sheet);
    TZEPVisibility visibility;
    EXPECT_EQ(visibility.StateOf(*drawing), Qt::Checked);
    EXPECT_EQ(visibility.StateOf(*part), Qt::Checked);
    visibility.SetShown(*part, false);
    EXPECT_EQ(visibility.StateOf(*part), Qt::Unchecked);
    EXPECT_EQ(visibility.StateOf(*drawing), Qt::PartiallyChecked);
    EXPECT_FALSE(sheet->Visible());
}

} // namespace
} // namespace ZEP
