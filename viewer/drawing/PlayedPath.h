#pragma once

#include <QPointer>

namespace ZEP {

class TToolMarker;
class TToolPlayback;
class TZEPBatch;
class TZEPScene;

/// How the view shows where a playback is: a tool at the end of what is done, and what is to come
/// faint. Nothing of it is in the objects of the path.
class TPlayedPath {
public:
    explicit TPlayedPath(TZEPScene* scene);
    ~TPlayedPath();
    TPlayedPath(const TPlayedPath&) = delete;
    TPlayedPath& operator=(const TPlayedPath&) = delete;

    /// What is played from now on is shown once `Show` is called. \param root  of its moves, or
    /// null
    void SetRoot(TZEPBatch* root);
    /// \param object  that the present move is, among the children of the root
    void Show(const TToolPlayback& playback, int object);
    /// The path looks as it does by itself.
    void Hide();

    /// \name What is shown; both by default, from the next `Show` on
    /// @{
    void SetHasTool(bool tool) { m_hasTool = tool; }
    void SetIsFaint(bool faint) { m_isFaint = faint; }
    /// @}

private:
    void ShowTool(const TToolPlayback& playback);

    QPointer<TToolMarker> m_tool; ///< owned by the scene
    QPointer<TZEPBatch> m_root;
    bool m_hasTool = true;
    bool m_isFaint = true;
};

} // namespace ZEP
