#pragma once

namespace ZEP {

/// What has happened to the children of an object, as far as pictures go.
struct TZEPChildNews {
    bool Look = true;   ///< one came, went, moved or looks different
    int Selections = 0; ///< how often one was selected or deselected; that is no different look
};

} // namespace ZEP
