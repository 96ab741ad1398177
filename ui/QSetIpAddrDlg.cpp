// SPDX-License-Identifier: Apache-2.0
#include "ui/QSetIpAddrDlg.h"

#include "device/QDevice.h"
#include "device/QPingThread.h"
#include "ui/AddressRules.h"
#include "ui/QNoteLabel.h"
#include "widgets/QLineEditEx.h"
#include "widgets/QMessageBoxDlg.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QStaticLabel.h"
#include "widgets/StyleRules.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>

QSetIpAddrDlg::QSetIpAddrDlg(QWidget* pParent) : QMainWindowEx(pParent, false)
{
    if (InitWidget())
        setWindowFlags(Qt::FramelessWindowHint);
}

bool QSetIpAddrDlg::InitWidget()
{
    QString strTitle = tr("Modify IP Address");
    SetTitleText(strTitle);
    resize(320, 370);
    setFixedWidth(300);
    return CreatCtrls() && InitSlots() && InitLayout();
}

bool QSetIpAddrDlg::CreatCtrls()
{
    m_pNote = new QNoteLabel(this);
    m_pNote->setContentsMargins(0, 0, 0, 10); // A gap, since the range is another paragraph.
    m_pValidRange = new QLabel(this);
    m_pValidRange->setTextFormat(Qt::RichText);
    m_pValidRange->setStyleSheet(TextLook(TextColor, 14, SegoeFamily, 4));
    m_pIpAddr = std::make_unique<Field>(this);
    m_pSubnetMask = std::make_unique<Field>(this);
    m_pGateway = std::make_unique<Field>(this);
    m_pOkBtn = new QPushButtonExColor(tr("OK"), this);
    m_pOkBtn->setFixedSize(90, 30);
    m_pCancelBtn = new QPushButtonEx(tr("Cancel"), this);
    m_pCancelBtn->setFixedSize(90, 30);
    // As large as "OK": Qt cuts half of a border's width off a button with round corners.
    m_pCancelBtn->setStyleSheet(m_pCancelBtn->styleSheet() +
                                QStringLiteral("#QPushButtonEx,#QPushButtonEx:hover,#QPushButtonEx:pressed,"
                                               "#QPushButtonEx:disabled{border-width:1;border-radius:0;}"));
    RefreshWidgetInfo();
    return true;
}

bool QSetIpAddrDlg::InitSlots()
{
    return connect(m_pIpAddr->edit.Edit(), SIGNAL(textChanged(QString)), SLOT(OnIpAddrChanged(QString))) &&
           connect(m_pSubnetMask->edit.Edit(), SIGNAL(textChanged(QString)),
                   SLOT(OnSubnetMaskChanged(QString))) &&
           connect(m_pGateway->edit.Edit(), SIGNAL(textChanged(QString)), SLOT(OnGatewayChanged(QString))) &&
           connect(m_pOkBtn, SIGNAL(clicked()), SLOT(OnOkBtn())) &&
           connect(m_pCancelBtn, SIGNAL(clicked()), SLOT(OnCancelBtn())) && CreatePingThread();
}

bool QSetIpAddrDlg::CreatePingThread()
{
    m_pPingThread = new QPingThread;
    m_pPingThread->setParent(this);
    return connect(m_pPingThread, SIGNAL(SigEndThread()), SLOT(OnPingThreadEnd()));
}

bool QSetIpAddrDlg::InitLayout()
{
    auto* const pLabels = new QVBoxLayout;
    auto* const pEdits = new QVBoxLayout;
    for (const auto* pField : {m_pIpAddr.get(), m_pSubnetMask.get(), m_pGateway.get()}) {
        // One height for both columns keeps a caption level with its field.
        pField->edit.Caption()->setFixedHeight(pField->edit.Edit()->height());
        pLabels->addWidget(pField->edit.Caption());
        pEdits->addWidget(pField->edit.Edit());
    }
    auto* const pForm = new QHBoxLayout;
    pForm->addStretch(1);
    pForm->addLayout(pLabels);
    pForm->addLayout(pEdits);
    pForm->addStretch(2);

    auto* const pButtons = new QHBoxLayout;
    pButtons->addStretch(1);
    pButtons->addWidget(m_pOkBtn);
    pButtons->addStretch(2);
    pButtons->addWidget(m_pCancelBtn);
    pButtons->addStretch(1);

    m_pMainColumn = new QVBoxLayout;
    m_pMainColumn->setContentsMargins(0, 9, 0, 9);
    m_pMainColumn->addStretch(1);
    m_pMainColumn->addWidget(m_pNote);
    m_pMainColumn->addWidget(m_pValidRange);
    m_pMainColumn->addStretch(3);
    m_pMainColumn->addLayout(pForm);
    m_pMainColumn->addStretch(1);
    m_pMainColumn->addLayout(pButtons);
    SetLayoutEx(m_pMainColumn);
    return true;
}

