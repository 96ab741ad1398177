// SPDX-License-Identifier: Apache-2.0
#include "ui/QPlanWindow.h"

#include "ui/Placement.h"
#include "ui/PlanTexts.h"
#include "ui/PlanWork.h"
#include "ui/QElidedLabel.h"
#include "ui/QPlanTable.h"
#include "ui/QTextView.h"
#include "widgets/QMessageBoxDlg.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QPushButtonExColor.h"
#include "widgets/StyleRules.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>

namespace {

constexpr int Margin = 12;
constexpr QSize ButtonSize(120, 30);
constexpr int GreatestTextHeight = 96;

} // namespace

QPlanWindow::QPlanWindow(QWidget* pOwner, Surveyor survey)
    : QMainWindowEx(pOwner, false),
      m_Survey(std::move(survey)),
      m_pThread(new QPlanThread),
      m_pIsOver(std::make_shared<std::atomic<bool>>(false)),
      m_pShown(std::make_shared<const PlanWork>()),
      m_pSaid(m_pShown)
{
    setWindowFlags(Qt::FramelessWindowHint);
    resize(1080, 620);
    setMinimumWidth(850);
    CreateCtrls();
    CreateLayout();
    RefreshTexts();
    connect(m_pThread, &QThread::finished, this, &QPlanWindow::OnJobEnd);
}

QPlanWindow::~QPlanWindow()
{
    *m_pIsOver = true;
    m_pThread->DeleteWhenDone();
}

void QPlanWindow::CreateCtrls()
{
    m_pHeadline = new QStaticLabel(this);
    m_pHeadline->setStyleSheet(QStringLiteral("QLabel{%1}").arg(TextLook(DarkTextColor, 15)));
    m_pHeadline->setWordWrap(true);
    m_pFile = new QElidedLabel(this);
    m_pNotes = new QTextView(GreatestTextHeight, this);
    m_pOpenBtn = new QPushButtonEx(QString(), this);
    m_pSaveBtn = new QPushButtonEx(QString(), this);
    m_pTable = new QPlanTable(this);
    m_pTable->SetEmptyText(
        {{TRANSLATABLE("Sentence", "A site file says which camera belongs where, and what "
                                   "address it is to have: \"Open\" one."),
          {}},
         {TRANSLATABLE("Sentence", "\"Save as plan\" makes one of what is there now."), {}}});
    m_pDetails = new QTextView(GreatestTextHeight, this);
    m_pReplaceBtn = new QPushButtonEx(QString(), this);
    m_pAgainBtn = new QPushButtonEx(QString(), this);
    m_pStopBtn = new QPushButtonEx(QString(), this);
    m_pApplyBtn = new QPushButtonExColor(QString(), this);
    for (QPushButton* const pButton :
         {m_pOpenBtn, m_pSaveBtn, m_pReplaceBtn, m_pAgainBtn, m_pStopBtn, m_pApplyBtn}) {
        pButton->setFixedSize(ButtonSize);
        pButton->setAutoDefault(false);
    }
    connect(m_pOpenBtn, &QPushButton::clicked, this, &QPlanWindow::OnOpenBtn);
    connect(m_pSaveBtn, &QPushButton::clicked, this, &QPlanWindow::OnSaveBtn);
    connect(m_pReplaceBtn, &QPushButton::clicked, this, &QPlanWindow::OnReplaceBtn);
    connect(m_pAgainBtn, &QPushButton::clicked, this, &QPlanWindow::Look);
    connect(m_pStopBtn, &QPushButton::clicked, this, &QPlanWindow::OnStopBtn);
    connect(m_pApplyBtn, &QPushButton::clicked, this, &QPlanWindow::Apply);
    connect(m_pTable, &QTableWidget::itemSelectionChanged, this, &QPlanWindow::ShowState);
}

void QPlanWindow::CreateLayout()
{
    auto* const pHeadline = new QHBoxLayout;
    pHeadline->setSpacing(Margin);
    auto* const pTexts = new QVBoxLayout;
    pTexts->setSpacing(4);
    pTexts->addWidget(m_pHeadline);
    pTexts->addWidget(m_pFile);
    pHeadline->addLayout(pTexts, 1);
    pHeadline->addWidget(m_pOpenBtn);
    pHeadline->addWidget(m_pSaveBtn);

    auto* const pButtons = new QHBoxLayout;
    pButtons->setSpacing(Margin);
    pButtons->addWidget(m_pReplaceBtn);
    pButtons->addStretch(1);
    pButtons->addWidget(m_pStopBtn);
    pButtons->addWidget(m_pAgainBtn);
    pButtons->addWidget(m_pApplyBtn);

    auto* const pColumn = new QVBoxLayout;
    pColumn->setContentsMargins(Margin, Margin, Margin, Margin + 4);
    pColumn->setSpacing(Margin);
    pColumn->addLayout(pHeadline);
    pColumn->addWidget(m_pNotes);
    pColumn->addWidget(m_pTable, 1);
    pColumn->addWidget(m_pDetails);
    pColumn->addLayout(pButtons);
    SetLayoutEx(pColumn);
}

