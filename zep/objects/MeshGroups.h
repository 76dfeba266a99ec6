#pragma once

#include <zep/objects/MeshArrays.h>
#include <zep/scene/Kept.h>

#include <map>
#include <utility>

namespace ZEP {

/// The arrays that a mesh is sent from: one for each material, or one for all.
class TMeshGroups : public TZEPKept {
public:
    /// What all of them follow, besides the vertexes and faces.
    struct TLook {
        bool ByMaterial = false;
        bool Smooth = false;
        bool AutoNormal = false;
        TGLArrayf3 Normal{}; ///< of all faces, without `AutoNormal`
        bool operator==(const TLook&) const = default;
    };

    /// Those that were made for another look go.
    void SetLook(const TLook& look) {
        if (look == m_look) return;
        GiveBack();
        m_look = look;
    }
    /// \return null where they have to be made
    [[nodiscard]] const TMeshArrays* Find(int material, bool textured) const {
        const auto found = m_arrays.find(material);
        const bool fits = found != m_arrays.end() && (found->second.IsTextured() || !textured);
        return fits ? &found->second : nullptr;
    }
    /// In place of what there was.
    const TMeshArrays& Keep(int material, TMeshArrays arrays) {
        return m_arrays.insert_or_assign(material, std::move(arrays)).first->second;
    }
    void GiveBack() override { m_arrays.clear(); }

private:
    TLook m_look;
    std::map<int, TMeshArrays> m_arrays;
};

} // namespace ZEP
