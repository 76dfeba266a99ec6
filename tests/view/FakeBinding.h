#pragma once

#include <zep/framework/DebugLog.h>
#include <zep/view/ContextBinding.h>

#include <QStringList>

#include <functional>
#include <map>
#include <set>
#include <string>

namespace ZEP {

/// Formats as the cases of the search need them: fit for everything unless said otherwise.
inline TPixelFormat FakeFormat(int colorBits, int depthBits, std::uint32_t extra = 0) {
    TPixelFormat format;
    format.Flags = pfDrawToWindow | pfSupportOpenGL | extra;
    format.ColorBits = colorBits;
    format.DepthBits = depthBits;
    format.AlphaBits = 8;
    format.StencilBits = 8;
    return format;
}

/// A windowing system made of a list of formats. It remembers what it was asked.
class FakeBinding : public TContextBinding {
public:
    /// What every binding of one test shares, since the context owns its binding.
    struct System {
        std::vector<TPixelFormat> Formats; ///< format 1 is the first
        std::set<int> Undescribed;
        std::set<int> Refused;
        bool GrantsContext = true;
        bool GrantsCurrent = true;
        std::function<int(const TPixelFormat&)> Choose = [](const TPixelFormat&) { return 0; };

        std::map<std::string, TEntryPoint> EntryPoints;

        std::vector<std::string> Calls; ///< without describing
        std::vector<TPixelFormat> Requests;
        std::vector<TPaletteEntry> Palette;
        TContextHandle LastContext = 0;
        TContextHandle Current = 0;
        std::set<TContextHandle> Alive;
    };

    explicit FakeBinding(System& system) : m_system(system) {}

    void SetWindow(TWindowHandle window) override {
        m_window = window;
        m_format = 0;
        Call("window", static_cast<int>(window));
    }
    [[nodiscard]] TWindowHandle DrawWindow() const override { return m_format ? m_window : 0; }
    void SetExposeHandler(std::function<void()>) override {}
    void Resize(int, int) override {}

    [[nodiscard]] int FormatCount() override { return static_cast<int>(m_system.Formats.size()); }
    bool DescribeFormat(int index, TPixelFormat& format) override {
        if (index < 1 || index > FormatCount() || m_system.Undescribed.count(index)) return false;
        format = m_system.Formats[static_cast<std::size_t>(index) - 1];
        return true;
    }
    [[nodiscard]] int ChooseFormat(const TPixelFormat& request) override {
        m_system.Requests.push_back(request);
        return m_system.Choose(request);
    }
    bool SetFormat(int index) override {
        Call("set", index);
        const bool granted = index >= 1 && index <= FormatCount() && !m_system.Refused.count(index);
        if (granted) m_format = index;
        return granted;
    }
    TPaletteHandle RealizePalette(const std::vector<TPaletteEntry>& palette) override {
        m_system.Palette = palette;
        Call("palette", static_cast<int>(palette.size()));
        return 77;
    }
    void DeletePalette(TPaletteHandle palette) override {
        Call("delete palette", static_cast<int>(palette));
    }

    [[nodiscard]] TContextHandle CreateContext() override {
        if (!m_format || !m_system.GrantsContext) return 0;
        m_system.Alive.insert(++m_system.LastContext);
        return m_system.LastContext;
    }
    bool MakeCurrent(TContextHandle context) override {
        Call("current", static_cast<int>(context));
        m_system.Current = m_system.GrantsCurrent ? context : 0;
        return m_system.GrantsCurrent;
    }
    [[nodiscard]] bool IsCurrent(TContextHandle context) const override {
        return m_system.Current == context;
    }
    void DeleteContext(TContextHandle context) override { m_system.Alive.erase(context); }
    [[nodiscard]] TEntryPoint EntryPoint(const char* name) override {
        const auto found = m_system.EntryPoints.find(name);
        return found == m_system.EntryPoints.end() ? nullptr : found->second;
    }
    bool BeginPicture(TContextHandle, int, int) override { return false; }
    void EndPicture(TContextHandle) override {}
    void SwapBuffers() override {}

private:
    void Call(const char* name, int value) {
        m_system.Calls.push_back(std::string(name) + ' ' + std::to_string(value));
    }

    System& m_system;
    TWindowHandle m_window = 0;
    int m_format = 0;
};

/// Keeps the lines for developers while it lives.
class LogKeeper {
public:
    LogKeeper() {
        m_former = SetDebugLogHandler([this](const QString& line) { Lines.append(line); });
    }
    ~LogKeeper() { SetDebugLogHandler(m_former); }
    LogKeeper(const LogKeeper&) = delete;
    LogKeeper& operator=(const LogKeeper&) = delete;

    QStringList Lines;

private:
    TDebugLogHandler m_former;
};

} // namespace ZEP