void QPlanWindow::RefreshTexts()
{
    QString strTitle = tr("Plan");
    SetTitleText(strTitle);
    m_pOpenBtn->setText(tr("Open..."));
    m_pOpenBtn->setShortcut(QKeySequence::Open); // A new text takes a button's shortcut away.
    m_pSaveBtn->setText(tr("Save as plan..."));
    m_pSaveBtn->setToolTip(tr("What is there now, as a file. To apply it brings all of this back."));
    m_pSaveBtn->setAccessibleDescription(m_pSaveBtn->toolTip());
    m_pReplaceBtn->setText(tr("Replace..."));
    m_pReplaceBtn->setToolTip(tr("Gives the selected place the camera that is new there"));
    m_pReplaceBtn->setAccessibleDescription(m_pReplaceBtn->toolTip());
    m_pAgainBtn->setText(tr("Look again"));
    m_pAgainBtn->setShortcut(Qt::Key_F5);
    m_pStopBtn->setText(tr("Stop"));
    m_pStopBtn->setToolTip(tr("Begins no more cameras; those that are begun are finished or put back"));
    m_pStopBtn->setAccessibleDescription(m_pStopBtn->toolTip());
    m_pApplyBtn->setText(tr("Apply"));
    m_pTable->RefreshTexts();
    ShowState();
}

void QPlanWindow::changeEvent(QEvent* pEvent)
{
    QMainWindowEx::changeEvent(pEvent);
    if (pEvent->type() == QEvent::LanguageChange && m_pApplyBtn)
        RefreshTexts();
}

void QPlanWindow::closeEvent(QCloseEvent* pEvent)
{
    const bool bJustLooks = m_job == Job::None || m_job == Job::Look;
    if (bJustLooks || ChangesCameras())
        *m_pIsOver = true;
    if (bJustLooks) {
        QMainWindowEx::closeEvent(pEvent);
        return;
    }
    m_bCloses = true;
    pEvent->ignore();
    ShowState();
}

void QPlanWindow::keyPressEvent(QKeyEvent* pEvent)
{
    auto* const pButton = qobject_cast<QPushButton*>(focusWidget());
    const bool bReturn = pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter;
    if (bReturn && pButton)
        pButton->click();
    else
        QMainWindowEx::keyPressEvent(pEvent);
}

void QPlanWindow::Open()
{
    m_bCloses = false;
    if (!isVisible() && !m_strFile.isEmpty())
        Look();
    show();
    raise();
    activateWindow();
}

