#pragma once

#include <zep/scene/Object.h>

#include <QPointer>

namespace ZEP {

/// An update bracket around reading into an object: reading may end with an exception, and the
/// host may free the object meanwhile.
class TRootUpdate {
public:
    explicit TRootUpdate(TZEPObject* root) : m_root(root) { m_root->BeginUpdate(); }
    ~TRootUpdate() {
        if (m_root) m_root->EndUpdate(false);
    }
    Q_DISABLE_COPY_MOVE(TRootUpdate)

private:
    QPointer<TZEPObject> m_root;
};

} // namespace ZEP
