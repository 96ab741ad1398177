// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/QCameraWindow.h"
#include "ui/QDiagnosisThread.h"
#include "ui/QPlanThread.h"

#include <QBoxLayout>

#include <memory>
#include <optional>

class QDiagnosisWindow;
class QNarrator;
class QPlanWindow;
class QRefreshThread;
class QSaveThread;
class QSetIpAddrDlg;
class QStatusLine;

/// The program's window: the cameras that were found, the selected one in detail, and the controls that
/// change its address and name. The first search begins with construction.
///
/// Used on the user-interface thread alone; the workers report by queued signals. Workers, dialog and device
/// manager are neither stopped nor destroyed with the window: a job that is under way may still need them, so
/// they live until the process ends.
class MainWidget : public QCameraWindow
{
    Q_OBJECT

public:
    explicit MainWidget(QWidget* pParent = nullptr);
    ~MainWidget() override;

    // While a save runs the three buttons stay disabled, whoever enables them; Refresh also during a refresh.
    void EnabledSaveBtn(bool bEnable) override;
    void EnabledEditIPBtn(bool bEnable) override;
    void EnabledRefreshBtn(bool bEnable);

    /// Who finds out what is wrong, from the next time on.
    void SetExaminer(const Examiner& examiner);
    /// Who finds out what there is, for a plan; meant before the first one.
    void SetSurveyor(const Surveyor& survey) { m_Survey = survey; }
    /// Whether something beyond the list of cameras is being found out.
    bool IsLooking() const;

    /// Sets every fixed text again, in the language of now.
    void RefreshWidgetInfo();

    /// Deletes the controls and the device manager; nothing reacts any more. Only while no worker runs.
    void Release();

public slots:
    void OnBtnRefresh();
    void OnEndRefreshThread();
    void OnBtnSave();
    void OnEndSaveThread();
    void OnForceIpBtn();
    void OnSetIpDlgBtnOk();
    void OnDiagnoseBtn();
    void OnPlanBtn();
    /// Returns when the user has closed the message.
    void OnShowMsg(const QString& strTitle, const QString& strText);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;

private:
    bool InitWidget();
    bool CreatCtrls();
    bool InitSlots();
    bool InitLayout();
    static QBoxLayout* createLayout(Qt::Orientation orientation);

    void StartRefresh();
    /// Lists a camera that is heard again, unless that would take away what somebody is about to do.
    void OnHeardAgain();
    void OnPlanApplied();
    void StartSave(const QDevice& current, const QDevice& modified);

    QPictureButton* m_pRefreshBtn = nullptr;
    QPictureButton* m_pDiagnoseBtn = nullptr;
    QPictureButton* m_pPlanBtn = nullptr;
    QStatusLine* m_pStatusLine = nullptr;
    QNarrator* m_pNarrator = nullptr;
    std::unique_ptr<QDiagnosisWindow> m_pDiagnosisWindow; ///< From the first time that it is asked for.
    Examiner m_Examiner = DoctorsExaminer();
    std::unique_ptr<QPlanWindow> m_pPlanWindow; ///< From the first time that it is asked for.
    Surveyor m_Survey = NetworksSurveyor();
    QSaveThread* m_pSaveThread = nullptr;
    QRefreshThread* m_pRefreshThread = nullptr;
    QSetIpAddrDlg* m_pSetIpAddrDlg = nullptr;
    /// The camera as it was when the dialog was opened; empty while the dialog is closed.
    std::optional<QDevice> m_deviceInDialog;
    bool m_bIdle = true;          ///< Return in an address field saves.
    bool m_bSaving = false;       ///< Save, Modify IP and Refresh are out of use.
    int m_nRefreshes = 0;         ///< Started and not shown yet; Refresh is out of use until there is none.
    bool m_bRefreshAgain = false; ///< Another refresh was asked for while one was running.
};
