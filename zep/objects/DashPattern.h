#pragma once

#include <zep/Export.h>
#include <zep/scene/Geom.h>

#include <QString>

#include <GL/gl.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ZEP {

/// A pattern as a texture along a line, one period of it from 0 to 1. Each of its levels is drawn
/// for itself, so that dots are a pixel long from far and near, and lines are solid where the
/// pattern is too small to be seen. Patterns of the same proportions share one.
class ZEP_CORE_EXPORT TDashTexture {
public:
    /// \param parts  as those of `TZEPDashPattern`
    [[nodiscard]] static std::shared_ptr<const TDashTexture> Of(std::span<const double> parts);

    explicit TDashTexture(std::string levels) : m_levels(std::move(levels)) {}
    ~TDashTexture();
    TDashTexture(const TDashTexture&) = delete;
    TDashTexture& operator=(const TDashTexture&) = delete;

    /// Binds it to `GL_TEXTURE_1D`.
    void Bind() const;

private:
    std::string m_levels; ///< alpha of the pixels, those of the longest level first
    mutable GLuint m_name = 0;
};

/// Lines between `glBegin` and `glEnd` are drawn with the pattern at their texture coordinates.
class ZEP_CORE_EXPORT TDashScope {
public:
    explicit TDashScope(const TDashTexture& texture);
    ~TDashScope() { glPopAttrib(); }
    TDashScope(const TDashScope&) = delete;
    TDashScope& operator=(const TDashScope&) = delete;
};

/// How lines are broken up: dashes, gaps and dots, again and again.
class ZEP_CORE_EXPORT TZEPDashPattern {
public:
    static constexpr std::size_t MaxParts = 64;
    /// A line of more is solid: no view shows all of it.
    static constexpr double MaxPeriods = 16384;

    /// \param parts  lengths of dashes, above 0, and of gaps, below 0; 0 is a dot
    /// \return  null for what breaks nothing up: without a gap, with a length that is no number or
    ///          a sum that is none, or of more than `MaxParts`
    /// \param name   of a line type, for users
    [[nodiscard]] static std::shared_ptr<const TZEPDashPattern> Of(std::span<const double> parts,
                                                                   const QString& name = {});

    TZEPDashPattern(std::span<const double> parts, const QString& name);

    /// Empty where nobody has given it one; no stream holds it.
    [[nodiscard]] const QString& Name() const { return m_name; }
    [[nodiscard]] const std::vector<double>& Parts() const { return m_parts; }
    /// The parts with blanks between them.
    [[nodiscard]] const QString& Text() const { return m_text; }
    [[nodiscard]] double Period() const { return m_period; }
    /// What the pattern begins with, 0 where that is no dash.
    [[nodiscard]] double FirstDash() const;
    [[nodiscard]] const std::shared_ptr<const TDashTexture>& Texture() const { return m_texture; }

private:
    std::vector<double> m_parts;
    QString m_name;
    QString m_text;
    double m_period;
    std::shared_ptr<const TDashTexture> m_texture;
};

/// A chain of lines to be broken up. The pattern runs round its bends. An open chain, and each side
/// between two corners unless `RunsOn`, begins and ends with a dash, both of one length: at least
/// half of the pattern's first dash. One that is shorter than the pattern is solid.
struct TDashedChain {
    std::span<const TGLArrayd3> Points;
    bool Closed = false;
    bool RunsOn = false; ///< round corners, too
    const TZEPDashPattern& Pattern;
};

/// An end of a line, and how far along the pattern it lies, in periods.
struct TDashedEnd {
    TGLArrayd3 Point;
    double Along;
};

/// Calls it for each line of the chain, which may be cut in pieces.
ZEP_CORE_EXPORT void
ForEachDashedLine(const TDashedChain& chain,
                  const std::function<void(const TDashedEnd& from, const TDashedEnd& to)>& line);

} // namespace ZEP
