#include <zep/widgets/Visibility.h>

#include <zep/scene/Scene.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

/// Two files below a scene, "a" with the layers "p" (objects 1, 2) and "q" (3), "b" with 4 and 5.
class Visibility : public testing::Test {
protected:
    TZEPObject* Add(TZEPObject& parent, const char* ident) {
        auto* object = new TZEPObject(&m_scene);
        object->SetIdent(QLatin1String(ident));
        object->SetParentComponent(&parent);
        m_objects.push_back(object);
        return object;
    }

    /// "x" checked, "-" partially, "." not, in the order of the tree: a p 1 2 q 3 b 4 5.
    [[nodiscard]] std::string Boxes() const {
        std::string boxes;
        for (const TZEPObject* object : m_objects) boxes += ".-x"[m_visibility.StateOf(*object)];
        return boxes;
    }
    [[nodiscard]] std::string Seen() const {
        std::string seen;
        for (const char* leaf : {"1", "2", "3", "4", "5"}) {
            bool shown = true;
            for (const TZEPObject* object = Find(leaf); object; object = object->Parent())
                shown = shown && object->Visible();
            if (shown) seen += leaf;
        }
        return seen;
    }
    [[nodiscard]] TZEPObject* Find(const char* ident) const {
        for (TZEPObject* object : m_objects)
            if (object->Ident() == QLatin1String(ident)) return object;
        return nullptr;
    }

    TZEPScene m_scene;
    std::vector<TZEPObject*> m_objects;
    TZEPVisibility m_visibility;
    TZEPObject* m_a = Add(m_scene, "a");
    TZEPObject* m_p = Add(*m_a, "p");
    TZEPObject* m_one = Add(*m_p, "1");
    TZEPObject* m_two = Add(*m_p, "2");
    TZEPObject* m_q = Add(*m_a, "q");
    TZEPObject* m_three = Add(*m_q, "3");
    TZEPObject* m_b = Add(m_scene, "b");
    TZEPObject* m_four = Add(*m_b, "4");
    TZEPObject* m_five = Add(*m_b, "5");
};

TEST_F(Visibility, BoxesTellWhatIsSeen) {
    struct TRow {
        const char* Name;
        std::vector<const char*> Off;
        const char* Boxes; // a p 1 2 q 3 b 4 5
    };
    const TRow rows[] = {
        {"all", {}, "xxxxxxxxx"},        {"one leaf", {"2"}, "--x.xxxxx"},
        {"a layer", {"q"}, "-xxx..xxx"}, {"all leaves of a layer", {"3"}, "-xxx..xxx"},
        {"a file", {"b"}, "xxxxxx..."},  {"both layers", {"p", "q"}, "......xxx"},
    };
    for (const TRow& row : rows) {
        for (const char* ident : row.Off) Find(ident)->SetVisible(false);
        m_visibility.Forget();
        EXPECT_EQ(Boxes(), row.Boxes) << row.Name;
        m_visibility.ShowAll(*m_a);
        m_visibility.ShowAll(*m_b);
        EXPECT_EQ(Boxes(), "xxxxxxxxx") << row.Name;
    }
}

TEST_F(Visibility, OneChangeIsLookedAtWithoutTheRest) {
    struct TRow {
        const char* Ident;
        bool Visible;
        const char* Boxes; // a p 1 2 q 3 b 4 5
    };
    EXPECT_EQ(Boxes(), "xxxxxxxxx");
    for (const TRow& row : {TRow{"2", false, "--x.xxxxx"}, TRow{"1", false, "-...xxxxx"},
                            TRow{"q", false, "......xxx"}, TRow{"1", true, "--x...xxx"},
                            TRow{"2", true, "-xxx..xxx"}, TRow{"q", true, "xxxxxxxxx"}}) {
        Find(row.Ident)->SetVisible(row.Visible);
        m_visibility.Update(*Find(row.Ident));
        EXPECT_EQ(Boxes(), row.Boxes) << row.Ident << row.Visible;
    }
}

TEST_F(Visibility, AClickHidesShowsAndShowsTheRest) {
    struct TRow {
        const char* Ident;
        bool Shown;
        const char* Boxes;
        const char* Seen;
    };
    const TRow rows[] = {
        {"2", false, "--x.xxxxx", "1345"},                                   //
        {"p", false, "-...xxxxx", "345"},  {"p", true, "--x.xxxxx", "1345"}, // as it was
        {"p", true, "xxxxxxxxx", "12345"}, {"a", false, "......xxx", "45"},
        {"3", true, "-...xxxxx", "345"}, // and nothing else of what was hidden
        {"1", true, "--x.xxxxx", "1345"},  {"1", false, "-...xxxxx", "345"},
        {"p", true, "xxxxxxxxx", "12345"}, // nothing of it was seen: all is
        {"4", false, "xxxxxx-.x", "1235"}, {"5", false, "xxxxxx...", "123"},
        {"b", true, "xxxxxxxxx", "12345"},
    };
    for (const TRow& row : rows) {
        m_visibility.SetShown(*Find(row.Ident), row.Shown);
        EXPECT_EQ(Boxes(), row.Boxes) << row.Ident << row.Shown;
        EXPECT_EQ(Seen(), row.Seen) << row.Ident << row.Shown;
    }
}

TEST_F(Visibility, OnlyLeavesNothingElse) {
    m_visibility.SetShown(*m_two, false);
    m_visibility.SetShown(*m_a, false);
    struct TRow {
        std::vector<const char*> Idents;
        const char* Seen;
    };
    for (const TRow& row : {TRow{{"p"}, "12"},
                            {{"3"}, "3"},
                            {{"1", "4"}, "14"},
                            {{"b"}, "45"},
                            {{"a", "b"}, "12345"}}) {
        std::vector<TZEPObject*> objects;
        for (const char* ident : row.Idents) objects.push_back(Find(ident));
        m_visibility.ShowOnly({m_a, m_b}, objects);
        EXPECT_EQ(Seen(), row.Seen);
    }
}

} // namespace
} // namespace ZEP
