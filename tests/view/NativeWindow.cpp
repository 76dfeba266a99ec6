#include "tests/view/NativeWindow.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace ZEP {

namespace {

Display* Connection() {
    static Display* const display = XOpenDisplay(nullptr);
    return display;
}

} // namespace

bool NativeWindow::HasDisplay() {
    return Connection() != nullptr;
}

NativeWindow::NativeWindow(int width, int height) {
    XSetWindowAttributes attributes = {};
    attributes.override_redirect = True;
    m_window =
        XCreateWindow(Connection(), DefaultRootWindow(Connection()), 0, 0,
                      static_cast<unsigned int>(width), static_cast<unsigned int>(height), 0,
                      CopyFromParent, InputOutput, CopyFromParent, CWOverrideRedirect, &attributes);
    XMapRaised(Connection(), m_window);
    XSync(Connection(), False);
}

void NativeWindow::Resize(int width, int height) {
    XResizeWindow(Connection(), m_window, static_cast<unsigned int>(width),
                  static_cast<unsigned int>(height));
    XSync(Connection(), False);
}

void NativeWindow::Destroy() {
    if (m_window) XDestroyWindow(Connection(), m_window);
    m_window = 0;
    XSync(Connection(), False);
}

int NativeWindow::ChildCount() const {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    XQueryTree(Connection(), m_window, &root, &parent, &children, &count);
    if (children) XFree(children);
    return static_cast<int>(count);
}

unsigned int NativeWindow::ScreenPixel(int x, int y) const {
    XWindowAttributes attributes;
    XGetWindowAttributes(Connection(), m_window, &attributes);
    XImage* image = XGetImage(Connection(), DefaultRootWindow(Connection()), attributes.x + x,
                              attributes.y + y, 1, 1, AllPlanes, ZPixmap);
    if (!image) return 0;
    const auto pixel = static_cast<unsigned int>(XGetPixel(image, 0, 0));
    XDestroyImage(image);
    return pixel & 0xFFFFFF;
}

} // namespace ZEP
