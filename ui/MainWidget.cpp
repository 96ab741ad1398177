// SPDX-License-Identifier: Apache-2.0
#include "ui/MainWidget.h"

#include "device/QDeviceManager.h"
#include "device/QRefreshThread.h"
#include "save/QSaveThread.h"
#include "ui/Placement.h"
#include "ui/QDetailPanel.h"
#include "ui/QDeviceTable.h"
#include "ui/QDiagnosisWindow.h"
#include "ui/QEditPanel.h"
#include "ui/QNarrator.h"
#include "ui/QPictureButton.h"
#include "ui/QPlanWindow.h"
#include "ui/QSetIpAddrDlg.h"
#include "ui/QStatusLine.h"
#include "widgets/QMessageBoxDlg.h"
#include "widgets/QPushButtonExColor.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int TableMargin = 5;          // Leaves the last column room for a mask beside a scroll bar.
constexpr int Margin = TableMargin + 3; // In line with the texts in the table.
constexpr int SizeGripWidth = 20;

} // namespace

MainWidget::MainWidget(QWidget* pParent) : QCameraWindow(pParent)
{
    if (!InitWidget())
        return;
    setWindowFlags(Qt::FramelessWindowHint);
    m_pDeviceTable->setFocus(); // New flags take the keyboard away from where the first refresh has put it.
}

MainWidget::~MainWidget() = default;

bool MainWidget::InitWidget()
{
    QString strTitle = tr("IP Configurator");
    SetTitleText(strTitle);
    resize(890, 650);
    if (!CreatCtrls() || !InitSlots() || !InitLayout())
        return false;
    UpdateListShow();
    OnBtnRefresh();
    return true;
}

bool MainWidget::CreatCtrls()
{
    m_pRefreshBtn = new QPictureButton("refresh", QSize(90, 26), this);
    m_pDiagnoseBtn = new QPictureButton("diagnose", QSize(100, 26), this);
    m_pPlanBtn = new QPictureButton("plan", QSize(80, 26), this);
    setTabOrder(m_pModifyIpBtn, m_pRefreshBtn);
    setTabOrder(m_pRefreshBtn, m_pDiagnoseBtn);
    setTabOrder(m_pDiagnoseBtn, m_pPlanBtn);
    m_pStatusLine = new QStatusLine(this);
    m_pNarrator = new QNarrator(m_pStatusLine, m_pDeviceTable, this);
    m_pSaveThread = new QSaveThread;
    m_pRefreshThread = new QRefreshThread;
    m_pSetIpAddrDlg = new QSetIpAddrDlg(this);
    RefreshWidgetInfo();
    return true;
}

bool MainWidget::InitSlots()
{
    // Starts the refresh that was asked for while this one was running, when start() would have done nothing.
    connect(m_pRefreshThread, &QThread::finished, this, [this] {
        if (m_bRefreshAgain)
            StartRefresh();
    });
    connect(m_pDiagnoseBtn, &QPushButton::clicked, this, &MainWidget::OnDiagnoseBtn);
    connect(m_pPlanBtn, &QPushButton::clicked, this, &MainWidget::OnPlanBtn);
    connect(m_pNarrator, &QNarrator::SigHeardAgain, this, &MainWidget::OnHeardAgain);
    // Before the search that this begins.
    connect(m_pSaveThread, &QSaveThread::SigRefresh, m_pNarrator, &QNarrator::OnCameraChanged);
    return connect(m_pRefreshBtn, SIGNAL(clicked()), SLOT(OnBtnRefresh())) &&
           connect(m_pEditPanel->m_pSaveBtn, SIGNAL(clicked()), SLOT(OnBtnSave())) &&
           connect(m_pModifyIpBtn, SIGNAL(clicked()), SLOT(OnForceIpBtn())) &&
           connect(m_pSetIpAddrDlg, SIGNAL(SigSetIpDlgOk()), SLOT(OnSetIpDlgBtnOk())) &&
           connect(m_pSaveThread, SIGNAL(SigEndThread()), SLOT(OnEndSaveThread())) &&
           connect(m_pSaveThread, SIGNAL(SigRefresh()), SLOT(OnBtnRefresh())) &&
           connect(m_pRefreshThread, SIGNAL(SigEndThread()), SLOT(OnEndRefreshThread())) &&
           connect(m_pSaveThread, SIGNAL(SigShowMsg(QString, QString)), SLOT(OnShowMsg(QString, QString)),
                   Qt::BlockingQueuedConnection);
}

