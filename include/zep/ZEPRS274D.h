#pragma once

#include "converters/RS274D.h"
