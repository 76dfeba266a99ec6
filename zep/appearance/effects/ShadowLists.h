#pragma once

#include <zep/Export.h>
#include <zep/gl/DisplayList.h>
#include <zep/scene/Geom.h>

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
class ZEP_CORE_EXPORT TZEPShadowLists {
public:
    /// To be drawn.
    [[nodiscard]] const std::vector<GLuint>& Lists() const { return m_lists; }
    /// Draws the volume that was made from the same; false where there is none.
    bool Use(const TZEPVolumeKey& key);
    /// \param list  none for a volume without contents
    void Add(const TZEPVolumeKey& key, TDisplayList list);
    /// Takes over one that nothing is known of.
    void Add(GLuint name) {
        m_lists.push_back(name);
        m_unknown.emplace_back().Adopt(name);
    }
    /// A new frame begins, with a context current: nothing is drawn.
    void Drop();

private:
    struct THash {
        std::size_t operator()(const TZEPVolumeKey& key) const;
    };
    using TVolumes = std::unordered_map<TZEPVolumeKey, TDisplayList, THash>;

    void Draw(const TDisplayList& list) {
        if (list.Exists()) m_lists.push_back(list.Name());
    }

    std::vector<GLuint> m_lists;
    std::vector<TDisplayList> m_unknown; ///< of them
    TVolumes m_used;                     ///< in this frame
    TVolumes m_kept;                     ///< of the frame before
};

} // namespace ZEP
