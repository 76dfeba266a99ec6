#pragma once

#include <zep/Export.h>
#include <zep/framework/Color.h>
#include <zep/framework/Watch.h>
#include <zep/scene/DrawPasses.h>
#include <zep/scene/LineRun.h>

#include <GL/gl.h>

#include <optional>
#include <typeinfo>
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

/// Arrays that a surface is drawn from: three floats for each vertex, and two for its place in a
/// picture. The last normal and place stay the current ones.
struct TZEPArrayAttributes {
    const float* Points = nullptr;
    const float* Normals = nullptr;
    const float* Places = nullptr; ///< null: there is no picture
    const float* LastNormal = nullptr;
    const float* LastPlace = nullptr;
    bool operator==(const TZEPArrayAttributes&) const = default;
};

/// What holds for all that is drawn, whatever its objects and materials say. Whoever draws others
/// by rules of its own sets them, and takes them back: see `TZEPDrawRun::RuleScope`.
struct TZEPDrawRules {
    float Widths = 1;           ///< factor of the widths of lines and points
    bool EvenMaterials = false; ///< they answer ambient light with their diffuse colours
    bool operator==(const TZEPDrawRules&) const = default;
};

/// Takes back at its end what applying a material switched on, also where that is freed meanwhile
/// or loses its picture.
class ZEP_CORE_EXPORT TZEPMaterialUse {
public:
    /// \param material  was applied
    explicit TZEPMaterialUse(TZEPMaterial& material);
    ~TZEPMaterialUse();
    TZEPMaterialUse(const TZEPMaterialUse&) = delete;
    TZEPMaterialUse& operator=(const TZEPMaterialUse&) = delete;

private:
    TZEPMaterial& m_material;
    TZEPWatch m_alive;
    bool m_textured;
};

/// State that stays set between neighbours of a draw walk. An object drawn alone makes all its
/// calls, in order: material, line or point attributes, vertices, then both taken back. Within a
/// walk, taking them back waits until the next object is known: one that opens the same state finds
/// it open, any other closes it first; of a material that follows another only what differs is set.
/// The picture is the same; setting state anew between tiny draws costs some twenty times the draws
/// (bench/DrawBench.cpp shows it).
///
/// Only objects that leave OpenGL's state as these calls set it take part
/// (`TZEPObject::SharesDrawRun`). Before any other object draws, everything is closed, and what it
/// draws in its turn, others included, makes all its calls.
class ZEP_CORE_EXPORT TZEPDrawRun {
    /// Who draws, and whether closing waits, is as before at its end.
    class ZEP_CORE_EXPORT Scope {
    public:
        explicit Scope(TZEPDrawRun& run)
            : m_run(run), m_outerWalks(run.m_walks), m_outerShares(run.m_shares) {}
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    protected:
        TZEPDrawRun& m_run;
        bool m_outerWalks;
        bool m_outerShares;
    };

public:
    using TAttributes =
        std::variant<std::monostate, TZEPLineAttributes, TZEPPointAttributes, TZEPArrayAttributes>;

    /// An object draws itself while it lives.
    class ZEP_CORE_EXPORT Turn : Scope {
    public:
        /// \param shares  it takes part
        Turn(TZEPDrawRun& run, bool shares);
    };

    /// An object draws with a material, which is handed to OpenGL unless it or an equal one still
    /// holds there. Line and point attributes stay open under a new material: popping them is what
    /// costs.
    class ZEP_CORE_EXPORT MaterialScope {
    public:
        /// \param face    `GL_FRONT`, `GL_BACK` or `GL_FRONT_AND_BACK`: the sides that are set
        /// \param cancel  it is cancelled in the end
        MaterialScope(TZEPDrawRun& run, TZEPMaterial& material, GLenum face = GL_FRONT_AND_BACK,
                      bool cancel = true);
        /// With the shared opaque material of a colour (SharedMaterials.h). Of many such in a row
        /// only the colours are sent, and no material is searched for.
        MaterialScope(TZEPDrawRun& run, TColor color);
        ~MaterialScope() { m_run.m_waits = false; }
        MaterialScope(const MaterialScope&) = delete;
        MaterialScope& operator=(const MaterialScope&) = delete;

    private:
        TZEPDrawRun& m_run;
        std::optional<TZEPMaterialUse> m_own; ///< it does not wait
    };

    /// An object draws lines, points or arrays with attributes.
    class ZEP_CORE_EXPORT AttributeScope {
    public:
        AttributeScope(TZEPDrawRun& run, const TAttributes& attributes);
        ~AttributeScope() {
            if (m_own.index() != 0) Close(m_own);
        }
        AttributeScope(const AttributeScope&) = delete;
        AttributeScope& operator=(const AttributeScope&) = delete;

    private:
        TAttributes m_own; ///< they do not wait
    };

    /// A surface comes vertex by vertex; attributes of lines and points must not reach it.
    void OpenSurface() { EndAttributes(); }
    /// An object of that class comes next. A host's may do anything before its turn begins: no
    /// texture is on then.
    void Next(const std::type_info& type) {
        if (m_next != &type) SendLines();
        m_next = &type;
        if (m_textured && !TZEPKnownClass::Is(type)) End();
    }
    /// Neighbours end here, and what they stand in may change.
    void EndNeighbours() {
        SendLines();
        m_next = nullptr;
    }
    /// All that the object that `Next` told draws is this line, with the shared opaque material of
    /// its colour; it is sent with those of its neighbours.
    /// \param type  the object's class
    /// \return false where it does not wait: it is to draw itself
    bool Gather(const std::type_info& type, const TZEPLineAttributes& attributes,
                const TZEPLineRun::TLine& line);
    /// Sends the lines that wait. Whoever draws without a word of `Next` calls this first.
    void SendLines() {
        if (!m_lines.IsEmpty()) SendGathered();
    }
    /// What the present object closes stays open for the next.
    [[nodiscard]] bool Waits() const { return m_waits; }
    /// Takes back what waits.
    void End();

    [[nodiscard]] const TZEPDrawRules& Rules() const { return m_rules; }
    /// A material was handed to OpenGL by other means than `MaterialScope`: what rules say of it
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
    class ZEP_CORE_EXPORT Walk : Scope {
    public:
        explicit Walk(TZEPDrawRun& run);
        ~Walk() { m_run.End(); }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
    };

private:
    void Apply(TZEPMaterial& material);
    void Apply(TColor color);
    void SendColor(TColor color);
    void Open(const TAttributes& attributes) const;
    static void Close(const TAttributes& attributes);
    void EndAttributes();
    void EndMaterial();
    void FindMaterial();
    void SendGathered();
    void SendByCalls();

    // What holds in OpenGL and may wait there. The material may have gone where textures have
    // changed since.
    TZEPMaterial* m_material = nullptr;
    unsigned m_textureChanges = 0; // when it was applied
    bool m_textured = false;       // so is it: texturing is on
    std::optional<TColor> m_color; // applied since: as the shared material of this colour
    TAttributes m_attributes;
    TZEPLineRun m_lines; // what is drawn already, but not sent
    TZEPLineAttributes m_lineAttributes;
    const std::type_info* m_next = nullptr; // while neighbours draw themselves
    TZEPDrawRules m_rules;
    bool m_walks = false;
    bool m_shares = false; // the present object takes part
    bool m_waits = false;  // what it closes stays open
};

} // namespace ZEP
