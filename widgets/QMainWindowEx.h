// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QPointer>

class QLabel;
class QMenuBar;
class QTitleBar;

/// A top-level window without the window manager's frame: a title bar, thin black borders and a white content
/// area, which the user sizes at its lower right corner. Escape does not close it.
class QMainWindowEx : public QDialog
{
    Q_OBJECT

public:
    /// The window has no parent. One that is given here is only the window above which it stays.
    QMainWindowEx(QWidget* pParent, bool bShowMinButton);

    void SetTitleText(QString& strText);

    /// The title bar's: the window's to fill and to place.
    QMenuBar* MenuBar() const;

    /// Lays out the content; null is ignored. The layout becomes the window's own.
    void SetLayoutEx(QLayout* pLayout);

public slots:
    /// Takes the size grip away from a window that fills the screen (0), and gives it back (1).
    void OnTitleButtonClicked(int nType);

protected slots:
    void resizeEvent(QResizeEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    void CreateCtrl();
    void CreateLayout();

    QPointer<QWidget> m_pOwner;
    QTitleBar* m_pTitleBar = nullptr;
    QLabel* m_pIcon = nullptr; ///< For a picture of the window's own; there is none yet, and it is not shown.
    QWidget* m_pTitleLeft = nullptr;
    QWidget* m_pTitleRight = nullptr;
    QWidget* m_pContentLeft = nullptr;
    QWidget* m_pContentMiddle = nullptr;
    QWidget* m_pContentRight = nullptr;
    QWidget* m_pBottomLine = nullptr;
    bool m_bShowMinButton;
};
