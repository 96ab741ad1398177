// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "device/QDevice.h"
#include "ui/QDiagnosisThread.h"

#include <QObject>

#include <optional>
#include <string>
#include <vector>

class QDeviceTable;
class QStatusLine;
struct Observation;

/// Tells in words what goes on, beside the list: in the status line, in the table when it is empty, and in
/// the tool tips of its rows. It is told what the window does; what else it wants to know, two workers of its
/// own find out after each search. They look at the networks and change nothing.
///
/// Used on the user-interface thread alone. A worker that looks when this is destroyed is neither stopped nor
/// waited for.
class QNarrator : public QObject
{
    Q_OBJECT

public:
    /// Line and table belong to the window and outlive this.
    QNarrator(QStatusLine* pStatusLine, QDeviceTable* pTable, QObject* pParent);
    ~QNarrator() override;

    /// Who finds out why no camera is heard, from the next time on.
    void SetExaminer(Examiner examiner);

    /// Whether a worker is at work, or is about to be.
    bool IsLooking() const;

    void OnSearch();
    void OnList(const QVector<QDevice>& devices);
    void OnSave(const QDevice& before, const QDevice& asked);
    void OnRestarting(); ///< The save that runs has changed the camera's type: it will restart.
    void OnSaved();
    void OnPlanApplied();
    void OnHeardUnlisted(); ///< What SigHeardAgain() told is not going to be listed by itself.

public slots:
    /// Of the save that runs: the camera may look different now, and the next search will tell.
    void OnCameraChanged();

signals:
    /// A camera that was restarted is there again; the list does not show it as it is now.
    void SigHeardAgain();

private:
    /// A save that is not told the end of yet.
    struct Save
    {
        QDevice before;
        QDevice asked;
        bool bRestarts = false;
        bool bChanged = false;  ///< The next search will tell what became of it.
        bool bSearched = false; ///< That search has begun.
    };
    /// A camera that is waited for.
    struct Restart
    {
        std::string mac;
        std::string name;
        IpConfigType type = IpConfigType::Static; ///< It starts with.
        int nLooksLeft = 0;
    };

    void StartLook();
    void OnLookEnd();
    void LookForRestarted(const Observation* pObservation);
    void StartDiagnosis();
    void OnDiagnosisEnd();
    void Tell();

    QStatusLine* const m_pStatusLine;
    QDeviceTable* const m_pTable;
    QJobThread<Observation>* const m_pLookThread;
    QDiagnosisThread* const m_pDiagnosisThread;
    Examiner m_Examiner;

    bool m_bSearching = false;
    QVector<QDevice> m_devices; ///< As listed.
    std::optional<Save> m_save;
    std::optional<Restart> m_restart;
    std::vector<base::Sentence> m_action; ///< The last one, or its end.
    bool m_bActionIsNew = false;          ///< A search follows it, which does not take it away.
    std::vector<base::Sentence> m_conflicts;

    int m_nLists = 0;                ///< What a worker found out about an older one is dropped.
    std::optional<int> m_listInLook; ///< The list that the running job is about; nothing while none runs.
    std::optional<int> m_listInDiagnosis;
};
