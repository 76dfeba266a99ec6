#pragma once

#include <zep/scene/Geom.h>

#include <GL/gl.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace ZEP {

/// All that a shadow volume follows from.
struct TZEPVolumeKey {
    std::uint64_t Shape = 0;   ///< what the caster draws
    std::uint64_t Look = 0;    ///< of that, what does not depend on the caster alone
    TGLMatrixd4 Place{};       ///< from the caster's frame to the absolute one
    TGLArrayd3 Eye{};          ///< of the light
    std::uint64_t IsAimed = 0; ///< else the light is at infinity
    std::uint64_t IsExact = 0; ///< else it is the outline of the whole
    bool operator==(const TZEPVolumeKey&) const = default;
};

/// The shadow volumes of a light: display lists. Those of one frame are drawn; those of the frame
/// before are kept as long, so that a volume that follows from the same is not made again.
class TZEPShadowLists {
public:
    TZEPShadowLists() = default;
    ~TZEPShadowLists();
    TZEPShadowLists(const TZEPShadowLists&) = delete;
    TZEPShadowLists& operator=(const TZEPShadowLists&) = delete;

    /// To be drawn.
    [[nodiscard]] const std::vector<GLuint>& Lists() const { return m_lists; }
    /// Draws the volume that was made from the same; false where there is none.
    bool Use(const TZEPVolumeKey& key);
    /// Takes over a list; 0 is a volume without contents.
    void Add(const TZEPVolumeKey& key, GLuint list);
    /// One that nothing is known of.
    void Add(GLuint list) {
        m_lists.push_back(list);
        m_unknown.push_back(list);
    }
    /// A new frame begins, with a context current: nothing is drawn.
    void Drop();

private:
    struct THash {
        std::size_t operator()(const TZEPVolumeKey& key) const;
    };
    using TVolumes = std::unordered_map<TZEPVolumeKey, GLuint, THash>;

    void Draw(GLuint list) {
        if (list != 0) m_lists.push_back(list);
    }

    std::vector<GLuint> m_lists;
    std::vector<GLuint> m_unknown; ///< of them
    TVolumes m_used;               ///< in this frame
    TVolumes m_kept;               ///< of the frame before
};

} // namespace ZEP
