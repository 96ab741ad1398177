// SPDX-License-Identifier: Apache-2.0
#include "widgets/QMessageBoxDlg.h"

#include "widgets/QPushButtonEx.h"

#include <QBoxLayout>
#include <QLabel>

namespace {

QPushButtonEx* CreateButton(const QString& strText)
{
    auto* const pButton = new QPushButtonEx;
    pButton->setText(strText);
    pButton->setFixedSize(82, 27);
    return pButton;
}

} // namespace

QMessageBoxDlg::QMessageBoxDlg(QWidget* pParent, const QString& strTitle, const QString& strText,
                               bool bShowCancel)
    : QDialogEx(0, pParent),
      m_strTitle(strTitle),
      m_strText(strText),
      m_bShowCancel(bShowCancel)
{
    CreateCtrl();
    CreateLayout();
    SetTitleText(m_strTitle);
    setFixedSize(400, 200);
}

void QMessageBoxDlg::CreateCtrl()
{
    m_pBtnOk = CreateButton(tr("OK"));
    m_pBtnOk->setDefault(true);
    connect(m_pBtnOk, &QPushButtonEx::clicked, this, &QMessageBoxDlg::OnOkBtnClicked);
    if (m_bShowCancel) {
        m_pBtnCancel = CreateButton(tr("Cancel"));
        connect(m_pBtnCancel, &QPushButtonEx::clicked, this, &QMessageBoxDlg::OnCancelBtnClicked);
    }

    m_pMessage = new QLabel;
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setText(m_strText);
    m_pMessage->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    m_pMessage->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_pMessage->setWordWrap(true);
}

void QMessageBoxDlg::CreateLayout()
{
    auto* const pButtons = new QHBoxLayout;
    pButtons->addStretch();
    pButtons->addWidget(m_pBtnOk);
    if (m_pBtnCancel)
        pButtons->addWidget(m_pBtnCancel);
    pButtons->addStretch();

    auto* const pMain = new QVBoxLayout;
    pMain->addWidget(m_pMessage);
    pMain->addLayout(pButtons);
    SetLayoutEx(pMain);
}

void QMessageBoxDlg::OnOkBtnClicked()
{
    accept();
}

void QMessageBoxDlg::OnCancelBtnClicked()
{
    reject();
}
