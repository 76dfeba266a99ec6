#include <zep/converters/dxf/SheetWindow.h>

#include <charconv>

namespace ZEP {

namespace {

constexpr int DeepModes = 1 | 2 | 4;
constexpr int OffFlag = 0x20000;

/// What stands under the name MVIEW among what applications add, by kinds in order.
struct TOldView {
    std::vector<TGLArrayd3> Points{};
    std::vector<double> Numbers{};
    std::vector<int> Integers{};

    [[nodiscard]] double Number(std::size_t i) const { return i < Numbers.size() ? Numbers[i] : 0; }
};

TOldView ReadOldView(TDXFTags& tags, const TDXFPosition& begin, TDXFWindow& window) {
    const TDXFPosition back = tags.Position();
    tags.Goto(begin);
    TOldView view;
    bool isView = false;
    for (int code = 0; (code = tags.NextGroupCode()) > 0;) {
        if (code == 1000) isView = tags.ValStr() == "MVIEW";
        if (!isView) continue;
        if (code == 1003) window.FrozenNames.push_back(tags.ValStr());
        if (code == 1010) view.Points.push_back({tags.ValDbl(), 0, 0});
        if (code == 1020 && !view.Points.empty()) view.Points.back()[1] = tags.ValDbl();
        if (code == 1030 && !view.Points.empty()) view.Points.back()[2] = tags.ValDbl();
        if (code == 1040) view.Numbers.push_back(tags.ValDbl());
        if (code == 1070) view.Integers.push_back(tags.ValInt());
    }
    tags.Goto(back);
    return view;
}

// Target and direction; twist, height, middle; the version, and the mode.
void TakeOldView(const TOldView& view, TDXFWindow& window) {
    if (!view.Points.empty()) window.Target = view.Points[0];
    if (view.Points.size() > 1) window.Direction = view.Points[1];
    window.Twist = view.Number(0);
    window.ViewHeight = view.Number(1);
    window.Middle = {view.Number(2), view.Number(3), 0};
    window.IsDeep = view.Integers.size() > 1 && (view.Integers[1] & DeepModes) != 0;
}

} // namespace

TDXFWindow TDXFWindow::Of(const TDXFRecord& record, TDXFTags& tags, const TDXFPosition& begin) {
    TDXFWindow window{.Center = record.Point(10),
                      .Width = record.Number(40),
                      .Height = record.Number(41),
                      .Id = record.Integer(69),
                      .IsOff = record.Integer(68, 1) == 0 || record.Flag(90, OffFlag),
                      .IsDeep = record.Flag(90, DeepModes),
                      .Target = record.Point(17),
                      .Direction = record.Point(16),
                      .Middle = record.Point(12),
                      .ViewHeight = record.Number(45),
                      .Twist = record.Number(51),
                      .Outline = DXFHandle(record.Text(340))};
    window.Center[2] = window.Middle[2] = 0;
    for (const TDXFRecord::TTag& tag : record.Tags())
        if (tag.Code == 331 || tag.Code == 341)
            if (const quint64 handle = DXFHandle(tag.Value)) window.FrozenHandles.push_back(handle);
    if (!record.Has(45)) TakeOldView(ReadOldView(tags, begin, window), window);
    return window;
}

} // namespace ZEP
