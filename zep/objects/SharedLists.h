#pragma once

#include <zep/Export.h>
#include <zep/gl/DisplayList.h>
#include <zep/scene/DrawRun.h>

#include <array>
#include <memory>
#include <typeinfo>

namespace ZEP {

/// Display lists that all solids of one class and of equal settings hold together: a million equal
/// spheres hold one. A list is made when it is first drawn; all go with the last that holds them.
class ZEP_CORE_EXPORT TSharedLists {
public:
    /// What the drawing depends on: counts of cells, radii, parts.
    using TSettings = std::array<double, 6>;

    /// Draws what `send` sends.
    /// \param type  of the solid: what a host derives shares with its own kind alone
    template <class Send>
    void Draw(const std::type_info& type, const TSettings& settings, bool draft, Send&& send) {
        if (!m_look || m_look->Settings != settings) m_look = Look(type, settings);
        TDisplayList& list = draft ? m_look->Draft : m_look->Full;
        if (!glIsList(list.Name())) list.Reset(); // it went with its context
        list.Draw(send);
    }
    /// As `Draw` in a row of others (see `TZEPDrawRun`); a solid alone sends its calls each time.
    template <class Send>
    void DrawInRow(const TZEPDrawRun& run, const std::type_info& type, const TSettings& settings,
                   bool draft, Send&& send) {
        if (!run.Waits()) return send();
        Draw(type, settings, draft, send);
    }
    /// The settings have changed: lists that nobody else holds go at once.
    void Reset() { m_look.reset(); }

private:
    struct TLook {
        explicit TLook(const TSettings& settings) : Settings(settings) {}

        TSettings Settings;
        TDisplayList Full, Draft;
    };
    static std::shared_ptr<TLook> Look(const std::type_info& type, const TSettings& settings);

    std::shared_ptr<TLook> m_look;
};

} // namespace ZEP
