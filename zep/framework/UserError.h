#pragma once

#include <zep/framework/Exception.h>

namespace ZEP {

/// An error whose message has a form of its own, for hosts and their logs, and which has plain
/// words for those who use the program: what is wrong, and what to do about it where that is known.
class ZEP_CORE_EXPORT TUserError : public Exception {
public:
    /// \param text    the message, as of any exception
    /// \param reason  the fault alone, without method, file and place
    TUserError(const QString& text, QString reason, TErrorOrigin origin = {})
        : Exception(text, std::move(origin)), m_reason(std::move(reason)) {}

    [[nodiscard]] const QString& Reason() const { return m_reason; }

private:
    QString m_reason;
};

/// What is wrong, as a sentence for those who use a program: without method, file and place.
[[nodiscard]] ZEP_CORE_EXPORT QString ErrorReason(const std::exception& error);

/// The same after where it is: "part.nc, line 3: Invalid number in word "X1.2.3"."
/// \param file  that stands for one that the error does not name
[[nodiscard]] ZEP_CORE_EXPORT QString ErrorReport(const std::exception& error,
                                                  const QString& file = {});

} // namespace ZEP
