#include <zep/view/MousePresets.h>

#include <zep/view/PanelControl.h>

#include <vector>

namespace ZEP {

namespace {

struct TBinding {
    TMouseButton Button;
    TShiftState Keys;
    TZEPMouseMode Mode;
};

struct TPresetTable {
    bool Extended;
    TZEPMouseMode Left, Right, Middle;
    std::vector<TBinding> WithKeys;
};

TPresetTable TableOf(TZEPMousePreset preset) {
    switch (preset) {
    case TZEPMousePreset::Cad:
        return {true,
                mmOrbit,
                mmTruck,
                mmTruck,
                {{mbLeft, ssCtrl, mmSelect},
                 {mbMiddle, ssShift, mmOrbit},
                 {mbMiddle, ssCtrl, mmZoomWindow}}};
    case TZEPMousePreset::Modeller:
        return {true,
                mmSelect,
                mmPan,
                mmOrbit,
                {{mbMiddle, ssShift, mmTruck}, {mbMiddle, ssCtrl, mmDolly}}};
    case TZEPMousePreset::Plain:
        break;
    }
    return {false, mmOrbit, mmTruck, mmDolly, {}};
}

} // namespace

void SetMousePreset(TZEPPanelControl& control, TZEPMousePreset preset) {
    const TPresetTable table = TableOf(preset);
    for (const TMouseButton button : {mbLeft, mbRight, mbMiddle})
        for (TShiftState::Int keys = 1; keys <= (ssShift | ssAlt | ssCtrl); ++keys)
            control.SetMode(button, TShiftState::fromInt(keys), {});
    control.SetExtended(table.Extended);
    control.SetMouseLeft(table.Left);
    control.SetMouseRight(table.Right);
    control.SetMouseMiddle(table.Middle);
    control.SetMouseWheel(mmDolly);
    for (const auto& [button, keys, mode] : table.WithKeys) control.SetMode(button, keys, mode);
    control.SetLock2D(false);
    control.SetNextDrag({});
}

} // namespace ZEP
