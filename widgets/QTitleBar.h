// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>
#include <QWidget>

class QGridLayout;
class QHBoxLayout;
class QImageButton;
class QLabel;
class QMenuBar;

/// The blue title bar of a window without the window manager's frame. Its owner is the window that it is laid
/// out in: that one it drags, minimises and closes.
///
/// The menu bar is the owner's to fill and to place. The maximise button is not shown, but works when the
/// owner calls its slots: it fills the screen's available area without maximising, and restores.
class QTitleBar : public QWidget
{
    Q_OBJECT

public:
    /// The parent is not used: the bar becomes a child of the window in whose layout it is put.
    QTitleBar(QWidget* pParent, bool bShowMinButton);

    void SetTitleText(QString& strText);
    QMenuBar* MenuBar() const;

    /// Whether the owner fills the default screen's available area exactly.
    bool IsMaximized() const;

signals:
    /// The window is about to fill the screen (0) or to be restored (1), was minimised (2), is about to close
    /// (3).
    void SigTitleButtonClicked(int nType);

public slots:
    void OnClickedMinSize();
    void OnClickedMaxSize();
    void OnClickedClose();
    void OnPressedMinSize(int iButtonIndex);
    void OnPressedMaxSize(int iButtonIndex);
    void OnPressedClose(int iButtonIndex);

protected:
    void changeEvent(QEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;

private:
    void CreateCtrl();
    void CreateButtons();
    void CreateMenuBar();
    void RefreshTexts(); ///< What screen readers call the buttons.
    void CreateLayout();
    void ConnectSlot();

    QWidget* m_pButtonContainer = nullptr;
    QImageButton* m_pBtnMax = nullptr; ///< Checked while the owner has its normal geometry.
    QImageButton* m_pBtnMin = nullptr;
    QImageButton* m_pBtnClose = nullptr;
    QMenuBar* m_pMenuBar = nullptr;
    QLabel* m_pTitle = nullptr;
    QLabel* m_pFiller = nullptr;
    QLabel* m_pBackground = nullptr;
    QPoint m_pressPosition; ///< Of the last press, in the bar.
    bool m_bMove = false;
    QRect m_normalGeometry{0, 0, 1024, 768}; ///< Where restoring goes.
    bool m_bUbuntu;
    bool m_bShowMinButton;
};