bool MainWidget::InitLayout()
{
    QBoxLayout* const pTools = createLayout(Qt::Horizontal);
    pTools->setContentsMargins(Margin, 12, Margin, 12);
    pTools->setSpacing(16);
    pTools->addWidget(m_pModifyIpBtn);
    pTools->addWidget(m_pRefreshBtn);
    pTools->addWidget(m_pDiagnoseBtn);
    pTools->addWidget(m_pPlanBtn);
    pTools->addStretch();

    QBoxLayout* const pTable = createLayout(Qt::Horizontal);
    pTable->setContentsMargins(TableMargin, 0, TableMargin, 0);
    pTable->addWidget(m_pDeviceTable);

    QBoxLayout* const pDevice = createLayout(Qt::Horizontal);
    pDevice->setContentsMargins(Margin, 8, Margin, 8);
    pDevice->setSpacing(24);
    pDevice->addWidget(m_pEditPanel);
    pDevice->addWidget(m_pDetailPanel, 1);

    QBoxLayout* const pStatus = createLayout(Qt::Horizontal);
    pStatus->setContentsMargins(Margin, 0, SizeGripWidth, 6);
    pStatus->addWidget(m_pStatusLine);

    QBoxLayout* const pMain = createLayout(Qt::Vertical);
    pMain->setSpacing(0);
    pMain->addLayout(pTools);
    pMain->addLayout(pTable, 1);
    pMain->addLayout(pDevice);
    pMain->addLayout(pStatus);
    SetLayoutEx(pMain);
    return true;
}