void QSetIpAddrDlg::RefreshWidgetInfo()
{
    if (!m_pIpAddr)
        return;
    QString strTitle = tr("Modify IP Address");
    SetTitleText(strTitle);
    constexpr int FrameBorders = 2;
    m_pNote->SetNote(tr("<p style='margin:10px; margin-left: 35px'>If the camera IP is not static IP "
                        "address,</p><p style='margin:10px'> the subnet mask and default gateway cannot</p>"
                        "<p style='margin:10px'>be modified.</p>"),
                     width() - FrameBorders);
    m_pIpAddr->edit.SetCaption(tr("IP Address:"));
    m_pSubnetMask->edit.SetCaption(tr("Subnet Mask:"));
    m_pGateway->edit.SetCaption(tr("Default Gateway:"));
    m_pOkBtn->setText(tr("OK"));
    m_pCancelBtn->setText(tr("Cancel"));
}

void QSetIpAddrDlg::SetCurDevice(const QDevice& device)
{
    if (!m_pIpAddr)
        return;
    const auto show = [](Field& field, const QString& strText) {
        field.strInitial = strText;
        field.edit.Edit()->setText(strText);
    };
    show(*m_pIpAddr, device.m_strIpAddress);
    show(*m_pSubnetMask, device.m_strSubnetMask);
    show(*m_pGateway, device.m_strDefaultGateway);
    // A field that already has the text emits nothing, and "OK" may still be disabled from a ping that was
    // given up.
    OnIpAddrChanged(device.m_strIpAddress);
    OnSubnetMaskChanged(device.m_strSubnetMask);
    OnGatewayChanged(device.m_strDefaultGateway);

    QVector<_NETWORK_INFO> vecAdapter;
    device.GetNetWorkVector(vecAdapter);
    ShowValidArea(vecAdapter, device);
    SetEnabledCtrls(device);
    // Each use begins in the first field, wherever the last one has ended. (Setting the focus there would
    // select the text, of which often the last number alone is to change.)
    if (focusWidget())
        focusWidget()->clearFocus();
}

void QSetIpAddrDlg::GetModifiedDevice(QDevice& device) const
{
    if (!m_pIpAddr)
        return;
    device.m_strIpAddress = m_pIpAddr->edit.Edit()->text();
    device.m_strSubnetMask = m_pSubnetMask->edit.Edit()->text();
    device.m_strDefaultGateway = m_pGateway->edit.Edit()->text();
}

void QSetIpAddrDlg::ShowValidArea(const QVector<_NETWORK_INFO>& vecAdapter, const QDevice& device)
{
    if (!m_pValidRange)
        return;
    const QString strBegin = QStringLiteral("<p style='margin:10px'>");
    const QString strEnd = QStringLiteral("</p>");
    QString strText = strBegin + tr("Valid Range:") + strEnd;
    for (const _NETWORK_INFO& adapter : vecAdapter) {
        strText += strBegin;
        if (adapter.nIpAddress == device.m_nNetExport)
            strText += DialogAddressRules::ValidRange(adapter) + strEnd;
    }
    m_pValidRange->setText(strText);
}

void QSetIpAddrDlg::SetEnabledCtrls(const QDevice& device)
{
    const bool bStaticIp = device.ConfigType() == IpConfigType::Static;
    EnabledIpAddrCtrl(true);
    EnabledSubnetMaskCtrl(bStaticIp);
    EnabledGatewayCtrl(bStaticIp);
}

void QSetIpAddrDlg::EnabledIpAddrCtrl(bool bEnable)
{
    if (m_pIpAddr)
        m_pIpAddr->edit.SetEnabled(bEnable);
}

void QSetIpAddrDlg::EnabledSubnetMaskCtrl(bool bEnable)
{
    if (m_pSubnetMask)
        m_pSubnetMask->edit.SetEnabled(bEnable);
}

void QSetIpAddrDlg::EnabledGatewayCtrl(bool bEnable)
{
    if (m_pGateway)
        m_pGateway->edit.SetEnabled(bEnable);
}

bool QSetIpAddrDlg::IsChanged() const
{
    const auto differs = [](const Field& field) { return field.edit.Edit()->text() != field.strInitial; };
    return m_pIpAddr && (differs(*m_pIpAddr) || differs(*m_pSubnetMask) || differs(*m_pGateway));
}

bool QSetIpAddrDlg::IsIPChanged() const
{
    return m_pIpAddr && m_pIpAddr->edit.Edit()->text() != m_pIpAddr->strInitial;
}

bool QSetIpAddrDlg::CheckIpAble(const QString& strText)
{
    return DialogAddressRules::IsCameraAddress(strText);
}

