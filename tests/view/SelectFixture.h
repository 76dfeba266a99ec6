#pragma once

#include "tests/gl/OffscreenTest.h"
#include <zep/ZEPClasses.h>
#include <zep/objects/Line.h>

namespace ZEP {

/// A square of side 1 in the plane z = 0 of its own frame.
class Tile : public TZEPColoredObject {
public:
    using TZEPColoredObject::TZEPColoredObject;
    void DrawSpecific(GLenum, bool) override {
        glBegin(GL_QUADS);
        for (const auto& [x, y] : {std::pair{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}})
            glVertex3d(x, y, 0);
        glEnd();
        ++Draws;
    }
    int Draws = 0;
    bool Inside = true;

protected:
    [[nodiscard]] bool StaysInSize() const override { return Inside; }
};
inline const TZEPKnownClass KnownTile{typeid(Tile)};

/// A view of 200 by 100 that looks down along z: one unit is ten pixels, the middle is the origin.
class SelectTest : public OffscreenTest {
protected:
    SelectTest() : OffscreenTest(200, 100) {
        Camera.SetParentComponent(&Scene);
        Camera.SetOrthographic(true);
        Camera.Position()->SetData(0, 0, 10);
        Camera.Up()->SetData(0, 1, 0);
        Camera.SetFOVY(90);
    }

    Tile* AddTile(double x, double y, double z, const QString& name = {}) {
        auto* tile = new Tile(&Scene);
        tile->XForm()->Translate()->SetData(x, y, z);
        tile->SetName(name);
        tile->SetParentComponent(&Scene);
        return tile;
    }
    /// A click at a point in units.
    int Click(double x, double y, bool toggle = false, bool clear = true) {
        return Region(x, y, 4, 4, toggle, clear);
    }
    int Region(double x, double y, int width, int height, bool toggle = false, bool clear = true) {
        return Scene.Select(&Camera, 200, 100, 100 + static_cast<int>(10 * x),
                            50 + static_cast<int>(10 * y), width, height, true, toggle, clear);
    }
    TZEPObject* PickAt(double x, double y, int level = 0) {
        return Scene.Pick(&Camera, 200, 100, 100 + static_cast<int>(10 * x),
                          50 + static_cast<int>(10 * y), 4, 4, level);
    }
    [[nodiscard]] std::vector<TZEPObject*> Selected() {
        std::vector<TZEPObject*> all;
        Scene.ListChildren(all);
        std::erase_if(all, [](const TZEPObject* object) { return !object->Selected(); });
        return all;
    }

    TZEPScene Scene;
    TZEPCamera Camera{&Scene};
};

} // namespace ZEP
