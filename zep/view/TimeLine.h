#pragma once

#include <zep/Export.h>

#include <QTreeView>

namespace ZEP {

class TZEPScene;

/// The place on a form for a view of a scene's animation over time. It shows nothing yet: a scene
/// that is set is not kept.
class ZEP_EXPORT TZEPTimeLine : public QTreeView {
    Q_OBJECT
    Q_MOC_INCLUDE("zep/scene/Scene.h")
    Q_PROPERTY(ZEP::TZEPScene* Scene READ Scene WRITE SetScene)
public:
    using QTreeView::QTreeView;

    /// Null at all times.
    [[nodiscard]] TZEPScene* Scene() const { return nullptr; }
    virtual void SetScene(TZEPScene* scene) { static_cast<void>(scene); }
};

} // namespace ZEP
