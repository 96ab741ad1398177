// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLineEdit>

/// A line edit in the kit's look whose signals carry the text.
class QLineEditEx : public QLineEdit
{
    Q_OBJECT

public:
    explicit QLineEditEx(QWidget* pParent = nullptr);
    explicit QLineEditEx(const QString& strText, QWidget* pParent = nullptr);

signals:
    /// For the owner to emit; the line edit itself never does.
    void SigSave(QString strText);
    /// Return or Enter is pressed. Comes before the line edit itself handles the key.
    void SigEnterKeyPress(QString strText);
    /// The focus is lost, whether or not the text has changed.
    void SigFocusOutEvent(QString strText);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    void Init();
};
