// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/QDiagnosisThread.h"
#include "widgets/QMainWindowEx.h"

class QElidedLabel;
class QLabel;
class QPushButtonEx;
class QPushButtonExColor;
class QScrollAreaEx;
class QStaticLabel;
class QVBoxLayout;

/// What is wrong on the networks, one finding below the other. It stands beside its owner, which stays in
/// use. It looks when it is opened and when it is asked to; nothing is repaired by it.
///
/// Used on the user-interface thread alone. A worker that looks when this is destroyed is neither stopped nor
/// waited for.
class QDiagnosisWindow : public QMainWindowEx
{
    Q_OBJECT

public:
    QDiagnosisWindow(QWidget* pOwner, Examiner examiner);
    ~QDiagnosisWindow() override;

    /// Shows it and looks, unless it is already there; then it comes to the front.
    void Open();

    bool IsLooking() const { return m_bLooking; }

protected:
    void changeEvent(QEvent* pEvent) override;

private:
    void CreateCtrls();
    void CreateLayout();
    void RefreshTexts();

    void Look();
    void OnLookEnd();
    /// What was found by the last look; nothing while one runs.
    void ShowFindings();
    QString Headline() const;
    /// What a mail can say of it, in English.
    QString Page() const;
    void Copy(const QString& strText);

    const Examiner m_Examiner;
    QDiagnosisThread* const m_pThread;
    bool m_bLooking = false;

    QStaticLabel* m_pHeadline = nullptr;
    QScrollAreaEx* m_pScroll = nullptr;
    QElidedLabel* m_pCopied = nullptr; ///< Says so.
    QPushButtonExColor* m_pAgainBtn = nullptr;
    QPushButtonEx* m_pCopyAllBtn = nullptr;
};
