#pragma once

#include <zep/batch/MeshEdges.h>

#include <QPointer>

#include <map>
#include <memory>
#include <typeindex>
#include <unordered_map>
#include <vector>

namespace ZEP {

class TZEPObject;
class TZEPSolid;

/// The edges of solids that are no meshes, found in what they draw. Those of one class and of equal
/// settings share theirs.
class TSolidEdges {
public:
    /// Null for what is none, or of a class that is not known. A frame is drawn.
    [[nodiscard]] const TMeshEdges* Of(TZEPObject& object, TZEPSceneContext& scene);
    /// It may have changed, or be another one.
    void Doubt(const TZEPObject& object);
    void ForgetFreed();

private:
    using TEdges = std::shared_ptr<const TMeshEdges>;
    /// What the drawing depends on.
    using TKey = std::pair<std::type_index, std::vector<double>>;
    struct TKept {
        QPointer<TZEPObject> Of;
        TEdges Edges;
    };

    [[nodiscard]] static TKey KeyOf(const TZEPSolid& solid);
    [[nodiscard]] TEdges Shared(TZEPSolid& solid, TZEPSceneContext& scene);

    std::unordered_map<const TZEPObject*, TKept> m_kept;
    std::map<TKey, std::weak_ptr<const TMeshEdges>> m_shared;
};

} // namespace ZEP
