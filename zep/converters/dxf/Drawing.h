#pragma once

#include <zep/converters/dxf/CodePage.h>
#include <zep/converters/dxf/Layers.h>
#include <zep/converters/dxf/LineTypes.h>
#include <zep/converters/dxf/Report.h>
#include <zep/converters/dxf/TextStyles.h>
#include <zep/converters/dxf/Weights.h>

namespace ZEP {

/// A drawing while it is read: its text, what is made of it, and what is passed over.
class TDXFDrawing {
public:
    /// \param text  outlives this
    /// \param root  owner of what is made. The host may free it while it is asked for progress, if
    ///              it then cancels
    TDXFDrawing(std::string_view text, TZEPObject& root, const TDXFOptions& options)
        : Tags(text, options.Extended), Root(root), Options(options), Layers(root, options, Text),
          Budget(static_cast<qint64>(text.size()), options.FreeBytes) {}
    Q_DISABLE_COPY_MOVE(TDXFDrawing)

    TDXFTags Tags;
    TZEPObject& Root;
    const TDXFOptions Options;
    TDXFTextDecoder Text;
    TDXFLayers Layers;
    TDXFReport Report;
    TReadBudget Budget;
    TDXFLineTypes LineTypes;
    TDXFWeights Weights;
    TDXFTextStyles TextStyles;
    /// Where the header says that the drawing lies; z stays 0.
    TGLArrayd3 MinExtent{}, MaxExtent{};

    /// Whether the pair that was taken last is the code 0 that ends what is read. In the extended
    /// reading the end of the section ends all that is in it, and is pushed back.
    bool IsAtEnd(std::string_view end);
};

/// Whether a code 0 of that value stands between sections: no entity.
[[nodiscard]] bool IsDXFSectionMark(std::string_view value);

} // namespace ZEP
