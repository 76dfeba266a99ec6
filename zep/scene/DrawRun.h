#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>

#include <GL/gl.h>

#include <optional>
#include <variant>

namespace ZEP {

class TZEPMaterial;

/// What a line shape sets before it sends its vertices.
struct TZEPLineAttributes {
    float Width = 1;           ///< pixels
    bool Stippled = false;     ///< draws with `Pattern`, factor 1
    GLushort Pattern = 0xFFFF; ///< one bit for each pixel
    bool Smooth = false;       ///< antialiased
    bool operator==(const TZEPLineAttributes&) const = default;
};

/// What a point sets before it sends its vertex.
struct TZEPPointAttributes {
    float Width = 1;     ///< pixels
    bool Smooth = false; ///< round
    bool operator==(const TZEPPointAttributes&) const = default;
};

/// Arrays that a surface is drawn from: three floats for each vertex.
struct TZEPArrayAttributes {
    const float* Points = nullptr;
    const float* Normals = nullptr;
    bool operator==(const TZEPArrayAttributes&) const = default;
};

/// What holds for all that is drawn, whatever its objects and materials say. Whoever draws others
/// by rules of its own sets them, and takes them back: see `TZEPDrawRun::RuleScope`.
struct TZEPDrawRules {
    float Widths = 1;           ///< factor of the widths of lines and points
    bool EvenMaterials = false; ///< they answer ambient light with their diffuse colours
    bool operator==(const TZEPDrawRules&) const = default;
};

/// State that stays set between neighbours of a draw walk. An object drawn alone makes all its
/// calls, in order: material, line or point attributes, vertices, then both taken back. Within a
/// walk, taking them back waits until the next object is known: one that opens the same state finds
/// it open, any other closes it first; of a material that follows another only what differs is set.
/// The picture is the same; setting state anew between tiny draws costs some twenty times the draws
/// (bench/DrawBench.cpp shows it).
///
/// Only objects that leave OpenGL's state as these calls set it take part
/// (`TZEPObject::SharesDrawRun`); before any other object draws, everything is closed.
class ZEP_CORE_EXPORT TZEPDrawRun {
public:
    /// An object is about to draw. \param shares  it takes part
    void Enter(bool shares);
    /// Applies the material to both sides, unless it or an equal one is still applied. Line and
    /// point attributes stay open under a new material: popping them is what costs.
    void OpenMaterial(TZEPMaterial& material);
    /// As `OpenMaterial` for the shared opaque material of a colour (SharedMaterials.h). Of many
    /// such in a row only the colours are sent, and no material is searched for.
    void OpenColor(TColor color);
    /// The object is done with its material. \param cancel  it is to be cancelled in the end
    void CloseMaterial(bool cancel);
    void OpenLine(const TZEPLineAttributes& attributes);
    void OpenPoint(const TZEPPointAttributes& attributes);
    void OpenArrays(const TZEPArrayAttributes& arrays);
    /// A surface comes vertex by vertex; attributes of lines and points must not reach it.
    void OpenSurface() { EndAttributes(); }
    /// What the present object closes stays open for the next.
    [[nodiscard]] bool Waits() const { return m_waits; }
    /// The object is done with its attributes or arrays.
    void CloseAttributes();
    /// Takes back what is still set.
    void End();

    [[nodiscard]] const TZEPDrawRules& Rules() const { return m_rules; }
    /// A material was handed to OpenGL by other means than `OpenMaterial`: what rules say of it
    /// follows. \param face  `GL_FRONT`, `GL_BACK` or `GL_FRONT_AND_BACK`: the sides that were set
    void ApplyRules(const TZEPMaterial& material, GLenum face) const;

    /// What is drawn while it lives follows these rules.
    class ZEP_CORE_EXPORT RuleScope {
    public:
        RuleScope(TZEPDrawRun& run, const TZEPDrawRules& rules);
        ~RuleScope();
        RuleScope(const RuleScope&) = delete;
        RuleScope& operator=(const RuleScope&) = delete;

    private:
        TZEPDrawRun& m_run;
        TZEPDrawRules m_outer;
    };

    /// A walk: closing waits for the next object while it lives, and everything is closed where
    /// it ends. Walks may nest.
    class Walk {
    public:
        explicit Walk(TZEPDrawRun& run);
        ~Walk();
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;

    private:
        TZEPDrawRun& m_run;
    };

private:
    using TAttributes =
        std::variant<std::monostate, TZEPLineAttributes, TZEPPointAttributes, TZEPArrayAttributes>;

    [[nodiscard]] bool Replaces(const TAttributes& attributes);
    void EndAttributes();
    void EndMaterial();
    void FindMaterial();

    TZEPMaterial* m_material = nullptr; // applied and waiting to be closed, or in use
    std::optional<TColor> m_color;      // applied since: as the shared material of this colour
    TAttributes m_attributes;           // likewise
    TZEPDrawRules m_rules;
    int m_walks = 0;
    bool m_cancel = false;
    bool m_shares = false;
    bool m_waits = false; // what the present object closes stays open
};

} // namespace ZEP
