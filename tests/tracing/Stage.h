#pragma once

#include "tests/Words.h"
#include "tests/tracing/Tracer.h"
#include <zep/scene/Scene.h>
#include <zep/view/Camera.h>

#include <map>
#include <string>

namespace ZEP::Tracing {

constexpr int NoPiece = -1;

/// A scene that the library draws and that is traced: what is added is added to both, from the same
/// numbers. It is told in lines:
///
///     ground                                what shadows fall on, before an eye
///     eye 1.5 -8 3 to 0 0 1 field 40
///     lamp at -3 -2 5 color 0.9 0 0         `parallel`, `exact`, `still`: that casts no shadows
///     box at 0 0 1 turn 20 30 40 scale 1 1 1 look caster as Crate
///     ball on Crate look red                things: ball, box, sheet, roof, letter, frame
///     polygon of u look caster              or of `square`, `triangle`; `convex`, `unlisted`
///     proxy of Crate at 2 0 0               `receives`
///     carving common as Solid               or `union`, `difference`, of the two things on it
///     move of Crate at 1 0 1
///     bend of triangle as Sail at 0.8 0.9 0 moves the last corner of that polygon
///     shadows both                          or `subtracted`, `accumulated`
class TStage {
public:
    static constexpr int Size = 256; ///< of the pictures

    TStage();
    TStage(const TStage&) = delete;
    TStage& operator=(const TStage&) = delete;

    void Do(const std::string& line);

    /// Any object, with the shape that it is to have; what the words say of place, look, name.
    template <class T>
    T& Add(TShape shape, const TWords& words) {
        auto* object = new T(&Scene);
        Add(*object, std::move(shape), words);
        return *object;
    }

    /// The number of its piece.
    int Add(TZEPObject& object, TShape shape, const TWords& words);

    void SetMethod(TMethod method);
    void SetAddsLight(bool adds) { m_tracer.AddsLight = adds; }
    /// Those that `shadows` asks for.
    [[nodiscard]] const std::vector<TMethod>& Methods() const { return m_methods; }

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

    /// \name The verbs
    /// @{
    void AddGround(const TWords& words);
    void AddFrame(const TWords& words);
    void AddBall(const TWords& words);
    void AddBox(const TWords& words);
    void AddSheet(const TWords& words);
    void AddRoof(const TWords& words);
    void AddLetter(const TWords& words);
    void AddPolygon(const TWords& words);
    void AddProxy(const TWords& words);
    void AddCarving(const TWords& words);
    void AddLamp(const TWords& words);
    void Move(const TWords& words);
    void Bend(const TWords& words);
    void SetEye(const TWords& words);
    void ChooseMethods(const TWords& words);
    /// @}

    int Note(const TOrigin& origin, TShape shape, const TLook& look);
    void NoteCarved(int piece, int parent);
    [[nodiscard]] int PieceOf(const std::string& name) const;
    [[nodiscard]] TZEPObject& ObjectOf(int piece);
    [[nodiscard]] TFrame FrameOf(int piece) const;
    void PlaceAll();

    TTracer m_tracer;
    std::vector<TOrigin> m_origins;     ///< of the pieces
    std::map<std::string, int> m_named; ///< the same by what they are called
    std::vector<TLampOrigin> m_lampOrigins;
    std::vector<int> m_carvings; ///< the pieces that are carved of others
    std::vector<TMethod> m_methods{TMethod::NoShadows};
    TEye m_eye;
    TZEPCamera m_camera;
};

} // namespace ZEP::Tracing
