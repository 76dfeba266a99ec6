#pragma once

#include <zep/converters/rs274d/ToolPlayback.h>

#include <QComboBox>

namespace ZEP {

/// The speed of a playback: real time times a factor, where the program tells times, or moves a
/// second.
class TPlaySpeed : public QComboBox {
    Q_OBJECT
public:
    /// \param playback  gets what is chosen
    explicit TPlaySpeed(TToolPlayback& playback);

    /// Offers what the playback can do now: without times, moves a second alone.
    void Offer();

private:
    void Apply();

    TToolPlayback& m_playback;
    bool m_offersTimes = true;
};

/// Why a playback has no times.
[[nodiscard]] QString NoTimesText();

} // namespace ZEP
