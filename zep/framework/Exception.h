#pragma once

#include <QString>

#include <stdexcept>

namespace ZEP {

/// The error that every operation of this library raises: clear English, naming file and line or
/// offset where there is one.
class Exception : public std::runtime_error {
public:
    explicit Exception(const QString& message) : std::runtime_error(message.toStdString()) {}

    /// The message as the user reads it.
    [[nodiscard]] QString Message() const { return QString::fromUtf8(what()); }
};

} // namespace ZEP
