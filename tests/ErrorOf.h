#pragma once

#include <zep/framework/UserError.h>

#include <string>

namespace ZEP {

/// What an action raises; empty where it raises nothing.
template <class Action>
std::string ErrorOf(Action&& action) {
    try {
        action();
    } catch (const Exception& error) {
        return error.what();
    }
    return {};
}

/// The same as a user is told it.
template <class Action>
std::string ToldOf(Action&& action) {
    try {
        action();
    } catch (const std::exception& error) {
        return ErrorReport(error).toStdString();
    }
    return {};
}

} // namespace ZEP
