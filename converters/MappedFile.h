#pragma once

#include "framework/MappedFile.h"
