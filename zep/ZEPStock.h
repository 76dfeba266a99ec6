#pragma once

/// \file
/// Unit ZEPStock: material that the tools of a program cut away.

#include <zep/stock/Guess.h>
#include <zep/stock/Run.h>
#include <zep/stock/Stock.h>
#include <zep/stock/Tool.h>
#include <zep/stock/Workpiece.h>
