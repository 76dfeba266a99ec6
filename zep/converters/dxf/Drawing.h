#pragma once

#include <zep/converters/ModelTextures.h>
#include <zep/converters/dxf/CodePage.h>
#include <zep/converters/dxf/EndlessLines.h>
#include <zep/converters/dxf/Handles.h>
#include <zep/converters/dxf/Layers.h>
#include <zep/converters/dxf/Limits.h>
#include <zep/converters/dxf/LineTypes.h>
#include <zep/converters/dxf/Objects.h>
#include <zep/converters/dxf/Report.h>
#include <zep/converters/dxf/TextStyles.h>
#include <zep/converters/dxf/Weights.h>
#include <zep/converters/dxf/annotation/DimensionStyle.h>
#include <zep/framework/FileText.h>

#include <deque>
#include <memory>

namespace ZEP {

/// A drawing while it is read: its text, what is made of it, and what is passed over.
class TDXFDrawing {
    /// What a drawing has in common with those in other files that it shows.
    struct TShared {
        TShared(qint64 bytes, qint64 freeBytes) : Budget(bytes, freeBytes), Limits(Budget) {}

        TReadBudget Budget;
        TDXFLimits Limits;
        std::deque<TFileText> Files; // reports tell kinds by views into them
    };
    std::shared_ptr<TShared> m_shared;

public:
    /// \param text  outlives this
    /// \param root  owner of what is made. The host may free it while it is asked for progress, if
    ///              it then cancels
    TDXFDrawing(std::string_view text, TZEPObject& root, const TDXFOptions& options)
        : TDXFDrawing(
              text, root, options,
              std::make_shared<TShared>(static_cast<qint64>(text.size()), options.FreeBytes)) {}
    /// One in another file, which `outer` shows: its text and what it may make are the other's.
    /// \param text     that `outer` keeps
    /// \param options  whose layers get names of their own
    TDXFDrawing(std::string_view text, TDXFDrawing& outer, const TDXFOptions& options)
        : TDXFDrawing(text, outer.Root, options, outer.m_shared) {}
    Q_DISABLE_COPY_MOVE(TDXFDrawing)

    TDXFTags Tags;
    TZEPObject& Root;
    const TDXFOptions Options;
    TDXFTextDecoder Text;
    TDXFLayers Layers;
    TDXFReport Report;
    TReadBudget& Budget;
    TDXFLimits& Limits;
    TDXFLineTypes LineTypes;
    TDXFWeights Weights;
    TDXFTextStyles TextStyles;
    TDXFDimensionStyles DimensionStyles;
    TDXFHandles Handles;
    TDXFEndlessLines EndlessLines;
    TDXFObjects Objects;
    TModelTextures Pictures;
    /// Where the header says that the drawing lies; z stays 0.
    TGLArrayd3 MinExtent{}, MaxExtent{};
    /// The point of it that lies where another drawing inserts it; z stays 0.
    TGLArrayd3 InsertionBase{};

    /// Whether the pair that was taken last is the code 0 that ends what is read. In the extended
    /// reading the end of the section ends all that is in it, and is pushed back.
    bool IsAtEnd(std::string_view end);
    /// Reads another file. Raises `Exception` where that cannot be.
    /// \return its text, which stays as long as any drawing that shares it; none where it is one
    /// file too many
    std::optional<std::string_view> ReadFile(const QString& fileName);

private:
    TDXFDrawing(std::string_view text, TZEPObject& root, const TDXFOptions& options,
                std::shared_ptr<TShared> shared)
        : m_shared(std::move(shared)), Tags(text, options.Extended), Root(root), Options(options),
          Layers(root, options, Text), Budget(m_shared->Budget), Limits(m_shared->Limits),
          Objects(Tags, Budget), Pictures(options.FileName, Budget) {}
};

} // namespace ZEP
