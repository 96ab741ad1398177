// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "widgets/QDialogEx.h"

class QPushButtonEx;
class QVBoxLayout;

/// A modal question or notice of 400 x 200 pixels. The caller places it and runs it with exec(bool), which
/// returns QDialog::Accepted after "OK" and QDialog::Rejected after "Cancel" or the close button. Title and
/// text are shown as they are, never as markup; a long text in smaller letters.
class QMessageBoxDlg : public QDialogEx
{
    Q_OBJECT

public:
    QMessageBoxDlg(QWidget* pParent, const QString& strTitle, const QString& strText, bool bShowCancel);

public slots:
    void OnOkBtnClicked();
    void OnCancelBtnClicked();

private:
    void CreateCtrl();
    void CreateLayout();
    /// Makes the letters small enough for the whole message; one that is still too long ends in dots.
    void FitMessage();

    QPushButtonEx* m_pBtnOk = nullptr;
    QPushButtonEx* m_pBtnCancel = nullptr; ///< Null in a notice.
    QLabel* m_pMessage = nullptr;
    QHBoxLayout* m_pButtonRow = nullptr;
    QVBoxLayout* m_pMainLayout = nullptr;
    QString m_strTitle;
    QString m_strText;
    bool m_bShowCancel;
};
