#pragma once

#include <zep/Export.h>

#include <QMetaType>
#include <QObject>

namespace ZEP {

/// Holds the names of the dialects.
class ZEP_CORE_EXPORT TRS274DDialects {
    Q_GADGET
public:
    /// Whose words a program has, where controls contradict each other.
    enum class TDialect : unsigned char {
        NGC,  ///< RS-274/NGC (NISTIR 6556) and its O-words
        Fanuc ///< Fanuc's and what follows them: custom macros B, K repeats a cycle
    };
    Q_ENUM(TDialect)
};

using TRS274DDialect = TRS274DDialects::TDialect;

} // namespace ZEP
