#pragma once

#include "viewer/PassedOver.h"

#include <memory>
#include <vector>

namespace ZEP {

class TZEPObject;

/// The outermost object of a component stream in either form, with what was passed over in it.
/// Raises `Exception`, which names the file and the place in it.
[[nodiscard]] std::unique_ptr<TZEPObject> ReadWhole(const QString& fileName,
                                                    std::vector<TPassedOver>& passedOver);

/// The same for a file that is shown: what stands in its scene becomes children of `root`, and so
/// does an object that stands alone.
[[nodiscard]] std::vector<TPassedOver> ReadScene(TZEPObject& root, const QString& fileName);

} // namespace ZEP
