#pragma once

#include <zep/converters/dxf/Handles.h>

#include <vector>

namespace ZEP {

/// What an entity VIEWPORT says.
struct TDXFWindow {
    /// \param record  of the entity
    /// \param begin   behind its code 0: older drawings say most of it where applications add
    /// theirs
    [[nodiscard]] static TDXFWindow Of(const TDXFRecord& record, TDXFTags& tags,
                                       const TDXFPosition& begin);

    TGLArrayd3 Center{}; ///< on the sheet
    double Width = 0, Height = 0;
    int Id = 0; ///< 1 is the sheet itself; below 1: the drawing does not tell
    bool IsOff = false;
    bool IsDeep = false; ///< in perspective, or cut before and behind
    TGLArrayd3 Target{}, Direction{};
    TGLArrayd3 Middle{}; ///< of what is seen, from the target on in the plane of the view
    double ViewHeight = 0;
    double Twist = 0;    ///< degrees
    quint64 Outline = 0; ///< handle of the entity that it is cut off at; 0: none
    std::vector<quint64> FrozenHandles{};
    std::vector<std::string_view> FrozenNames{}; ///< as they stand in the text
};

} // namespace ZEP
