#pragma once

#include "viewer/window/ShownDock.h"

#include <QPointer>

#include <memory>

class QDoubleSpinBox;
class QLabel;
class QWidget;

namespace ZEP {

class TMoveFilterBox;
class TSourceDock;
class TToolPath;
class TZEPBatch;

/// What a machinist asks of the program: times, lengths, extents and tools. Moves are hidden by it
/// as a rule of the view, for the program that it shows.
class TProgramDock : public TShownDock {
    Q_OBJECT
public:
    /// \param source  whose program it shows; outlives it
    TProgramDock(QWidget* parent, TSourceDock* source);
    ~TProgramDock() override;

Q_SIGNALS:
    /// Of the program, by another rapid rate.
    void TimesChanged();

private:
    void FollowProgram();
    void SetRapidRate(double rate);
    void ApplyFilter();

    TSourceDock* m_source;
    QLabel *m_note, *m_facts;
    QWidget* m_content;
    QDoubleSpinBox* m_rate;
    TMoveFilterBox* m_filter;
    std::shared_ptr<TToolPath> m_path; ///< null: none is known
    QPointer<TZEPBatch> m_root;        ///< of the moves
    QString m_file;                    ///< of the path
};

} // namespace ZEP
