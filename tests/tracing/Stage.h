#pragma once

#include "tests/tracing/Tracer.h"
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>

#include <QImage>

#include <concepts>

namespace ZEP {
class TZEPBox;
class TZEPHeightField;
class TZEPLight;
class TZEPLogicalObject;
class TZEPMesh;
class TZEPPolygon;
class TZEPProxy;
class TZEPSphere;
} // namespace ZEP

namespace ZEP::Tracing {

constexpr int NoPiece = -1;

/// An object of the library, and the number of the piece that stands for it.
template <class T>
struct TAdded {
    T& Object;
    int Piece;
};

/// A scene that the library draws and that is traced: what is added is added to both, from the same
/// numbers.
class TStage {
public:
    static constexpr int Size = 256; ///< of the pictures

    TStage();
    TStage(const TStage&) = delete;
    TStage& operator=(const TStage&) = delete;

    /// Any object, with the shape that it is to have. \param parent  the piece that it stands on
    template <std::derived_from<TZEPObject> T>
    TAdded<T> Add(TShape shape, const TPlace& place, const TLook& look, int parent = NoPiece) {
        auto* object = new T(&Scene);
        return {*object, Add(*object, std::move(shape), place, look, parent)};
    }
    /// Nothing of its own: what others stand on.
    int AddFrame(const TPlace& place, int parent = NoPiece);
    TAdded<TZEPSphere> AddBall(const TPlace& place, const TLook& look, int parent = NoPiece);
    TAdded<TZEPBox> AddBox(const TPlace& place, const TLook& look, int parent = NoPiece);
    /// A square of fine cells that is seen from above.
    TAdded<TZEPHeightField> AddSheet(const TPlace& place, const TLook& look, int parent = NoPiece);
    TAdded<TZEPPolygon> AddPolygon(const TCorners& corners, const TPlace& place, const TLook& look,
                                   int parent = NoPiece);
    TAdded<TZEPMesh> AddMesh(const TCorners& corners, const TTriangles& triangles,
                             const TPlace& place, const TLook& look, int parent = NoPiece);
    /// Shows `target` and all on it once more. \param receives  what the proxy says of shadows
    TAdded<TZEPProxy> AddProxy(int target, const TPlace& place, bool receives,
                               int parent = NoPiece);
    /// Of the two pieces that are added with its number as their parent.
    int AddCarving(TSetOperation operation, const TPlace& place, int parent = NoPiece);
    TZEPLight& AddLamp(const TLamp& lamp, int parent = NoPiece);

    /// \name What changes between two drawings
    /// @{
    void Move(int piece, const TPlace& place);
    /// What the host has done to an object has made this of it.
    void Reshape(int piece, TShape shape);
    /// @}

    void SetEye(const TEye& eye);
    void SetMethod(TMethod method);
    void SetAddsLight(bool adds) { m_tracer.AddsLight = adds; }

    /// Into the current context.
    void Draw();
    [[nodiscard]] std::vector<TSample> Trace() const;
    [[nodiscard]] const TTracer& Tracer() const { return m_tracer; }

    TZEPScene Scene;

private:
    /// A piece as it is in the library, and where it stands there.
    struct TOrigin {
        TZEPObject* Object = nullptr;
        TFrame Frame;
        int Parent = NoPiece;
    };

    struct TLampOrigin {
        TVector Position;
        int Parent;
    };

    int Add(TZEPObject& object, TShape shape, const TPlace& place, const TLook& look, int parent);
    int Note(const TOrigin& origin, TShape shape, const TLook& look);
    void NoteCarved(int piece, int parent);
    [[nodiscard]] TZEPObject& ObjectOf(int piece);
    [[nodiscard]] TFrame FrameOf(int piece) const;
    void PlaceAll();

    TTracer m_tracer;
    std::vector<TOrigin> m_origins; ///< of the pieces
    std::vector<TLampOrigin> m_lampOrigins;
    std::vector<int> m_carvings; ///< the pieces that are carved of others
    TEye m_eye;
    TZEPCamera m_camera;
};

} // namespace ZEP::Tracing
