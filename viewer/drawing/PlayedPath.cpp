#include "viewer/drawing/PlayedPath.h"

#include "viewer/drawing/ToolMarker.h"
#include <zep/batch/Batch.h>
#include <zep/converters/rs274d/ToolPlayback.h>
#include <zep/scene/Scene.h>

namespace ZEP {

TPlayedPath::TPlayedPath(TZEPScene* scene) : m_tool(new TToolMarker(scene)) {}

TPlayedPath::~TPlayedPath() {
    Hide();
    delete m_tool;
}

void TPlayedPath::SetRoot(TZEPBatch* root) {
    Hide();
    m_root = root;
}

void TPlayedPath::Show(const TToolPlayback& playback, int object) {
    if (!m_root) return Hide();
    m_root->SetFrontier(m_isFaint ? std::optional(object + 1) : std::nullopt);
    ShowTool(playback);
}

void TPlayedPath::ShowTool(const TToolPlayback& playback) {
    if (!m_tool) return;
    const std::optional<TRS274DPoint> place = playback.Position();
    m_tool->SetVisible(m_hasTool && place);
    if (!place) return;
    TGLArrayd3 absolute;
    m_root->ConvertToAbsolute(*place, absolute);
    const TToolPath& path = *playback.Path();
    m_tool->SetDiameter(path.Tools()[path.Move(playback.Move()).Tool].Diameter);
    m_tool->Put(absolute);
}

void TPlayedPath::Hide() {
    if (m_root) m_root->SetFrontier({});
    if (m_tool) m_tool->SetVisible(false);
}

} // namespace ZEP
