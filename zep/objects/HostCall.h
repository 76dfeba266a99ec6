#pragma once

#include <zep/framework/Watch.h>

#include <QString>

#include <exception>

namespace ZEP {

/// Runs a host's callbacks. One that throws is not called again until `Reset`, so that a faulty
/// one neither ends the frame of the others nor reports itself with each frame.
class THostCall {
public:
    THostCall() = default;
    ~THostCall() { TZEPWatch::Forget(this); }
    THostCall(const THostCall&) = delete;
    THostCall& operator=(const THostCall&) = delete;

    /// Whether `call`, which may free this, came to its end.
    template <class Call>
    bool Run(Call&& call) {
        if (!m_error.isEmpty()) return false;
        const TZEPWatch alive(this);
        QString error;
        try {
            call();
            return true;
        } catch (const std::exception& raised) {
            error = QString::fromUtf8(raised.what());
        } catch (...) {
        }
        if (alive) m_error = error.isEmpty() ? QStringLiteral("A callback failed") : error;
        return false;
    }
    void Reset() { m_error.clear(); }
    /// What the callback that failed said; empty while all is well.
    [[nodiscard]] const QString& Error() const { return m_error; }

private:
    QString m_error;
};

} // namespace ZEP
