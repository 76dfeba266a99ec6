#pragma once

/// \file
/// Unit ZEPRS274D: the reader of RS-274D programs, and what runs and times them without a scene.

#include <zep/converters/rs274d/Converter.h>
#include <zep/converters/rs274d/DialectGuess.h>
#include <zep/converters/rs274d/Interpreter.h>
#include <zep/converters/rs274d/ToolPath.h>
#include <zep/converters/rs274d/ToolPathStatistics.h>
#include <zep/converters/rs274d/ToolPlayback.h>
