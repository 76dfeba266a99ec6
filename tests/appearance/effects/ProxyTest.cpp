#include "tests/ErrorOf.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>

#include <gtest/gtest.h>

namespace ZEP {
namespace {

template <class T>
T* Add(TZEPObject* parent) {
    auto* object = new T(parent);
    object->SetParentComponent(parent);
    return object;
}

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

TEST(Proxy, ItIsAsLargeAsItsTarget) {
    TZEPScene scene;
    auto* proxy = Add<TZEPProxy>(&scene);
    auto* cone = Add<TZEPCone>(&scene);
    cone->SetRadius2(3);
    TGLArrayd3 min;
    TGLArrayd3 max;
    proxy->GetSize(min, max);
    EXPECT_EQ(max, (TGLArrayd3{0.5, 0.5, 0.5}));
    proxy->SetProxy(cone);
    proxy->GetSize(min, max);
    EXPECT_EQ(max, (TGLArrayd3{3, 3, 0.5}));

    auto* group = Add<TZEPNode>(&scene);
    proxy->SetProxy(group);
    Add<TZEPBox>(group);
    proxy->SetParentComponent(Add<TZEPNode>(group)); // measures the group, which measures the proxy
    proxy->GetSize(min, max);
    EXPECT_EQ(max, (TGLArrayd3{0.5, 0.5, 0.5}));

    // Groups of proxies of each other: by every way through them, this would not come to an end.
    auto* other = Add<TZEPNode>(&scene);
    for (int i = 0; i < 12; ++i) {
        Add<TZEPProxy>(group)->SetProxy(other);
        Add<TZEPProxy>(other)->SetProxy(group);
    }
    group->GetSize(min, max);
    EXPECT_EQ(max, (TGLArrayd3{0.5, 0.5, 0.5}));
}

} // namespace
} // namespace ZEP
