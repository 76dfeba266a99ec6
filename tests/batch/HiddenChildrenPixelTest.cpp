#include "tests/view/SelectFixture.h"
#include <zep/batch/Batch.h>

namespace ZEP {
namespace {

/// Upright lines of a batch, one a unit apart.
class HiddenChildren : public SelectTest {
protected:
    static constexpr int Lines = 19;

    HiddenChildren() {
        for (int i = 0; i < Lines; ++i) {
            auto* line = Add<TZEPLine>(&Batch);
            line->P1()->SetData(i - 9, -3, 0);
            line->P2()->SetData(i - 9, 3, 0);
            line->SetWidth(3);
        }
    }
    void Hide(const std::vector<bool>& hidden) {
        Batch.SetHiddenChildren(std::make_shared<const std::vector<bool>>(hidden));
    }
    /// What is seen, and what is picked.
    std::string Shown() {
        Scene.Render(&Camera, 200, 100, false);
        std::string seen, picked;
        for (int i = 0; i < Lines; ++i) {
            seen += Context().ReadPixel(100 + 10 * (i - 9), 50).green() > 99 ? '+' : '-';
            picked += PickAt(i - 9, 0) ? '+' : '-';
        }
        return seen == picked ? seen : seen + " but picked " + picked;
    }

    TZEPBatch& Batch = *Add<TZEPBatch>(&Scene);
};

TEST_F(HiddenChildren, AreNeitherSeenNorPickedAndNothingOfItIsStored) {
    EXPECT_EQ(Shown(), "+++++++++++++++++++");
    Hide({true, false, true, true});
    EXPECT_EQ(Shown(), "-+--+++++++++++++++");
    Batch.GetItem(1)->SetColor(clLime);
    Batch.GetItem(18)->SetVisible(false);
    EXPECT_EQ(Shown(), "-+--++++++++++++++-") << "after an edit";
    EXPECT_TRUE(Batch.GetItem(0)->Visible());
    Hide(std::vector<bool>(100, true));
    EXPECT_EQ(Shown(), "-------------------");
    delete Batch.GetItem(0);
    EXPECT_EQ(Shown(), "-------------------");
    Batch.SetHiddenChildren(nullptr);
    EXPECT_EQ(Shown(), "-+++++++++++++++++-") << "one is gone and one invisible";
}

} // namespace
} // namespace ZEP
