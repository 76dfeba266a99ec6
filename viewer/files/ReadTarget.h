#pragma once

#include "viewer/files/PassedOver.h"

#include <vector>

namespace ZEP {

class TZEPMaterialLibrary;
class TZEPObject;

/// Where what is read goes. Neither is null.
struct TReadTarget {
    TZEPObject* Root;
    TZEPMaterialLibrary* Materials; ///< without any; faces refer to it by number
};

} // namespace ZEP
