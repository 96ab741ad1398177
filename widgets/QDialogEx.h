// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QHBoxLayout;
class QImageButton;
class QLabel;

/// A dialog without the window manager's frame: it draws a title strip with a close button, borders and a
/// bottom strip itself, and is dragged by the title strip. Escape does not close it.
class QDialogEx : public QDialog
{
    Q_OBJECT

public:
    /// The bottom style is 0 for a border of one pixel, 1 for a tall dark strip, 2 for a tall light one; any
    /// other draws none.
    QDialogEx(int nBottomStyle, QWidget* pParent);

    /// Puts a blank in front of the text, in the caller's own string, and shows it as it is then.
    void SetTitleText(QString& strText);

    /// Lays out the content; null is ignored. The layout becomes the dialog's own.
    void SetLayoutEx(QLayout* pLayout);

    /// Fixes the content's size to the dialog's less the frame, and returns the content's geometry.
    QRect geometryEx() const;
    /// The native window of the content.
    WId winIdEx() const;

    /// Whether the dialog follows the next mouse moves.
    void SetMoveable(bool bMoveable);

    QHBoxLayout* GetBtnLayout() const; ///< Of the title strip.
    QImageButton* GetCloseBtn() const;
    QWidget* GetBottomWidget() const; ///< The middle of the bottom strip; null when there is none.

    using QDialog::exec;
    /// Runs the dialog, modal for the whole application or for its parent window alone.
    int exec(bool bApplicationModal);

    // The frame's look while the dialog is active and while it is not. Without effect after
    // SetChangeTitleColor(false).
    void SetActivateDialg();
    void SetDeactivateDilog();
    void SetChangeTitleColor(bool bChange);

    static bool IsUbuntuSystem();

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

signals:
    /// Where the dialog's corner is to go if the pointer drags it there: with every mouse move, whether or
    /// not it is being dragged.
    void SigMoveDialog(QPoint qPos);

public slots:
    void OnClickedClose();
    void OnPressedClose(int iButtonIndex);

protected slots:
    void keyPressEvent(QKeyEvent* pEvent) override;

protected:
    void changeEvent(QEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;

private:
    void CreateCtrl();
    void CreateTitle();
    void CreateBottom();
    void CreateLayout();
    void Restyle(const QString& strTitleSuffix, int nBorderGrey);

    QLabel* m_pTitleMiddle = nullptr;
    QLabel* m_pTitleLeft = nullptr;
    QLabel* m_pTitleRight = nullptr;
    QWidget* m_pContentMiddle = nullptr;
    QWidget* m_pContentLeft = nullptr;
    QWidget* m_pContentRight = nullptr;
    QWidget* m_pBottomMiddle = nullptr;
    QWidget* m_pBottomLeft = nullptr;
    QWidget* m_pBottomRight = nullptr;
    QImageButton* m_pBtnClose = nullptr;
    QLabel* m_pTitle = nullptr;
    QHBoxLayout* m_pTitleBarLayout = nullptr;
    QPoint m_pressPosition; ///< Of the last press, in the dialog.
    bool m_bMove = false;
    int m_nBottomStyle;
    bool m_bChangeTitleColor = true;
    bool m_bUbuntu;
};
