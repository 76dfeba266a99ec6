#pragma once

#include "converters/DXFEntity.h"
#include "framework/Color.h"

namespace ZEP {

class TZEPObject;

/// Where an entity goes, and how it looks there.
struct TDXFSpot {
    TZEPObject* Parent = nullptr; ///< null: the entity is dropped
    TColor Color;
};

/// Where entities go: under their layers, or under the groups of an inserted block.
class TDXFPlace {
public:
    virtual ~TDXFPlace() = default;

    /// For an entity that is read to its end. What it answers holds until the next pair is taken:
    /// while the host is asked for progress, it may free any object.
    virtual TDXFSpot Find(const TEntity& entity) = 0;
    /// The same for the kinds of entities whose layer is made where it is not there.
    virtual TDXFSpot FindOrMake(const TEntity& entity) { return Find(entity); }
};

} // namespace ZEP
