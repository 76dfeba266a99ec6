#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/ZEPObjects.h>
#include <zep/scene/Scene.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> Allocations{0};

} // namespace

void* operator new(std::size_t size) {
    ++Allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++Allocations;
    return std::malloc(size);
}

// Not inlined: the compiler would take `free` for the wrong partner of `new`.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace ZEP {
namespace {

using FrameAllocation = OffscreenTest;

TEST_F(FrameAllocation, AFrameAllocatesNothingForAnObject) {
    constexpr int Each = 500;
    TZEPScene scene;
    TZEPCamera camera(&scene);
    camera.SetParentComponent(&scene);
    camera.Position()->SetData(0, 0, 10);
    for (int i = 0; i < Each; ++i) {
        auto* line = Add<TZEPLine>(&scene);
        line->P1()->SetData(i * 0.01, 0, 0);
        auto* polyline = Add<TZEPPolyline>(&scene);
        for (int k = 0; k < 4; ++k) polyline->Vertexes()->Add()->SetPoint({i * 0.01, k * 0.1, 0});
        auto* arc = Add<TZEPArc>(&scene);
        arc->XForm()->Translate()->SetData(i * 0.01, 0, 0);
        for (TZEPShape* shape :
             std::initializer_list<TZEPShape*>{line, polyline, arc, Add<TZEPPoint>(&scene)}) {
            shape->SetColor(i % 2 == 0 ? clRed : clBlue);
            shape->SetSmooth(i % 3 == 0);
        }
    }
    scene.Render(&camera, 256, 256, false);
    scene.Render(&camera, 256, 256, false);
    const int before = Allocations;
    EXPECT_GT(before, 4 * Each) << "those of the objects themselves are counted";
    scene.Render(&camera, 256, 256, false);
    EXPECT_LT(Allocations - before, 20);
}

} // namespace
} // namespace ZEP