QString QPlanWindow::ChooseFile(bool bToSave)
{
    QFileDialog dialog(this, bToSave ? tr("Save as plan") : tr("Open a site file"));
    dialog.setAcceptMode(bToSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(bToSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters({tr("Site files (*.yaml *.yml)"), tr("All files (*)")});
    dialog.setDefaultSuffix(QStringLiteral("yaml"));
    if (!m_strFile.isEmpty())
        dialog.setDirectory(QFileInfo(m_strFile).absolutePath());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void QPlanWindow::OnOpenBtn()
{
    const QString strFile = ChooseFile(false);
    if (strFile.isEmpty() || IsWorking())
        return;
    m_strFile = strFile;
    m_pShown = std::make_shared<const PlanWork>();
    m_pTable->ShowPlan(m_pShown);
    Look();
}

void QPlanWindow::OnSaveBtn()
{
    QMenu choice(this);
    choice.addAction(tr("Cameras by MAC address"))->setData(static_cast<int>(site::MatchBy::Mac));
    choice.addAction(tr("Cameras by serial number"))->setData(static_cast<int>(site::MatchBy::Serial));
    choice.addAction(tr("Cameras by network adapter"))->setData(static_cast<int>(site::MatchBy::Adapter));
    choice.setActiveAction(choice.actions().front());
    const QAction* const pChosen = choice.exec(m_pSaveBtn->mapToGlobal(QPoint(0, m_pSaveBtn->height())));
    if (!pChosen)
        return;
    const auto by = static_cast<site::MatchBy>(pChosen->data().toInt());
    const QString strFile = ChooseFile(true);
    if (strFile.isEmpty() || IsWorking())
        return;
    Start(Job::Save,
          [strFile, by](const PlanSurroundings& around) { return SaveAsPlan(strFile, by, around); });
}

void QPlanWindow::OnReplaceBtn()
{
    const int nRow = m_pTable->SelectedRow();
    const auto nTask = static_cast<std::size_t>(nRow);
    if (IsWorking() || nRow < 0 || !m_pShown->ReplacementOf(nTask))
        return;
    QMessageBoxDlg question(this, tr("Replace"), m_pTable->QuestionAt(nRow), true);
    MoveToDesktopCentre(question);
    if (question.exec(false) != QDialog::Accepted || IsWorking())
        return;
    const auto pShown = m_pShown;
    Start(Job::Replace,
          [pShown, nTask](const PlanSurroundings& around) { return ReplaceCamera(*pShown, nTask, around); });
}

void QPlanWindow::OnStopBtn()
{
    *m_pIsOver = true;
    ShowState();
}

void QPlanWindow::Look()
{
    const QString strFile = m_strFile;
    if (!strFile.isEmpty())
        Start(Job::Look, [strFile](const PlanSurroundings& around) { return LookAtPlan(strFile, around); });
}

void QPlanWindow::Apply()
{
    const auto pShown = m_pShown;
    if (pShown->IsApplicable())
        Start(Job::Apply, [pShown](const PlanSurroundings& around) { return ApplyPlan(*pShown, around); });
}

void QPlanWindow::Start(Job job, std::function<PlanWork(const PlanSurroundings&)> work)
{
    if (IsWorking())
        return;
    m_pSaid = std::make_shared<const PlanWork>();
    m_job = job;
    m_bCloses = false;
    m_strError.clear();
    m_pIsOver = std::make_shared<std::atomic<bool>>(false);

    PlanSurroundings surroundings;
    surroundings.survey = m_Survey;
    surroundings.isOver = [pIsOver = m_pIsOver] { return pIsOver->load(); };
    // The thread outlives its job, which this window need not.
    surroundings.onStep = [pThread = m_pThread, pWindow = QPointer(this)](std::size_t nTask,
                                                                          const PlanStep& step) {
        QMetaObject::invokeMethod(pThread, [pWindow, nTask, step] {
            if (!pWindow)
                return;
            pWindow->m_pTable->ShowStep(static_cast<int>(nTask), step);
            pWindow->ShowState();
        });
    };
    m_pThread->SetJob([work = std::move(work), surroundings = std::move(surroundings)] {
        return std::make_shared<const PlanWork>(work(surroundings));
    });
    m_pThread->start();
    ShowState();
    m_pTable->setFocus(); // The button that was pressed is out of use.
}

void QPlanWindow::OnJobEnd()
{
    const bool bChanged = ChangesCameras();
    const Job job = std::exchange(m_job, Job::None);
    if (job == Job::Look && *m_pIsOver) {
        // The window was closed, and it has not seen all.
        if (isVisible())
            Look();
        return;
    }
    const auto pResult = m_pThread->GetResult();
    m_strError = m_pThread->GetErrorText();
    if (pResult && (job != Job::Look || !pResult->failure.empty()))
        m_pSaid = pResult;
    if (pResult && job != Job::Save)
        m_pShown = pResult;
    m_pTable->ShowPlan(m_pShown);
    ShowState();
    if (bChanged && (!pResult || pResult->bChangedCameras))
        emit SigCamerasChanged();
    const bool bToBeRead = HasFailedOne(*m_pShown) || !m_pSaid->failure.empty() || !m_strError.isEmpty();
    if (m_bCloses && !bToBeRead)
        close();
    else if (job == Job::Replace && pResult && pResult->bHasReplaced)
        LookAfterwards();
}

void QPlanWindow::LookAfterwards()
{
    const auto pSaid = m_pSaid;
    Look();
    m_pSaid = pSaid;
    ShowState();
}

void QPlanWindow::ShowState()
{
    const bool bIdle = !IsWorking();
    const int nRow = m_pTable->SelectedRow();
    m_pOpenBtn->setEnabled(bIdle);
    m_pSaveBtn->setEnabled(bIdle);
    m_pReplaceBtn->setEnabled(bIdle && nRow >= 0 && m_pShown->ReplacementOf(static_cast<std::size_t>(nRow)));
    m_pAgainBtn->setEnabled(bIdle && !m_strFile.isEmpty());
    m_pStopBtn->setVisible(ChangesCameras());
    m_pStopBtn->setEnabled(!*m_pIsOver);
    m_pApplyBtn->setEnabled(bIdle && m_pShown->IsApplicable());
    m_pHeadline->setText(Headline());
    m_pFile->setText(m_strFile);
    const PlanNotes notes = NotesOn(*m_pShown, *m_pSaid);
    m_pNotes->SetText(notes.strText, notes.color);
    m_pDetails->SetText(m_pTable->DetailsAt(nRow), TextColor);
}

QString QPlanWindow::Headline() const
{
    if (ChangesCameras())
        return *m_pIsOver
                   ? tr("Stopping: cameras that are begun are finished or put back ...")
                   : tr("Applying: %1 of %2 done").arg(m_pTable->DoneCount()).arg(m_pTable->rowCount());
    if (IsWorking())
        return tr("Looking ... This takes a few seconds.");
    if (!m_strError.isEmpty())
        return tr("Nothing could be looked at: %1").arg(m_strError);
    if (!m_pShown->plan)
        return m_strFile.isEmpty() ? tr("No file is open.") : tr("This file is no plan.");
    return HeadlineOf(*m_pShown);
}
