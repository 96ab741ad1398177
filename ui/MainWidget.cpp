// SPDX-License-Identifier: Apache-2.0
#include "ui/MainWidget.h"

#include "device/QDeviceManager.h"
#include "device/QRefreshThread.h"
#include "save/QSaveThread.h"
#include "ui/Placement.h"
#include "ui/QDetailPanel.h"
#include "ui/QDeviceTable.h"
#include "ui/QEditPanel.h"
#include "ui/QPictureButton.h"
#include "ui/QSetIpAddrDlg.h"
#include "widgets/QMessageBoxDlg.h"
#include "widgets/QPushButtonExColor.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int TableMargin = 5;          // Leaves the last column room for a mask beside a scroll bar.
constexpr int Margin = TableMargin + 3; // In line with the texts in the table.

} // namespace

MainWidget::MainWidget(QWidget* pParent) : QCameraWindow(pParent)
{
    if (!InitWidget())
        return;
    setWindowFlags(Qt::FramelessWindowHint);
    m_pDeviceTable->setFocus(); // New flags take the keyboard away from where the first refresh has put it.
}

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
    setTabOrder(m_pModifyIpBtn, m_pRefreshBtn);
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
    pTools->addStretch();

    QBoxLayout* const pTable = createLayout(Qt::Horizontal);
    pTable->setContentsMargins(TableMargin, 0, TableMargin, 0);
    pTable->addWidget(m_pDeviceTable);

    QBoxLayout* const pDevice = createLayout(Qt::Horizontal);
    pDevice->setContentsMargins(Margin, 8, Margin, 16);
    pDevice->setSpacing(24);
    pDevice->addWidget(m_pEditPanel);
    pDevice->addWidget(m_pDetailPanel, 1);

    QBoxLayout* const pMain = createLayout(Qt::Vertical);
    pMain->setSpacing(0);
    pMain->addLayout(pTools);
    pMain->addLayout(pTable, 1);
    pMain->addLayout(pDevice);
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
    m_pDeviceTable->RefreshTexts();
    m_pDetailPanel->RefreshTexts();
}

void MainWidget::Release()
{
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
    m_pRefreshThread->SetThreadInfo(m_pDeviceManager);
    m_pRefreshThread->start(QThread::InheritPriority);
}

void MainWidget::OnEndRefreshThread()
{
    m_nRefreshes = std::max(0, m_nRefreshes - 1);
    UpdateListShow();
    EnabledRefreshBtn(true);
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
