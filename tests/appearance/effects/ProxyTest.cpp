#include "tests/ErrorOf.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

TEST(Proxy, ItsTargetIsNeverAboveIt) {
    TZEPScene scene;
    auto* group = Add<TZEPNode>(&scene);
    auto* inner = Add<TZEPNode>(group);
    auto* proxy = Add<TZEPProxy>(inner);
    auto* box = Add<TZEPBox>(&scene);
    proxy->SetProxy(box);
    for (TZEPObject* object : {static_cast<TZEPObject*>(proxy), static_cast<TZEPObject*>(inner),
                               static_cast<TZEPObject*>(group)})
        EXPECT_EQ(ErrorOf([&] { proxy->SetProxy(object); }), "Recursive proxy assigment");
    EXPECT_EQ(proxy->Proxy(), box);
    proxy->SetParentComponent(box);
    EXPECT_EQ(proxy->Proxy(), nullptr) << "its parent now";
    EXPECT_EQ(proxy->Parent(), box);
}

TEST(Proxy, ATargetThatGoesIsForgotten) {
    TZEPScene scene;
    auto* proxy = Add<TZEPProxy>(&scene);
    auto* box = Add<TZEPBox>(&scene);
    proxy->SetProxy(box);
    delete box;
    EXPECT_EQ(proxy->Proxy(), nullptr);
    proxy->SetProxy(nullptr);
}

} // namespace
} // namespace ZEP