QBoxLayout* MainWidget::createLayout(Qt::Orientation orientation)
{
    auto* const pLayout =
        new QBoxLayout(orientation == Qt::Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    pLayout->setContentsMargins(0, 0, 0, 0);
    return pLayout;
}

void MainWidget::RefreshWidgetInfo()
{
    if (!m_pDeviceTable)
        return;
    QString strTitle = tr("IP Configurator");
    SetTitleText(strTitle);
    m_pEditPanel->RefreshTexts();
    m_pModifyIpBtn->setText(tr("Modify IP"));
    m_pRefreshBtn->setText(tr("Refresh"));
    m_pRefreshBtn->setShortcut(Qt::Key_F5); // A new text takes a button's shortcut away.
    m_pDiagnoseBtn->setText(tr("Diagnose"));
    m_pPlanBtn->setText(tr("Plan"));
    m_pStatusLine->RefreshTexts();
    m_pDeviceTable->RefreshTexts();
    m_pDetailPanel->RefreshTexts();
}

void MainWidget::Release()
{
    delete std::exchange(m_pNarrator, nullptr);
    delete std::exchange(m_pStatusLine, nullptr);
    m_pDiagnosisWindow.reset();
    m_pPlanWindow.reset();
    delete std::exchange(m_pDiagnoseBtn, nullptr);
    delete std::exchange(m_pPlanBtn, nullptr);
    delete std::exchange(m_pDeviceTable, nullptr);
    delete std::exchange(m_pEditPanel, nullptr);
    delete std::exchange(m_pDetailPanel, nullptr);
    delete std::exchange(m_pModifyIpBtn, nullptr);
    delete std::exchange(m_pRefreshBtn, nullptr);
    delete std::exchange(m_pSetIpAddrDlg, nullptr);
    delete std::exchange(m_pDeviceManager, nullptr);
}

void MainWidget::OnBtnRefresh()
{
    if (!m_pRefreshThread || !m_pDeviceTable)
        return;
    EnabledRefreshBtn(false);
    StartRefresh();
    m_pDeviceTable->setFocus();
}

void MainWidget::StartRefresh()
{
    // A thread that is running will emit finished() after this, which starts the next refresh.
    m_bRefreshAgain = m_pRefreshThread->isRunning();
    if (m_bRefreshAgain)
        return;
    ++m_nRefreshes;
    m_pNarrator->OnSearch();
    m_pRefreshThread->SetThreadInfo(m_pDeviceManager);
    m_pRefreshThread->start(QThread::InheritPriority);
}

void MainWidget::OnEndRefreshThread()
{
    m_nRefreshes = std::max(0, m_nRefreshes - 1);
    UpdateListShow();
    EnabledRefreshBtn(true);
    if (!m_pNarrator)
        return;
    QVector<QDevice> devices;
    m_pDeviceManager->GetAllDevices(devices);
    m_pNarrator->OnList(devices);
}

void MainWidget::OnHeardAgain()
{
    const bool bTypeChosen = CurrentDevice().ConfigType() != m_pEditPanel->ChosenType();
    if (m_bSaving || m_pEditPanel->IsBeingTypedIn() || bTypeChosen || QApplication::activeModalWidget()) {
        m_pNarrator->OnHeardUnlisted();
        return;
    }
    EnabledRefreshBtn(false);
    StartRefresh();
}

void MainWidget::OnBtnSave()
{
    if (!m_pDeviceTable || !m_pDeviceManager || !m_pEditPanel || !m_pSaveThread)
        return;

    const QDevice current = CurrentDevice();
    QDevice modified = current;
    m_pEditPanel->ReadInto(modified);

    m_bIdle = false;
    StartSave(current, modified);
}

void MainWidget::StartSave(const QDevice& current, const QDevice& modified)
{
    EnabledSaveBtn(false);
    EnabledRefreshBtn(false);
    EnabledEditIPBtn(false);
    m_bSaving = true;
    m_pNarrator->OnSave(current, modified);
    m_pSaveThread->SetThreadInfo(m_pDeviceManager, current, modified);
    if (m_pSaveThread->isRunning())
        m_pSaveThread->terminate();
    m_pSaveThread->start(QThread::InheritPriority);
}

void MainWidget::OnEndSaveThread()
{
    m_bSaving = false;
    EnabledSaveBtn(true);
    EnabledEditIPBtn(true);
    EnabledRefreshBtn(true);
    m_bIdle = true;
    if (m_pNarrator)
        m_pNarrator->OnSaved();
}

void MainWidget::OnForceIpBtn()
{
    if (!m_pDeviceTable || !m_pDeviceManager || !m_pSetIpAddrDlg)
        return;
    m_deviceInDialog = CurrentDevice();
    m_pSetIpAddrDlg->SetCurDevice(*m_deviceInDialog);
    MoveToDesktopCentre(*m_pSetIpAddrDlg);
    m_pSetIpAddrDlg->exec();
    m_deviceInDialog.reset();
}

void MainWidget::OnSetIpDlgBtnOk()
{
    if (!m_pDeviceTable || !m_pDeviceManager || !m_pSetIpAddrDlg || !m_pSaveThread)
        return;
    QDevice current = CurrentDevice();
    // A refresh that ends meanwhile without the dialog's camera selects another one.
    if (m_deviceInDialog && m_deviceInDialog->m_strMacAddress != current.m_strMacAddress)
        current = *m_deviceInDialog;
    QDevice modified = current;
    m_pSetIpAddrDlg->GetModifiedDevice(modified);
    StartSave(current, modified);
}

void MainWidget::OnShowMsg(const QString& strTitle, const QString& strText)
{
    if (m_pNarrator && m_pSaveThread->LatestMessage() == SaveMessage::Restarting)
        m_pNarrator->OnRestarting();
    QMessageBoxDlg box(this, strTitle, strText, false);
    MoveToDesktopCentre(box);
    box.exec(false);
}

void MainWidget::keyPressEvent(QKeyEvent* pEvent)
{
    // Nothing reaches the base class, which would close the window.
    const bool bReturn = pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter;
    if (!bReturn || !m_pEditPanel || !m_bIdle)
        return;
    if (m_pEditPanel->HasFocusInAddress())
        OnBtnSave();
}

void MainWidget::changeEvent(QEvent* pEvent)
{
    QCameraWindow::changeEvent(pEvent);
    if (pEvent->type() == QEvent::LanguageChange)
        RefreshWidgetInfo();
}

void MainWidget::closeEvent(QCloseEvent* pEvent)
{
    QCameraWindow::closeEvent(pEvent);
    if (!pEvent->isAccepted())
        return;
    // Else the program would not end. While a plan is being applied it does not, either.
    if (m_pDiagnosisWindow)
        m_pDiagnosisWindow->close();
    if (m_pPlanWindow)
        m_pPlanWindow->close();
}

void MainWidget::SetExaminer(const Examiner& examiner)
{
    m_Examiner = examiner;
    m_pNarrator->SetExaminer(examiner);
}

bool MainWidget::IsLooking() const
{
    return m_pNarrator->IsLooking() || (m_pDiagnosisWindow && m_pDiagnosisWindow->IsLooking()) ||
           (m_pPlanWindow && m_pPlanWindow->IsWorking());
}

void MainWidget::OnDiagnoseBtn()
{
    if (!m_pDiagnosisWindow) {
        m_pDiagnosisWindow = std::make_unique<QDiagnosisWindow>(this, m_Examiner);
        MoveToDesktopCentre(*m_pDiagnosisWindow);
    }
    m_pDiagnosisWindow->Open();
}

void MainWidget::OnPlanBtn()
{
    if (!m_pPlanWindow) {
        m_pPlanWindow = std::make_unique<QPlanWindow>(this, m_Survey);
        connect(m_pPlanWindow.get(), &QPlanWindow::SigCamerasChanged, this, &MainWidget::OnPlanApplied);
        MoveToDesktopCentre(*m_pPlanWindow);
    }
    m_pPlanWindow->Open();
}

void MainWidget::OnPlanApplied()
{
    if (!isVisible())
        return; // The program is about to end.
    m_pNarrator->OnPlanApplied();
    OnHeardAgain();
}

void MainWidget::EnabledSaveBtn(bool bEnable)
{
    QCameraWindow::EnabledSaveBtn(bEnable && !m_bSaving);
}

void MainWidget::EnabledEditIPBtn(bool bEnable)
{
    QCameraWindow::EnabledEditIPBtn(bEnable && !m_bSaving);
}

void MainWidget::EnabledRefreshBtn(bool bEnable)
{
    if (m_pRefreshBtn)
        m_pRefreshBtn->setEnabled(bEnable && !m_bSaving && m_nRefreshes == 0 && !m_bRefreshAgain);
}
