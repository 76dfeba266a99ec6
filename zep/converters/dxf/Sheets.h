#pragma once

#include <zep/converters/dxf/Scope.h>
#include <zep/converters/dxf/SheetWindow.h>

#include <QPointer>
#include <QString>

#include <memory>
#include <unordered_map>
#include <vector>

namespace ZEP {

class TDXFBuilder;
class TZEPLayout;
class TZEPViewport;

/// The sheets of a drawing, its paper space: a `TZEPLayout` below the root for each layout that the
/// drawing declares, in the order of their tabs and invisible. What is drawn on one stands in it by
/// layers. Drawings that declare none have one sheet where they have entities in paper space.
class TDXFSheets {
public:
    static constexpr std::size_t MaxSheets = 1000;
    /// That show the model, of one sheet: each costs a frame what the model costs.
    static constexpr int MaxViewports = 100;

    explicit TDXFSheets(TDXFDrawing& drawing) : m_drawing(drawing) {}

    /// \name What tells of them, before entities are read
    /// @{
    /// A layer with the record that declares it.
    void AddLayer(const TDXFRecord& record, TZEPObject* layer);
    /// An object LAYOUT.
    void AddLayout(const TDXFRecord& record);
    /// A layer looks different in viewports, which is not shown.
    void AddOwnLook(qint64 line);
    /// @}
    /// Makes the layouts.
    void Make();

    /// Where an entity of paper space in the section of entities goes.
    [[nodiscard]] TDXFScope& ScopeOf(const TDXFRecord& record);
    /// Calls `read` with the name of the block and the scope of each sheet that has one.
    template <class Read>
    void ForEachBlock(Read&& read) {
        for (const auto& sheet : m_sheets)
            if (!sheet->BlockName.empty()) read(sheet->BlockName, *sheet->Scope);
    }
    /// The window that an entity VIEWPORT in the scope of a sheet tells of.
    void AddViewport(TDXFBuilder& builder, const TDXFRecord& record, const TDXFWindow& window);
    /// What the entity showed may be the outline of a viewport.
    void AddOutline(quint64 handle, TZEPObject& object);
    /// Cuts viewports off at their outlines; all has been read.
    void Finish();

private:
    struct TPaper {
        double Left = 0, Bottom = 0, Width = 0, Height = 0;
    };
    struct TViewport {
        QPointer<TZEPViewport> Object;
        quint64 Outline; ///< 0: its rectangle
        qint64 Line;
    };
    struct TSheet {
        QString Name{};
        int Tab = 0;
        quint64 Block = 0;
        std::string_view BlockName{};
        TPaper Paper{};
        bool ScalesLineTypes = false; ///< they are as long in each viewport
        QPointer<TZEPLayout> Object{};
        std::unique_ptr<TDXFScope> Scope{};
        std::vector<TViewport> Viewports{};
        bool HasOwnViewport = false; ///< that is the sheet itself
    };

    [[nodiscard]] static TPaper PaperOf(const TDXFRecord& layout);
    void Make(TSheet& sheet);
    TSheet& Active();
    TSheet& SheetOf(const TDXFScope& scope);
    [[nodiscard]] QString LeftOutOf(const TDXFWindow& window) const;
    void SetOutline(const TViewport& viewport);
    void CountLineTypes(const TSheet& sheet);

    TDXFDrawing& m_drawing;
    std::vector<std::unique_ptr<TSheet>> m_sheets; ///< in the order of their tabs, once made
    TSheet* m_active = nullptr;
    std::unordered_map<quint64, QPointer<TZEPObject>> m_layers;
    std::unordered_map<quint64, QPointer<TZEPObject>> m_outlines;
};

} // namespace ZEP
