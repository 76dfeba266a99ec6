#pragma once

#include "viewer/files/ReadTarget.h"

#include <memory>

namespace ZEP {

class TZEPObject;

/// The outermost object of a component stream in either form, with what was passed over in it.
/// Raises `Exception`, which names the file and the place in it.
[[nodiscard]] std::unique_ptr<TZEPObject> ReadWhole(const QString& fileName,
                                                    std::vector<TPassedOver>& passedOver);

/// The same for a file that is shown: what stands in its scene becomes children of the
/// root, and so does an object that stands alone; materials of its library go to the target's.
[[nodiscard]] std::vector<TPassedOver> ReadScene(const TReadTarget& target,
                                                 const QString& fileName);

} // namespace ZEP
