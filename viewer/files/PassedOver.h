#pragma once

#include <QString>

namespace ZEP {

/// A kind of what was passed over in a file.
struct TPassedOver {
    QString Kind;
    qint64 Count = 0;
    qint64 FirstLine = 0; ///< 0: the file has no lines
    bool IsMinor = false; ///< what is seen is as the file has it all the same
};

} // namespace ZEP
