#include "tests/view/NativeWindow.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace ZEP {

namespace {

Display* Connection() {
    static Display* const display = XOpenDisplay(nullptr);
    return display;
}

std::vector<Window> Children(Window window) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    XQueryTree(Connection(), window, &root, &parent, &children, &count);
    std::vector<Window> result(children, children + count);
    if (children) XFree(children);
    return result;
}

int CountBelow(Window window) {
    int count = 0;
    for (const Window child : Children(window)) count += 1 + CountBelow(child);
    return count;
}

} // namespace

bool NativeWindow::HasDisplay() {
    return Connection() != nullptr;
}

NativeWindow::NativeWindow(int width, int height) {
    XSetWindowAttributes attributes = {};
    attributes.override_redirect = True;
    attributes.background_pixel = 0x0000FF;
    m_window = XCreateWindow(Connection(), DefaultRootWindow(Connection()), 0, 0,
                             static_cast<unsigned int>(width), static_cast<unsigned int>(height), 0,
                             CopyFromParent, InputOutput, CopyFromParent,
                             CWOverrideRedirect | CWBackPixel, &attributes);
    XMapRaised(Connection(), m_window);
    XSync(Connection(), False);
}

void NativeWindow::Destroy() {
    if (m_window) XDestroyWindow(Connection(), m_window);
    m_window = 0;
    XSync(Connection(), False);
}

int NativeWindow::ChildCount(TWindowHandle window) {
    return static_cast<int>(Children(window).size());
}

int NativeWindow::WindowCount() {
    return CountBelow(DefaultRootWindow(Connection()));
}

void NativeWindow::Origin(TWindowHandle window, int& x, int& y) {
    Window child = 0;
    XTranslateCoordinates(Connection(), window, DefaultRootWindow(Connection()), 0, 0, &x, &y,
                          &child);
}

unsigned int NativeWindow::ScreenPixel(TWindowHandle window, int x, int y) {
    int left = 0;
    int top = 0;
    Origin(window, left, top);
    XImage* image = XGetImage(Connection(), DefaultRootWindow(Connection()), left + x, top + y, 1,
                              1, AllPlanes, ZPixmap);
    if (!image) return 0;
    const auto pixel = static_cast<unsigned int>(XGetPixel(image, 0, 0));
    XDestroyImage(image);
    return pixel & 0xFFFFFF;
}

} // namespace ZEP