bool QSetIpAddrDlg::CheckSubnetMask(const QString& strText)
{
    return DialogAddressRules::IsSubnetMask(strText);
}

bool QSetIpAddrDlg::CheckGateWay(const QString& strText)
{
    return DialogAddressRules::IsGateway(strText);
}

void QSetIpAddrDlg::OnIpAddrChanged(const QString& strText)
{
    if (m_pOkBtn)
        ShowValidity(*m_pIpAddr, CheckIpAble(strText));
}

void QSetIpAddrDlg::OnSubnetMaskChanged(const QString& strText)
{
    if (m_pOkBtn)
        ShowValidity(*m_pSubnetMask, CheckSubnetMask(strText));
}

void QSetIpAddrDlg::OnGatewayChanged(const QString& strText)
{
    if (m_pOkBtn)
        ShowValidity(*m_pGateway, CheckGateWay(strText));
}

void QSetIpAddrDlg::ShowValidity(Field& field, bool bValid)
{
    field.bValid = bValid;
    if (!bValid)
        m_pOkBtn->setEnabled(false);
    else if (m_pIpAddr->bValid && m_pSubnetMask->bValid && m_pGateway->bValid)
        m_pOkBtn->setEnabled(true);
}

void QSetIpAddrDlg::OnOkBtn()
{
    if (!m_pOkBtn || !IsChanged())
        return;
    if (!IsIPChanged()) {
        emit SigSetIpDlgOk();
        close();
        return;
    }
    if (m_bPinging)
        return;
    m_pPingThread->wait(); // Takes no time: its last job, if any, is over.
    m_pPingThread->SetIPAddress(m_pIpAddr->edit.Edit()->text());
    m_pIpAddr->edit.Edit()->setFocus(); // Else disabling "OK" would give it to "Cancel".
    m_pOkBtn->setEnabled(false);
    SetPinging(true);
    m_pPingThread->start(QThread::InheritPriority);
}

void QSetIpAddrDlg::SetPinging(bool bPinging)
{
    m_bPinging = bPinging;
    if (!m_pIpAddr)
        return;
    // The ping tells of the address that is typed now: no text may change until its answer.
    for (const auto* pField : {m_pIpAddr.get(), m_pSubnetMask.get(), m_pGateway.get()})
        pField->edit.Edit()->setReadOnly(bPinging);
}

void QSetIpAddrDlg::OnPingThreadEnd()
{
    if (!m_pOkBtn || (sender() && sender() != m_pPingThread))
        return;
    SetPinging(false);
    if (m_pPingThread->GetPingResult()) {
        ShowMsg(tr("Message"), tr("The IP address has been used by other devices."));
        m_pOkBtn->setEnabled(true);
        return;
    }
    m_pOkBtn->setEnabled(true);
    emit SigSetIpDlgOk();
    close();
}

void QSetIpAddrDlg::OnCancelBtn()
{
    close();
}

void QSetIpAddrDlg::closeEvent(QCloseEvent* pEvent)
{
    if (m_bPinging) {
        // Nobody waits for this ping any more, which may take half a minute: it ends by itself, and the next
        // use of the dialog has a worker of its own.
        SetPinging(false);
        connect(m_pPingThread, &QThread::finished, m_pPingThread, &QObject::deleteLater);
        if (m_pPingThread->isFinished())
            m_pPingThread->deleteLater();
        CreatePingThread();
    }
    QMainWindowEx::closeEvent(pEvent);
}

void QSetIpAddrDlg::ShowMsg(const QString& strTitle, const QString& strText)
{
    QMessageBoxDlg(this, strTitle, strText, false).exec(false);
}

void QSetIpAddrDlg::keyPressEvent(QKeyEvent* pEvent)
{
    // Nothing reaches the base class: Escape would close the dialog.
    if (pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter)
        OnOkBtn();
}

void QSetIpAddrDlg::changeEvent(QEvent* pEvent)
{
    QMainWindowEx::changeEvent(pEvent);
    if (pEvent->type() == QEvent::LanguageChange)
        RefreshWidgetInfo();
}

void QSetIpAddrDlg::Release()
{
    for (auto* pField : {&m_pIpAddr, &m_pSubnetMask, &m_pGateway}) {
        if (!*pField)
            continue;
        delete (*pField)->edit.Caption();
        delete (*pField)->edit.Edit();
        pField->reset();
    }
    delete std::exchange(m_pNote, nullptr);
    delete std::exchange(m_pValidRange, nullptr);
    delete std::exchange(m_pOkBtn, nullptr);
    delete std::exchange(m_pCancelBtn, nullptr);
    delete std::exchange(m_pMainColumn, nullptr); // With the layouts in it.
}
