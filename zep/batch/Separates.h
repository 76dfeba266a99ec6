#pragma once

#include <zep/scene/Object.h>

#include <QPointer>

#include <vector>

namespace ZEP {

class TSmoothMeshes;

using TBatchObjects = std::vector<QPointer<TZEPObject>>;

/// A batch draws its children by itself, with their marks.
using TIsBatch = bool (*)(const TZEPObject&);

/// Objects of a batch that draw themselves. Drawing may free any of them.
class TSeparates {
public:
    /// One pass.
    struct TPass {
        TZEPSceneContext& Scene;
        TZEPDrawState State;
        TZEPDrawKind Kind;
        TSmoothMeshes* Meshes = nullptr; ///< null: meshes draw themselves
        bool Wire = false;               ///< surfaces draw their outlines
    };

    /// \param frame  that it lies in
    void Add(const TGLMatrixd4& frame, TZEPObject& object);
    /// That one of them takes part in.
    [[nodiscard]] TZEPPassSet Passes() const { return m_passes; }
    void Draw(const TPass& pass) const;
    template <class Visit>
    void ForEach(const Visit& visit) const {
        for (const TNeighbours& some : m_frames)
            for (const QPointer<TZEPObject>& object : some.Objects)
                if (object) visit(*object);
    }

private:
    /// In one frame.
    struct TNeighbours {
        TGLMatrixd4 Frame;
        TBatchObjects Objects;
        TZEPPassSet Passes = 0;
    };

    static void DrawOne(TZEPObject& object, const TPass& pass);

    std::vector<TNeighbours> m_frames;
    TZEPPassSet m_passes = 0;
};

} // namespace ZEP
