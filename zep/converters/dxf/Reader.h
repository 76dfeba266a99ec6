#pragma once

#include <zep/converters/TextureFolder.h>
#include <zep/converters/dxf/Extended.h>

#include <map>
#include <memory>

namespace ZEP {

/// Reads the sections of a drawing: the header's extents, the layers, the entities. Sections come
/// in any order. Of several of one kind the first counts, in the extended reading all.
class TDXFReader final : private TDXFOtherDrawings {
public:
    /// \param outer  reads a drawing that shows this one
    explicit TDXFReader(TDXFDrawing& drawing, const TDXFReader* outer = nullptr);
    ~TDXFReader();
    Q_DISABLE_COPY_MOVE(TDXFReader)

    void Read();

private:
    using TReadSection = void (TDXFReader::*)();
    struct TOther;

    void ReadTables();
    TDXFOtherDrawing Find(const TDXFBlock& block, qint64 line) override;
    void Open(const TDXFBlock& block, TOther& other);
    [[nodiscard]] bool IsWithin(const QString& fileName) const;
    void TakeResultsOfOthers();

    void ReadSections(std::string_view name, TReadSection read);
    void read_header();
    void read_tables();
    void read_layer_information();
    void ReadLayer();
    void read_blocks();
    void read_objects();
    void read_entity_section();

    TDXFDrawing& m_drawing;
    TDXFTags& m_tags;
    const TDXFReader* m_outer;
    std::optional<TDXFExtendedReader> m_extended;
    TTextureFolder m_folder;
    std::map<const TDXFBlock*, std::unique_ptr<TOther>> m_others;
};

} // namespace ZEP
