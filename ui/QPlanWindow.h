// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/QPlanThread.h"
#include "widgets/QMainWindowEx.h"

#include <atomic>
#include <memory>

class QElidedLabel;
class QLabel;
class QPlanTable;
class QPushButton;
class QStaticLabel;
class QTextView;
struct PlanSurroundings;

/// A line as a site file says it: which camera belongs where, what it has and is to have; and the buttons
/// that make it so. It stands beside its owner, which stays in use. A worker does what takes time.
///
/// Closed while cameras are being changed, it has no more of them begun, stays until the others are finished
/// or put back, and closes then; unless something failed, which is to be read.
///
/// Used on the user-interface thread alone. A worker that looks when this is destroyed is not waited for.
class QPlanWindow : public QMainWindowEx
{
    Q_OBJECT

public:
    QPlanWindow(QWidget* pOwner, Surveyor survey);
    ~QPlanWindow() override;

    /// Shows it, and looks if it has a file, unless it is already there; then it comes to the front.
    void Open();

    bool IsWorking() const { return m_job != Job::None; }

signals:
    /// Cameras may be other than they were.
    void SigCamerasChanged();

protected:
    void changeEvent(QEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    enum class Job
    {
        None,
        Look,
        Apply,
        Replace,
        Save
    };

    void CreateCtrls();
    void CreateLayout();
    void RefreshTexts();

    void OnOpenBtn();
    void OnSaveBtn();
    void OnReplaceBtn();
    void OnStopBtn();
    void Look();
    void Apply();
    void Start(Job job, std::function<PlanWork(const PlanSurroundings&)> work);
    void OnJobEnd();
    /// What the last job had to say stays.
    void LookAfterwards();

    /// Empty when the user does not choose any.
    QString ChooseFile(bool bToSave);
    /// What the buttons do, and all texts beside the table.
    void ShowState();
    QString Headline() const;
    bool ChangesCameras() const { return m_job == Job::Apply || m_job == Job::Replace; }

    const Surveyor m_Survey;
    QPlanThread* const m_pThread;
    Job m_job = Job::None;
    bool m_bCloses = false;                       ///< As soon as the job has ended.
    std::shared_ptr<std::atomic<bool>> m_pIsOver; ///< Whether the job is to end, or was.
    QString m_strFile;                            ///< Empty: none was opened.
    std::shared_ptr<const PlanWork> m_pShown;     ///< Never null.
    std::shared_ptr<const PlanWork> m_pSaid;      ///< The job that has something to say; never null.
    QString m_strError;                           ///< Why the last job could not be done at all.

    QStaticLabel* m_pHeadline = nullptr;
    QElidedLabel* m_pFile = nullptr;
    QTextView* m_pNotes = nullptr;
    QPlanTable* m_pTable = nullptr;
    QTextView* m_pDetails = nullptr; ///< Of the selected row.
    QPushButton* m_pOpenBtn = nullptr;
    QPushButton* m_pSaveBtn = nullptr;
    QPushButton* m_pReplaceBtn = nullptr;
    QPushButton* m_pAgainBtn = nullptr;
    QPushButton* m_pStopBtn = nullptr;
    QPushButton* m_pApplyBtn = nullptr;
};
