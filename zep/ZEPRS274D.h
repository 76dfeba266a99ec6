#pragma once

/// \file
/// The reader of RS-274D programs.

#include <zep/converters/rs274d/Converter.h>
