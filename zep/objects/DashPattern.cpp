#include <zep/objects/DashPattern.h>

#include <zep/gl/Names.h>
#include <zep/scene/Vectors.h>

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <numeric>
#include <unordered_map>

namespace ZEP {

namespace {

constexpr std::size_t Texels = 1024; // of the longest level
constexpr char Shown = '\xFF';

/// What turns by more is a corner, and no bend of a curve.
constexpr double CornerCosine = 0.96;

double LengthOf(double part) {
    return std::abs(part);
}

double PeriodOf(std::span<const double> parts) {
    return std::accumulate(parts.begin(), parts.end(), 0.0,
                           [](double sum, double part) { return sum + LengthOf(part); });
}

QString TextOf(std::span<const double> parts) {
    QStringList texts;
    for (const double part : parts)
        texts += QString::number(part, 'g', QLocale::FloatingPointShortest);
    return texts.join(u' ');
}

/// A dot and a short dash are one texel long. Gaps are kept as long as there is room for all.
std::string Level(std::span<const double> parts, std::size_t size) {
    if (size < 2 * parts.size()) return std::string(size, Shown);
    std::string texels(size, '\0');
    const double scale = static_cast<double>(size) / PeriodOf(parts);
    double place = 0;
    for (const double part : parts) {
        const auto first = std::min(static_cast<std::size_t>(std::lround(place * scale)), size - 1);
        place += LengthOf(part);
        const auto end = static_cast<std::size_t>(std::lround(place * scale));
        if (part < 0) continue;
        std::fill_n(texels.begin() + static_cast<std::ptrdiff_t>(first),
                    std::clamp(end, first + 1, size) - first, Shown);
    }
    return texels;
}

/// Those that objects have, by their texels.
using TTextures = std::unordered_map<std::string, std::weak_ptr<const TDashTexture>>;

TTextures& Textures() {
    static auto* textures = new TTextures; // outlives the objects of all hosts
    return *textures;
}

/// Readers may make objects on threads of their own.
std::mutex& TexturesLock() {
    static auto* lock = new std::mutex;
    return *lock;
}

} // namespace

// --- texture -----------------------------------------------------------------------------------

std::shared_ptr<const TDashTexture> TDashTexture::Of(std::span<const double> parts) {
    std::string levels;
    for (std::size_t size = Texels; size > 0; size /= 2) levels += Level(parts, size);
    const std::lock_guard guard(TexturesLock());
    std::weak_ptr<const TDashTexture>& known = Textures()[levels];
    std::shared_ptr<const TDashTexture> texture = known.lock();
    if (!texture) known = texture = std::make_shared<const TDashTexture>(std::move(levels));
    return texture;
}

TDashTexture::~TDashTexture() {
    {
        const std::lock_guard guard(TexturesLock());
        const auto known = Textures().find(m_levels);
        // Another thread may have made the next one already.
        if (known != Textures().end() && known->second.expired()) Textures().erase(known);
    }
    ReleaseTexture(m_name);
}

void TDashTexture::Bind() const {
    if (m_name != 0 && glIsTexture(m_name)) return glBindTexture(GL_TEXTURE_1D, m_name);
    glGenTextures(1, &m_name);
    glBindTexture(GL_TEXTURE_1D, m_name);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_NEAREST_MIPMAP_NEAREST);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    const char* texels = m_levels.data();
    GLint level = 0;
    for (std::size_t size = Texels; size > 0; texels += size, size /= 2)
        glTexImage1D(GL_TEXTURE_1D, level++, GL_ALPHA, static_cast<GLsizei>(size), 0, GL_ALPHA,
                     GL_UNSIGNED_BYTE, texels);
    glPopClientAttrib();
}

TDashScope::TDashScope(const TDashTexture& texture) {
    glPushAttrib(GL_TEXTURE_BIT | GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_TEXTURE_1D);
    texture.Bind();
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glEnable(GL_ALPHA_TEST); // gaps leave the depth as it is
    glAlphaFunc(GL_GREATER, 0);
}

// --- pattern -----------------------------------------------------------------------------------

std::shared_ptr<const TZEPDashPattern> TZEPDashPattern::Of(std::span<const double> parts,
                                                           const QString& name) {
    const bool hasGap = std::ranges::any_of(parts, [](double part) { return part < 0; });
    const bool hasDash = std::ranges::any_of(parts, [](double part) { return part >= 0; });
    const double period = PeriodOf(parts);
    if (!hasGap || !hasDash || parts.size() > MaxParts || !std::isnormal(period)) return {};
    return std::make_shared<const TZEPDashPattern>(parts, name);
}

TZEPDashPattern::TZEPDashPattern(std::span<const double> parts, const QString& name)
    : m_parts(parts.begin(), parts.end()), m_name(name), m_text(TextOf(parts)),
      m_period(PeriodOf(parts)), m_texture(TDashTexture::Of(parts)) {}

double TZEPDashPattern::FirstDash() const {
    return std::max(m_parts.front(), 0.0);
}

// --- along a chain -----------------------------------------------------------------------------

