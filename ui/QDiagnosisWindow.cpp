// SPDX-License-Identifier: Apache-2.0
#include "ui/QDiagnosisWindow.h"

#include "doctor/Doctor.h"
#include "ui/QElidedLabel.h"
#include "ui/QFindingView.h"
#include "ui/Spoken.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/QScrollAreaEx.h"
#include "widgets/StyleRules.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>

namespace {

constexpr int Margin = 12;
constexpr QSize ButtonSize(110, 30);

} // namespace

QDiagnosisWindow::QDiagnosisWindow(QWidget* pOwner, Examiner examiner)
    : QMainWindowEx(pOwner, false),
      m_Examiner(std::move(examiner)),
      m_pThread(new QDiagnosisThread)
{
    setWindowFlags(Qt::FramelessWindowHint);
    resize(680, 520);
    setMinimumSize(420, 280);
    CreateCtrls();
    CreateLayout();
    RefreshTexts();
    connect(m_pThread, &QThread::finished, this, &QDiagnosisWindow::OnLookEnd);
}

QDiagnosisWindow::~QDiagnosisWindow()
{
    m_pThread->DeleteWhenDone();
}

void QDiagnosisWindow::CreateCtrls()
{
    m_pHeadline = new QStaticLabel(this);
    m_pHeadline->setStyleSheet(QStringLiteral("QLabel{%1}").arg(TextLook(DarkTextColor, 15)));
    m_pHeadline->setWordWrap(true);
    m_pScroll = new QScrollAreaEx(this);
    m_pScroll->setFrameShape(QFrame::NoFrame);
    m_pScroll->setWidgetResizable(true);
    m_pScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pCopied = new QElidedLabel(this);
    m_pAgainBtn = new QPushButtonExColor(QString(), this);
    m_pCopyAllBtn = new QPushButtonEx(QString(), this);
    for (QPushButton* const pButton :
         {static_cast<QPushButton*>(m_pAgainBtn), static_cast<QPushButton*>(m_pCopyAllBtn)}) {
        pButton->setFixedSize(ButtonSize);
        pButton->setAutoDefault(false);
    }
    connect(m_pAgainBtn, &QPushButton::clicked, this, &QDiagnosisWindow::Look);
    connect(m_pCopyAllBtn, &QPushButton::clicked, this, [this] { Copy(Page()); });
}

void QDiagnosisWindow::CreateLayout()
{
    auto* const pButtons = new QHBoxLayout;
    pButtons->setSpacing(Margin);
    pButtons->addWidget(m_pCopied, 1);
    pButtons->addWidget(m_pCopyAllBtn);
    pButtons->addWidget(m_pAgainBtn);

    auto* const pColumn = new QVBoxLayout;
    pColumn->setContentsMargins(Margin, Margin, Margin, Margin + 4);
    pColumn->setSpacing(Margin);
    pColumn->addWidget(m_pHeadline);
    pColumn->addWidget(m_pScroll, 1);
    pColumn->addLayout(pButtons);
    SetLayoutEx(pColumn);
}

void QDiagnosisWindow::RefreshTexts()
{
    QString strTitle = tr("Diagnosis");
    SetTitleText(strTitle);
    m_pAgainBtn->setText(tr("Look again"));
    m_pAgainBtn->setShortcut(Qt::Key_F5); // A new text takes a button's shortcut away.
    m_pCopyAllBtn->setText(tr("Copy all"));
    m_pCopyAllBtn->setToolTip(tr("As text for a mail, in English"));
    m_pCopyAllBtn->setAccessibleDescription(m_pCopyAllBtn->toolTip());
    m_pCopied->clear();
    ShowFindings();
}

void QDiagnosisWindow::changeEvent(QEvent* pEvent)
{
    QMainWindowEx::changeEvent(pEvent);
    if (pEvent->type() == QEvent::LanguageChange && m_pCopyAllBtn)
        RefreshTexts();
}

void QDiagnosisWindow::Open()
{
    if (!isVisible())
        Look();
    show();
    raise();
    activateWindow();
}

void QDiagnosisWindow::Look()
{
    if (m_bLooking)
        return;
    m_bLooking = true;
    m_pCopied->clear();
    ShowFindings();
    m_pThread->SetJob(m_Examiner);
    m_pThread->start();
}

void QDiagnosisWindow::OnLookEnd()
{
    m_bLooking = false;
    ShowFindings();
}

void QDiagnosisWindow::ShowFindings()
{
    m_pAgainBtn->setEnabled(!m_bLooking);
    m_pHeadline->setText(Headline());
    auto* const pFindings = new QWidget;
    pFindings->setObjectName(QStringLiteral("findings"));
    pFindings->setStyleSheet(QStringLiteral("#findings{background-color:white;}"));
    auto* const pColumn = new QVBoxLayout(pFindings);
    pColumn->setContentsMargins(0, 0, Margin, 0);
    pColumn->setSpacing(Margin);
    // The worker writes its result while it looks.
    const auto pDiagnosis = m_bLooking ? nullptr : m_pThread->GetResult();
    m_pCopyAllBtn->setEnabled(pDiagnosis != nullptr);
    if (pDiagnosis) {
        for (const doctor::Finding& finding : pDiagnosis->findings) {
            auto* const pView = new QFindingView(finding);
            connect(pView, &QFindingView::SigCopy, this, &QDiagnosisWindow::Copy);
            pColumn->addWidget(pView);
        }
    }
    pColumn->addStretch();
    m_pScroll->setWidget(pFindings); // Deletes the one before.
}

QString QDiagnosisWindow::Headline() const
{
    if (m_bLooking)
        return tr("Looking ... This takes a few seconds.");
    const auto& pDiagnosis = m_pThread->GetResult();
    if (!pDiagnosis)
        return m_pThread->GetErrorText().isEmpty()
                   ? QString()
                   : tr("Nothing could be looked at: %1").arg(m_pThread->GetErrorText());
    if (pDiagnosis->findings.empty())
        return tr("Nothing wrong was found on this computer's networks.");
    return pDiagnosis->findings.size() == 1
               ? tr("1 finding")
               : tr("%1 findings, the worst first").arg(pDiagnosis->findings.size());
}

QString QDiagnosisWindow::Page() const
{
    const auto& pDiagnosis = m_pThread->GetResult();
    return pDiagnosis ? QString::fromStdString(doctor::page(*pDiagnosis, &Harmless)) : QString();
}

void QDiagnosisWindow::Copy(const QString& strText)
{
    QGuiApplication::clipboard()->setText(strText);
    m_pCopied->setText(tr("Copied"));
}
