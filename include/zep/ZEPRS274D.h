#pragma once

/// \file
/// The reader of RS-274D programs.

#include "converters/RS274D.h"
