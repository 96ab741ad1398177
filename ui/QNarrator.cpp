// SPDX-License-Identifier: Apache-2.0
#include "ui/QNarrator.h"

#include "doctor/Doctor.h"
#include "ui/Observation.h"
#include "ui/QDeviceTable.h"
#include "ui/QStatusLine.h"
#include "ui/Tidings.h"

#include <algorithm>

using base::Sentence;

namespace {

/// How a camera that restarts is waited for: for a minute and a half.
constexpr std::chrono::milliseconds WaitingLook{2000};
constexpr int WaitingLooks = 45;

IpConfigType TypeOf(const inventory::Camera& camera)
{
    switch (camera.method) {
    case inventory::IpMethod::Static:
        return IpConfigType::Static;
    case inventory::IpMethod::Dhcp:
        return IpConfigType::Dhcp;
    case inventory::IpMethod::LinkLocal:
        break;
    }
    return IpConfigType::LinkLocal;
}

} // namespace

QNarrator::QNarrator(QStatusLine* pStatusLine, QDeviceTable* pTable, QObject* pParent)
    : QObject(pParent),
      m_pStatusLine(pStatusLine),
      m_pTable(pTable),
      m_pLookThread(new QJobThread<Observation>),
      m_pDiagnosisThread(new QDiagnosisThread),
      m_Examiner(DoctorsExaminer())
{
    connect(m_pLookThread, &QThread::finished, this, &QNarrator::OnLookEnd);
    connect(m_pDiagnosisThread, &QThread::finished, this, &QNarrator::OnDiagnosisEnd);
}

QNarrator::~QNarrator()
{
    m_pLookThread->DeleteWhenDone();
    m_pDiagnosisThread->DeleteWhenDone();
}

void QNarrator::SetExaminer(Examiner examiner)
{
    m_Examiner = std::move(examiner);
}

bool QNarrator::IsLooking() const
{
    return m_listInLook || m_listInDiagnosis;
}

void QNarrator::OnSearch()
{
    m_bSearching = true;
    m_conflicts.clear();
    if (m_save && m_save->bChanged)
        m_save->bSearched = true;
    if (!m_save && !m_restart && !m_bActionIsNew)
        m_action.clear();
    m_bActionIsNew = false;
    m_pTable->SetEmptyText({{TRANSLATABLE("Sentence", "Searching ..."), {}}});
    Tell();
}

void QNarrator::OnList(const QVector<QDevice>& devices)
{
    m_bSearching = false;
    m_devices = devices;
    ++m_nLists;
    if (m_save && m_save->bSearched && !m_save->bRestarts) {
        m_action = OutcomeOf(m_save->before, m_save->asked, devices);
        m_save.reset();
    }
    m_pTable->SetRemarks({});
    if (devices.isEmpty()) {
        StartDiagnosis();
    } else {
        m_pTable->SetEmptyText({});
        StartLook();
    }
    Tell();
}

void QNarrator::OnSave(const QDevice& before, const QDevice& asked)
{
    m_save = Save{before, asked};
    m_restart.reset();
    m_action = {{TRANSLATABLE("Sentence", "Changing %1 ..."), {NameOf(before)}}};
    Tell();
}

void QNarrator::OnRestarting()
{
    if (m_save)
        m_save->bRestarts = true;
}

void QNarrator::OnCameraChanged()
{
    if (m_save)
        m_save->bChanged = true;
}

void QNarrator::OnSaved()
{
    if (!m_save)
        return;
    const QDevice& asked = m_save->asked;
    if (m_save->bRestarts) {
        m_restart = Restart{asked.m_strMacAddress.toStdString(), NameOf(asked),
                            asked.ConfigType().value_or(IpConfigType::LinkLocal), WaitingLooks};
        m_action = {{TRANSLATABLE("Sentence", "%1 restarts; this can take a minute"), {m_restart->name}}};
        m_save.reset();
        StartLook();
    } else if (!m_save->bChanged) {
        m_action = {
            {TRANSLATABLE("Sentence", "The change of %1 was not completed"), {NameOf(m_save->before)}}};
        m_save.reset();
    }
    Tell();
}