namespace {

/// The pattern along a side of a known length.
class TSide {
public:
    TSide(const TZEPDashPattern& pattern, double length, bool aligned) : m_pattern(pattern) {
        const double periods = std::floor(length / pattern.Period());
        const double dash = pattern.FirstDash();
        m_isSolid = periods > TZEPDashPattern::MaxPeriods || !std::isfinite(length) ||
                    (aligned && periods < 1);
        if (!aligned || !(dash > 0)) return;
        // So much of the first dash is left out at both ends, or added to it.
        m_shift = (periods * pattern.Period() + dash - length) / 2;
        m_lead = std::max(-m_shift, 0.0);
        m_tail = length - m_lead;
    }

    /// From one place along the side to another one, cut where a longer dash goes over into the
    /// pattern.
    template <class Send>
    void Cut(double from, double to, const Send& send) const {
        double place = from;
        for (const double cut : {m_lead, m_tail})
            if (!m_isSolid && place < cut && cut < to) {
                send(place, cut);
                place = cut;
            }
        send(place, to);
    }
    /// How far along the pattern a piece begins and ends. Near 0, where numbers are fine.
    [[nodiscard]] std::pair<double, double> Along(double from, double to) const {
        const double middle = from + (to - from) / 2;
        if (m_isSolid || middle < m_lead || middle > m_tail) {
            const double dash = SolidPlace();
            return {dash, dash};
        }
        const double start = (from + m_shift) / m_pattern.Period();
        const double whole = std::floor(start);
        return {start - whole, (to + m_shift) / m_pattern.Period() - whole};
    }

private:
    /// A place of the pattern that is no gap.
    [[nodiscard]] double SolidPlace() const {
        double place = 0;
        for (const double part : m_pattern.Parts()) {
            if (part > 0) return (place + part / 2) / m_pattern.Period();
            if (part == 0) break;
            place -= part;
        }
        return place / m_pattern.Period();
    }

    const TZEPDashPattern& m_pattern;
    bool m_isSolid = false;
    double m_shift = 0;
    double m_lead = 0;                                       ///< where the pattern begins
    double m_tail = std::numeric_limits<double>::infinity(); ///< and ends
};

/// Goes from corner to corner.
class TWalk {
public:
    using TLine = std::function<void(const TDashedEnd&, const TDashedEnd&)>;

    TWalk(const TDashedChain& chain, const TLine& line) : m_chain(chain), m_line(line) {}

    void Go() {
        const std::size_t edges = Edges();
        const std::size_t start = FirstCorner();
        const bool isLoop = m_chain.Closed && start == edges;
        std::size_t first = m_chain.Closed && !isLoop ? start : 0;
        const std::size_t last = first + edges;
        while (first < last) {
            std::size_t end = first + 1;
            while (end < last && !IsCorner(end)) ++end;
            GoSide(first, end, !isLoop);
            first = end;
        }
    }

private:
    [[nodiscard]] std::size_t Edges() const {
        const std::size_t count = m_chain.Points.size();
        return count < 2 ? 0 : m_chain.Closed ? count : count - 1;
    }
    [[nodiscard]] const TGLArrayd3& At(std::size_t i) const {
        return m_chain.Points[i % m_chain.Points.size()];
    }
    /// Where edge `i` begins.
    [[nodiscard]] bool IsCorner(std::size_t i) const {
        if (m_chain.RunsOn) return false;
        const std::size_t count = m_chain.Points.size();
        const TGLArrayd3 in = Unit(At(i) - At(i + count - 1)), out = Unit(At(i + 1) - At(i));
        return Dotd(in, out) < CornerCosine;
    }
    /// The number of edges where there is none.
    [[nodiscard]] std::size_t FirstCorner() const {
        std::size_t i = 0;
        while (i < Edges() && !(m_chain.Closed && IsCorner(i))) ++i;
        return i;
    }
    void GoSide(std::size_t first, std::size_t end, bool aligned) {
        double length = 0;
        for (std::size_t i = first; i < end; ++i) length += Distance(At(i), At(i + 1));
        const TSide side(m_chain.Pattern, length, aligned);
        double place = 0;
        for (std::size_t i = first; i < end; ++i) {
            const double next = place + Distance(At(i), At(i + 1));
            GoEdge(side, At(i), At(i + 1), place, next);
            place = next;
        }
    }
    void GoEdge(const TSide& side, const TGLArrayd3& a, const TGLArrayd3& b, double from,
                double to) {
        const auto at = [&](double place) {
            if (place == from || !(to > from)) return a;
            return place == to ? b : a + (b - a) * ((place - from) / (to - from));
        };
        side.Cut(from, to, [&](double start, double end) {
            const auto [along, next] = side.Along(start, end);
            m_line({at(start), along}, {at(end), next});
        });
    }

    const TDashedChain& m_chain;
    const TLine& m_line;
};

} // namespace

void ForEachDashedLine(
    const TDashedChain& chain,
    const std::function<void(const TDashedEnd& from, const TDashedEnd& to)>& line) {
    TWalk(chain, line).Go();
}

} // namespace ZEP
