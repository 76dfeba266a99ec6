#pragma once

#include <QString>

#include <exception>

namespace ZEP {

/// Runs a host's callbacks. One that throws is not called again until `Reset`, so that a faulty
/// one neither ends the frame of the others nor reports itself with each frame.
class THostCall {
public:
    /// Whether `call` came to its end.
    template <class Call>
    bool Run(Call&& call) {
        if (!m_error.isEmpty()) return false;
        try {
            call();
            return true;
        } catch (const std::exception& error) {
            m_error = QString::fromUtf8(error.what());
        } catch (...) {
        }
        if (m_error.isEmpty()) m_error = QStringLiteral("A callback failed");
        return false;
    }
    void Reset() { m_error.clear(); }
    /// What the callback that failed said; empty while all is well.
    [[nodiscard]] const QString& Error() const { return m_error; }

private:
    QString m_error;
};

} // namespace ZEP