void QNarrator::OnPlanApplied()
{
    if (m_save || m_restart)
        return;
    m_action = {{TRANSLATABLE("Sentence", "A plan was applied"), {}}};
    m_bActionIsNew = true;
    Tell();
}

void QNarrator::OnHeardUnlisted()
{
    m_action.push_back({TRANSLATABLE("Sentence", "F5 shows it as it is now"), {}});
    m_bActionIsNew = false;
    Tell();
}

void QNarrator::StartLook()
{
    if (m_listInLook)
        return; // Its end finds out that it is about an older list, and begins anew.
    m_listInLook = m_nLists;
    const std::chrono::milliseconds time = m_restart ? WaitingLook : std::chrono::milliseconds::zero();
    m_pLookThread->SetJob([time] { return Observe(time); });
    m_pLookThread->start();
}

void QNarrator::OnLookEnd()
{
    const bool bStale = m_listInLook != m_nLists || m_bSearching;
    m_listInLook.reset();
    const std::shared_ptr<const Observation> pObservation = m_pLookThread->GetResult();
    if (pObservation && !bStale) {
        m_conflicts = pObservation->Conflicts();
        m_pTable->SetRemarks(pObservation->Remarks());
        Tell();
    }
    if (m_restart)
        LookForRestarted(pObservation.get());
    else if (bStale && !m_bSearching && !m_devices.isEmpty())
        StartLook();
}

void QNarrator::LookForRestarted(const Observation* pObservation)
{
    const auto isThere = [this](const inventory::Camera& camera) {
        return camera.mac.toText() == m_restart->mac && TypeOf(camera) == m_restart->type;
    };
    if (pObservation && std::any_of(pObservation->inventory.cameras.begin(),
                                    pObservation->inventory.cameras.end(), isThere)) {
        m_action = {{TRANSLATABLE("Sentence", "%1 is heard again"), {m_restart->name}}};
        m_bActionIsNew = true;
        m_restart.reset();
        Tell();
        emit SigHeardAgain();
    } else if (--m_restart->nLooksLeft > 0) {
        StartLook();
    } else {
        m_action = {
            {TRANSLATABLE("Sentence", "%1 was not heard again after its restart"), {m_restart->name}}};
        m_restart.reset();
        Tell();
    }
}

void QNarrator::StartDiagnosis()
{
    m_pTable->SetEmptyText(
        {{TRANSLATABLE("Sentence", "No camera has answered. Looking for the reason ..."), {}}});
    if (m_listInDiagnosis)
        return; // Its end begins anew.
    m_listInDiagnosis = m_nLists;
    m_pDiagnosisThread->SetJob(m_Examiner);
    m_pDiagnosisThread->start();
}

void QNarrator::OnDiagnosisEnd()
{
    const bool bStale = m_listInDiagnosis != m_nLists || m_bSearching;
    m_listInDiagnosis.reset();
    if (bStale) {
        if (!m_bSearching && m_devices.isEmpty())
            StartDiagnosis();
        return;
    }
    std::vector<Sentence> text{{TRANSLATABLE("Sentence", "No camera has answered."), {}}};
    const auto& pDiagnosis = m_pDiagnosisThread->GetResult();
    if (!pDiagnosis) {
        text.push_back({TRANSLATABLE("Sentence", "Nothing could be looked at: %1."),
                        {m_pDiagnosisThread->GetErrorText().toStdString()}});
    } else if (pDiagnosis->findings.empty()) {
        text.push_back({TRANSLATABLE("Sentence", "Nothing wrong is seen on this computer: look whether the "
                                                 "cameras have power and their cables are plugged in."),
                        {}});
    } else {
        const auto& first = pDiagnosis->findings.front().text;
        text.insert(text.end(), first.begin(), first.end());
        text.push_back({TRANSLATABLE("Sentence", "\"Diagnose\" tells more."), {}});
    }
    m_pTable->SetEmptyText(std::move(text));
}

void QNarrator::Tell()
{
    std::vector<Sentence> news = m_action;
    news.insert(news.end(), m_conflicts.begin(), m_conflicts.end());
    if (m_bSearching)
        news.push_back({TRANSLATABLE("Sentence", "Searching ..."), {}});
    else if (m_nLists > 0)
        news.push_back(CountOf(m_devices));
    m_pStatusLine->Tell(std::move(news));
}
