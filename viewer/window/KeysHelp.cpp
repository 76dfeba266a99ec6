#include "viewer/window/KeysHelp.h"

namespace ZEP {

namespace {

struct TEntry {
    const char* Keys;
    const char* Text;
};

constexpr TEntry Entries[] = {
    {"Left button", "click: select; drag: orbit, in a locked 2D view pan;<br>"
                    "with Shift: orbit; with Ctrl: select in a rectangle"},
    {"Middle button", "pan; with Shift: orbit; with Ctrl: zoom window"},
    {"Right button", "click: menu; drag: pan"},
    {"Wheel", "nearer, farther"},
    {"1 to 7", "isometric, top, front, right, left, back, bottom"},
    {"F, A", "fit selection, all"},
    {"Home", "back to the last fit"},
    {"X", "orthographic"},
    {"Ctrl+1 to Ctrl+9", "cameras in the file"},
    {"Ctrl+PgDown, Ctrl+PgUp", "next, previous sheet of a drawing"},
    {"S, O, P, L, R, D, E, V",
     "left button: select, orbit, pan, look, roll, dolly, zoom, perspective<br>"
     "with Shift: right button, with Alt+Shift: middle button"},
    {"M, N, U, C", "measure a distance, angle, radius, chain"},
    {"Shift+X, Shift+Y, Shift+Z", "section across x, y, z"},
    {"Z", "zoom window"},
    {"H, Shift+H, Ctrl+H", "hide selected, show only selected, show all"},
    {"Ctrl+Z", "undo hiding and showing"},
    {"Up, Down", "previous, next move of the program"},
    {"Ctrl+Up, Ctrl+Down", "previous, next tool change"},
    {"Ctrl+G", "go to a line of the program"},
    {"Space", "play"},
    {"F3", "contents of the files"},
    {"Ctrl+F", "find in the contents"},
    {"F4", "text of the program"},
    {"F6", "times, tools and shown moves of the program"},
    {"G", "grid and axes"},
    {"Ctrl+O", "open"},
    {"Ctrl+Shift+O", "add a file to those that are shown"},
    {"F5", "read again"},
    {"Ctrl+W", "close"},
    {"F11", "full screen"},
    {"Esc", "stop loading; deselect"},
    {"Ctrl+Shift+S", "save as a scene or a drawing"},
    {"Ctrl+S", "save a picture"},
    {"Ctrl+Shift+C", "copy the picture"},
    {"Ctrl+P", "print"},
    {"Ctrl+I", "information"},
    {"Ctrl+Q", "quit"},
};

} // namespace

QString KeysHelp() {
    QString text = QStringLiteral("<table cellspacing='6'>");
    for (const TEntry& entry : Entries)
        text += QStringLiteral("<tr><td>%1</td><td>%2</td></tr>")
                    .arg(QLatin1String(entry.Keys), QLatin1String(entry.Text));
    return text + QStringLiteral("</table>");
}

} // namespace ZEP
