#pragma once

#include <zep/scene/Object.h>

#include <QPointer>

#include <optional>
#include <vector>

namespace ZEP {

class TMeshLooks;

using TBatchObjects = std::vector<QPointer<TZEPObject>>;

/// A batch draws its children by itself, with their marks.
using TIsBatch = bool (*)(const TZEPObject&);

/// How the surfaces among them look.
struct TSurfaceLook {
    bool Smooth = false; ///< meshes, where their faces meet at a small angle
    bool Wire = false;   ///< as outlines
    /// Not at all, but they hide what is behind them; their edges come in the transparent pass.
    bool Hidden = false;
    bool Sorted = false;               ///< what is transparent, from the farthest on
    std::optional<TGLArrayf3> Edges{}; ///< the colour of edges that are drawn, 0 .. 1
};

/// Objects of a batch that draw themselves. Drawing may free any of them.
class TSeparates {
public:
    /// One pass.
    struct TPass {
        TZEPSceneContext& Scene;
        TZEPDrawState State;
        TZEPDrawKind Kind;
        TMeshLooks* Meshes = nullptr;
        TSurfaceLook Look{};
    };

    /// \param frame  that it lies in
    void Add(const TGLMatrixd4& frame, TZEPObject& object);
    /// That one of them takes part in.
    [[nodiscard]] TZEPPassSet Passes() const { return m_passes; }
    void Draw(const TPass& pass) const;
    /// Edges alone, over what hides them: once all faces of the scene are drawn.
    void DrawEdges(const TPass& pass) const;

    /// One of them, and how far before the eye its middle is (farther behind: lower).
    struct TPlaced {
        const TGLMatrixd4* Frame; ///< that it lies in; belongs to the list
        QPointer<TZEPObject> Object;
        double Depth;
    };
    /// Adds those that take part in a pass. \param toEye  from their frames
    void List(TZEPDrawState state, const TGLMatrixd4& toEye, std::vector<TPlaced>& list) const;
    static void Draw(const TPlaced& placed, const TPass& pass);
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

    static void DrawOne(const QPointer<TZEPObject>& object, const TPass& pass);
    static void DrawFaces(TZEPObject& object, const TPass& pass);

    std::vector<TNeighbours> m_frames;
    TZEPPassSet m_passes = 0;
};

} // namespace ZEP
