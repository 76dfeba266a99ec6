#include <zep/objects/HeightField.h>

#include <zep/appearance/materials/Material.h>
#include <zep/objects/Grid.h>
#include <zep/scene/Frame.h>
#include <zep/scene/Vectors.h>
#include <zep/scene/ViewVolume.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP {

namespace {

const TRegisterObject<TZEPHeightField> RegisteredHeightField;

/// Cells of a block, each way, that is passed over where it is not seen.
constexpr int BlockCells = 16;

struct TRange {
    double Min, Max;
};

TRange RangeOf(double min, double max) {
    if (std::isfinite(max - min) && min < max) return {min, max};
    return {-0.5, 0.5};
}

} // namespace

// --- settings ----------------------------------------------------------------------------------

void TZEPHeightField::SetSmooth(bool smooth) {
    if (smooth == Smooth()) return;
    TZEPReflexedObject::SetSmooth(smooth);
    Refresh();
}

void TZEPHeightField::SetOnHeight(THeight height) {
    m_height = std::move(height);
    Refresh();
}

void TZEPHeightField::SetOnNormal(TNormal normal) {
    m_normal = std::move(normal);
    Refresh();
}

void TZEPHeightField::SetOnColor(TColorOf color) {
    m_color = std::move(color);
    Refresh();
}

void TZEPHeightField::Refresh() {
    m_samples = {};
    m_calls.Reset();
    m_lists.Reset();
    Invalidate(this);
}

// --- samples -----------------------------------------------------------------------------------

double TZEPHeightField::Place(std::size_t axis, int i) const {
    const auto [min, max] = RangeOf(m_min[axis], m_max[axis]);
    return i == m_slices[axis] ? max : min + (max - min) * i / m_slices[axis];
}

std::size_t TZEPHeightField::Number(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_slices[0] + 1) +
           static_cast<std::size_t>(column);
}

TZEPHeightField::TSamples TZEPHeightField::Asked() const {
    TSamples samples;
    for (int row = 0; row <= m_slices[1]; ++row)
        for (int column = 0; column <= m_slices[0]; ++column) {
            const double x = Place(0, column);
            const double y = Place(1, row);
            const double height = m_height ? m_height(x, y) : 0;
            samples.Heights.push_back(height);
            if (m_colorVertexes && m_color) samples.Colors.push_back(m_color(height));
            if (!Smooth() || !m_normal) continue;
            samples.Normals.push_back(ToFloats(m_normal(x, y)));
        }
    return samples;
}

const TZEPHeightField::TSamples& TZEPHeightField::Samples() const {
    if (m_samples.Known) return m_samples;
    const bool done = m_calls.Run([this] { m_samples = Asked(); });
    m_samples.Known = true;
    if (!done) Q_EMIT Failed(const_cast<TZEPHeightField*>(this), Error());
    return m_samples;
}

/// From the slopes to the neighbours on both sides, where these are finite.
TGLArrayd3 TZEPHeightField::SlopeNormal(int column, int row) const {
    const auto slope = [this](std::size_t axis, int low, int high, std::size_t from,
                              std::size_t to) {
        const double rise = m_samples.Heights[to] - m_samples.Heights[from];
        return std::isfinite(rise) ? rise / (Place(axis, high) - Place(axis, low)) : 0;
    };
    const int left = std::max(column - 1, 0);
    const int right = std::min(column + 1, m_slices[0]);
    const int below = std::max(row - 1, 0);
    const int above = std::min(row + 1, m_slices[1]);
    TGLArrayd3 normal{-slope(0, left, right, Number(left, row), Number(right, row)),
                      -slope(1, below, above, Number(column, below), Number(column, above)), 1};
    Normalized(normal);
    return normal;
}

// --- bounds and drawing ------------------------------------------------------------------------

void TZEPHeightField::GetSize(TGLArrayd3& min, TGLArrayd3& max) const {
    min = {Place(0, 0), Place(1, 0), 0};
    max = {Place(0, m_slices[0]), Place(1, m_slices[1]), 0};
    bool found = false;
    for (const double height : Samples().Heights) {
        if (!std::isfinite(height)) continue;
        min[2] = found ? std::min(min[2], height) : height;
        max[2] = found ? std::max(max[2], height) : height;
        found = true;
    }
}

std::array<TGLArrayd3, 3> TZEPHeightField::MirrorPoints() const {
    TGLArrayd3 min;
    TGLArrayd3 max;
    GetSize(min, max);
    const double height = (min[2] + max[2]) / 2;
    return {{{min[0], min[1], height}, {max[0], min[1], height}, {max[0], max[1], height}}};
}

// It has but one side, which is seen from both.
void TZEPHeightField::DrawSpecific(GLenum face, bool draft) {
    if (face == GL_BACK || Samples().Heights.empty()) return;
    const float alpha = Reflection() > 0 ? static_cast<float>(1 - Reflection())
                                         : 1 - DrawnMaterial().FrontFace()->Transparency();
    if (Change(m_listAlpha, alpha)) m_lists.Reset();
    if (const auto volume = DrawFrame().IsNotRendering ? TZEPViewVolume::OfSight() : std::nullopt)
        return SendSeen(draft, *volume);
    m_lists.Draw(draft, [&] {
        const bool colored = !m_samples.Colors.empty();
        if (!colored) return Send(draft, alpha);
        glPushAttrib(GL_CURRENT_BIT | GL_LIGHTING_BIT);
        glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
        glEnable(GL_COLOR_MATERIAL);
        Send(draft, alpha);
        glPopAttrib();
    });
}

void TZEPHeightField::SendSeen(bool draft, const TZEPViewVolume& volume) const {
    for (int row = 0; row < m_slices[1]; row += BlockCells)
        for (int column = 0; column < m_slices[0]; column += BlockCells)
            SendBlock(column, row, draft, volume);
}

void TZEPHeightField::SendBlock(int column, int row, bool draft,
                                const TZEPViewVolume& volume) const {
    const int columns = std::min(BlockCells, m_slices[0] - column);
    const int rows = std::min(BlockCells, m_slices[1] - row);
    const auto at = [&](int i, int j) {
        return TGLArrayd3{Place(0, column + i), Place(1, row + j),
                          m_samples.Heights[Number(column + i, row + j)]};
    };
    TZEPBlockBox box;
    for (int j = 0; j <= rows; ++j)
        for (int i = 0; i <= columns; ++i) box.Add(at(i, j));
    if (volume.Shows(box.Min, box.Max) == TZEPSeen::Nothing) return;
    SendGrid(columns, rows, {.Draft = draft},
             [&](int i, int j) { return TGridPoint{.Point = at(i, j)}; });
}

void TZEPHeightField::Send(bool draft, float alpha) const {
    const TSamples& samples = m_samples;
    const TGridStyle style{
        .Draft = draft, .Smooth = Smooth(), .Textured = !draft, .Colored = !samples.Colors.empty()};
    SendGrid(m_slices[0], m_slices[1], style, [&](int column, int row) {
        const std::size_t i = Number(column, row);
        TGridPoint point;
        point.Point = {Place(0, column), Place(1, row), samples.Heights[i]};
        point.S = static_cast<double>(column) / m_slices[0];
        point.T = static_cast<double>(row) / m_slices[1];
        if (style.Colored) point.Color = ToGLColor(samples.Colors[i], alpha);
        if (!style.Smooth) return point;
        point.Normal = SlopeNormal(column, row);
        if (!samples.Normals.empty())
            std::copy(samples.Normals[i].begin(), samples.Normals[i].end(), point.Normal.begin());
        return point;
    });
}

} // namespace ZEP
