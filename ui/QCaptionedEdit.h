// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QLineEditEx;
class QStaticLabel;
class QWidget;

/// A field and the caption that names it, for assistive technology too. Both widgets belong to their parent,
/// which also lays them out.
class QCaptionedEdit
{
public:
    explicit QCaptionedEdit(QWidget* pParent);

    QStaticLabel* Caption() const { return m_pCaption; }
    QLineEditEx* Edit() const { return m_pEdit; }

    void SetCaption(const QString& strCaption);
    void SetEnabled(bool bEnable);

    /// Shows the text in the normal look, or in red.
    void ShowValid(bool bValid);

private:
    QStaticLabel* m_pCaption;
    QLineEditEx* m_pEdit;
    QString m_strKitSheet;
};
