#include <zep/converters/dxf/Sheets.h>

#include <zep/converters/Placing.h>
#include <zep/converters/dxf/Builder.h>
#include <zep/converters/dxf/Curves.h>
#include <zep/converters/dxf/Names.h>
#include <zep/objects/Circle.h>
#include <zep/objects/CirclePoints.h>
#include <zep/objects/Polyline.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/Vertex3.h>
#include <zep/scene/XForm.h>
#include <zep/sheets/Layout.h>
#include <zep/sheets/Viewport.h>

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace ZEP {

namespace {

constexpr std::string_view ModelBlock = "*model_space";
constexpr std::string_view ActiveBlock = "*paper_space";

/// \name What is counted of viewports
/// @{
constexpr std::string_view NoScale = "VIEWPORT without a usable scale";
constexpr std::string_view IsDeep = "VIEWPORT in perspective or cut in depth";
constexpr std::string_view NoOutline = "VIEWPORT with an outline not drawn";
constexpr std::string_view OwnLooks = "VIEWPORT with layer colours of its own";
constexpr std::string_view LineTypeScale = "VIEWPORT with line types to its scale";
/// @}

constexpr int ClosedCircle = 72; // corners
constexpr std::size_t MostCorners = 5000;
constexpr double Millimetre = 1 / 25.4; // inches

/// The one that an entity belongs to: other handles are of what has to do with it.
quint64 OwnerOf(const TDXFRecord& record) {
    bool isInGroup = false;
    for (const TDXFRecord::TTag& tag : record.Tags()) {
        if (tag.Code == 100) return 0;
        if (tag.Code == 102) isInGroup = !tag.Value.empty() && tag.Value.front() == '{';
        if (tag.Code == 330 && !isInGroup) return DXFHandle(tag.Value);
    }
    return 0;
}

bool IsNear(double a, double b) {
    return std::abs(a - b) <= 0.01 * std::abs(b);
}

/// In the frame that the object stands in; empty for one that encloses nothing.
std::vector<TGLArrayd3> CornersOf(TZEPObject& object) {
    std::vector<TGLArrayd3> corners;
    if (auto* polyline = qobject_cast<TZEPPolyline*>(&object)) {
        for (int i = 0; i < polyline->Vertexes()->Count(); ++i)
            corners.push_back((*polyline->Vertexes())[i].Data());
    } else if (qobject_cast<TZEPCircle*>(&object)) {
        for (int i = 0; i < ClosedCircle; ++i) {
            const double angle = 2 * std::numbers::pi * i / ClosedCircle;
            corners.push_back({std::cos(angle) / 2, std::sin(angle) / 2, 0});
        }
    }
    const TGLMatrixd4 matrix = object.GetMatrix();
    for (TGLArrayd3& corner : corners) Xformd(matrix, corner);
    return corners;
}

/// Where the middle of what is seen is in the model.
TGLArrayd3 MiddleOf(const TDXFWindow& window, const TGLMatrixd4& toWindow, double scale) {
    TGLArrayd3 middle = window.Target;
    for (std::size_t i = 0; i < 3; ++i)
        middle[i] +=
            (window.Middle[0] * toWindow[i][0] + window.Middle[1] * toWindow[i][1]) / scale;
    return middle;
}

} // namespace

// --- what tells of them ------------------------------------------------------------------------

void TDXFSheets::AddLayer(const TDXFRecord& record, TZEPObject* layer) {
    if (const quint64 handle = DXFHandle(record.Text(5))) m_layers.try_emplace(handle, layer);
}

void TDXFSheets::AddOwnLook(qint64 line) {
    m_drawing.Report.Add(OwnLooks, TDXFReport::TReason::NotDrawn, line);
}

/// What stands more than once has its last value in the part of the layout itself.
void TDXFSheets::AddLayout(const TDXFRecord& record) {
    const quint64 block = DXFHandle(record.Text(330));
    const std::string_view name = m_drawing.Handles.NameOf(record.Text(330));
    const bool isModel =
        name.empty() ? record.Text(1) == "Model" : FoldedDXFName(name) == ModelBlock;
    if (isModel) return;
    if (m_sheets.size() >= MaxSheets)
        return m_drawing.Report.Add("LAYOUT", TDXFReport::TReason::TooMany, record.Line());
    const bool isTaken = std::ranges::any_of(
        m_sheets, [&](const auto& sheet) { return sheet->Block == block && block != 0; });
    auto& sheet = *m_sheets.emplace_back(std::make_unique<TSheet>());
    sheet.Name = m_drawing.Text.Decode(record.Text(1));
    sheet.Tab = record.Integer(71);
    sheet.Paper = PaperOf(record);
    sheet.ScalesLineTypes = record.Flag(70, 1);
    if (isTaken) return;
    sheet.Block = block;
    sheet.BlockName = name;
}

/// Margins and sizes are those of the sheet as it lies in the printer, in millimetres.
TDXFSheets::TPaper TDXFSheets::PaperOf(const TDXFRecord& layout) {
    const int turns = layout.Integer(73) & 3;
    const double unit = layout.Integer(72, 1) == 0 ? Millimetre : 1;
    const double ratio = layout.Number(143, 1) / layout.Number(142, 1);
    const double factor = unit * (std::isfinite(ratio) && ratio > 0 ? ratio : 1);
    const bool isTurned = turns % 2 != 0;
    const double width = factor * layout.Number(isTurned ? 45 : 44);
    const double height = factor * layout.Number(isTurned ? 44 : 45);
    if (!(width > 0 && height > 0)) return {};
    const TGLArrayd3 min = layout.Point(10);
    const TGLArrayd3 size = layout.Point(11) - min;
    if (IsNear(size[0], width) && IsNear(size[1], height)) return {min[0], min[1], width, height};
    const auto margin = [&](int side) { return factor * layout.Number(40 + (side + turns) % 4); };
    return {-margin(0), -margin(1), width, height};
}

void TDXFSheets::Make() {
    std::ranges::stable_sort(m_sheets, {}, [](const auto& sheet) { return sheet->Tab; });
    for (const auto& sheet : m_sheets) Make(*sheet);
}

void TDXFSheets::Make(TSheet& sheet) {
    auto* layout = new TZEPLayout(&m_drawing.Root);
    layout->SetIdent(sheet.Name);
    layout->SetVisible(false);
    layout->SetPaperLeft(sheet.Paper.Left);
    layout->SetPaperBottom(sheet.Paper.Bottom);
    layout->SetPaperWidth(sheet.Paper.Width);
    layout->SetPaperHeight(sheet.Paper.Height);
    sheet.Object = Place(layout, &m_drawing.Root, m_drawing.Root);
    sheet.Scope = std::make_unique<TDXFScope>(m_drawing, sheet.Object);
}

// --- entities ----------------------------------------------------------------------------------

TDXFScope& TDXFSheets::ScopeOf(const TDXFRecord& record) {
    if (const quint64 owner = OwnerOf(record))
        for (const auto& sheet : m_sheets)
            if (sheet->Block == owner) return *sheet->Scope;
    return *Active().Scope;
}

/// The sheet whose entities stand among those of the model.
TDXFSheets::TSheet& TDXFSheets::Active() {
    if (m_active) return *m_active;
    if (m_sheets.empty()) {
        m_sheets.push_back(std::make_unique<TSheet>(TSheet{.Name = QStringLiteral("Layout1")}));
        Make(*m_sheets.front());
    }
    const auto found = std::ranges::find_if(
        m_sheets, [](const auto& sheet) { return FoldedDXFName(sheet->BlockName) == ActiveBlock; });
    m_active = found == m_sheets.end() ? m_sheets.front().get() : found->get();
    return *m_active;
}

TDXFSheets::TSheet& TDXFSheets::SheetOf(const TDXFScope& scope) {
    for (const auto& sheet : m_sheets)
        if (sheet->Scope.get() == &scope) return *sheet;
    return Active();
}

QString TDXFSheets::LeftOutOf(const TDXFWindow& window) const {
    QStringList idents;
    for (const quint64 handle : window.FrozenHandles)
        if (const auto found = m_layers.find(handle); found != m_layers.end() && found->second)
            idents << found->second->Ident();
    for (const std::string_view name : window.FrozenNames) idents << m_drawing.Text.Decode(name);
    return idents.join(QLatin1Char('\n'));
}

// Drawings of which another sheet is shown may not say which viewport is the sheet itself: it is
// the first one then.
void TDXFSheets::AddViewport(TDXFBuilder& builder, const TDXFRecord& record,
                             const TDXFWindow& window) {
    TSheet& sheet = SheetOf(builder.Scope);
    const bool isFirst = !std::exchange(sheet.HasOwnViewport, true);
    if (window.Id == 1 || (window.Id < 1 && isFirst)) return;
    const TGLArrayd3 half{window.Width / 2, window.Height / 2, 0};
    const TGLArrayd3 low = window.Center - half, high = window.Center + half;
    if (window.Outline == 0 && window.Width > 0 && window.Height > 0)
        builder.AddChain(record, {{low, {high[0], low[1], 0}, high, {low[0], high[1], 0}}, true});
    if (window.IsOff || !sheet.Object) return;
    if (sheet.Viewports.size() >= MaxViewports)
        return builder.Pass(record, TDXFReport::TReason::TooMany);
    auto* viewport = new TZEPViewport(&m_drawing.Root);
    viewport->SetWidth(window.Width);
    viewport->SetHeight(window.Height);
    viewport->SetViewHeight(window.ViewHeight);
    viewport->SetTwist(window.Twist);
    viewport->Direction()->SetData(window.Direction);
    const double scale = viewport->Scale();
    if (scale == 0) {
        delete viewport;
        return m_drawing.Report.Add(NoScale, TDXFReport::TReason::NotDrawn, record.Line());
    }
    viewport->Target()->SetData(MiddleOf(window, viewport->ModelToWindow(), scale));
    viewport->SetLeftOut(LeftOutOf(window));
    viewport->XForm()->Translate()->SetData(window.Center);
    if (record.Integer(60) != 0) viewport->SetVisible(false);
    if (window.IsDeep) m_drawing.Report.Add(IsDeep, TDXFReport::TReason::NotDrawn, record.Line());
    sheet.Viewports.push_back({viewport, window.Outline, record.Line()});
    Place(viewport, sheet.Object, m_drawing.Root);
}

void TDXFSheets::AddOutline(quint64 handle, TZEPObject& object) {
    const bool isLine = qobject_cast<TZEPPolyline*>(&object) || qobject_cast<TZEPCircle*>(&object);
    if (handle != 0 && isLine) m_outlines.try_emplace(handle, &object);
}

// --- the end -----------------------------------------------------------------------------------

void TDXFSheets::Finish() {
    for (const auto& sheet : m_sheets) {
        for (const TViewport& viewport : sheet->Viewports)
            if (viewport.Outline != 0 && viewport.Object) SetOutline(viewport);
        if (sheet->ScalesLineTypes && m_drawing.LineTypes.AreUsed()) CountLineTypes(*sheet);
    }
}

void TDXFSheets::SetOutline(const TViewport& viewport) {
    const auto found = m_outlines.find(viewport.Outline);
    std::vector<TGLArrayd3> corners;
    if (found != m_outlines.end() && found->second) corners = CornersOf(*found->second);
    if (corners.size() < 3 || corners.size() > MostCorners)
        return m_drawing.Report.Add(NoOutline, TDXFReport::TReason::NotDrawn, viewport.Line);
    const TGLArrayd3 place = viewport.Object->XForm()->Translate()->Data();
    viewport.Object->Outline()->AddEach(corners.size(), [&](TZEPVertex3CI& corner, std::size_t i) {
        corner.SetPointQuietly({corners[i][0] - place[0], corners[i][1] - place[1], 0});
    });
}

/// Such drawings want dashes as long in a viewport as they are on the sheet.
void TDXFSheets::CountLineTypes(const TSheet& sheet) {
    for (const TViewport& viewport : sheet.Viewports)
        if (viewport.Object && !IsNear(viewport.Object->Scale(), 1))
            m_drawing.Report.Add(LineTypeScale, TDXFReport::TReason::NotDrawn, viewport.Line);
}

} // namespace ZEP
