#pragma once

#include <zep/framework/Exception.h>

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

} // namespace ZEP
