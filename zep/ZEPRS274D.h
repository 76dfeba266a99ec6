#pragma once

/// \file
/// Unit ZEPRS274D: the reader of RS-274D programs.

#include <zep/converters/rs274d/Converter.h>
