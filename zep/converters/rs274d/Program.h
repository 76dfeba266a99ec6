#pragma once

#include <zep/converters/Progress.h>
#include <zep/converters/rs274d/Machine.h>

#include <string_view>

namespace ZEP {

/// Reads a whole program line by line, until its end or the end of the text, and hands the tool
/// path to `sink`.
/// \param progress  asked every 64 kilobytes; may be empty
/// \return whether it was not cancelled
bool ReadRS274D(std::string_view text, const TRS274DOptions& options, TRS274DSink& sink,
                TRS274DReport& report, const TProgress& progress = {});

} // namespace ZEP
