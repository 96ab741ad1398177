// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QPushButton>
#include <QVector>

class QAdAction;

/// A push button that is a picture for each of its states. In colour mode the texts that name pictures hold
/// colours instead, as style sheets write them.
///
/// It toggles by itself when it is made checkable, which is apart from QAbstractButton's own checked state.
/// It may carry a menu, whose items with the same positive channel ID exclude each other.
class QImageButton : public QPushButton
{
    Q_OBJECT

public:
    /// Without any look of its own yet.
    explicit QImageButton(bool bColor);
    QImageButton(const QString& strNormal, const QString& strHover, const QString& strPressed, bool bColor);
    QImageButton(const QImageButton&) = delete;
    QImageButton& operator=(const QImageButton&) = delete;
    ~QImageButton() override;

    /// Shows these pictures. For a state whose picture is empty nothing is shown now; SetCheck() will show
    /// the picture that the state had before.
    void SetBtnImage(const QString& strNormal, const QString& strHover, const QString& strPressed,
                     const QString& strDisabled);

    /// Whether a click toggles the button. It counts as unchecked from now on, but looks so only after the
    /// next SetCheck(). Empty pictures leave the ones that it has.
    void SetCheckable(bool bCheckable, const QString& strCheckedNormal, const QString& strCheckedHover,
                      const QString& strCheckedPressed);
    void SetCheck(bool bCheck);
    bool IsChecked() const;

    /// What the signals tell the button by; -1 until it is set.
    void SetBtnIndex(int nIndex);

    void SetBtnTextColor(const QColor& color);
    /// For as long as the mouse is over the button.
    void SetOnBtnTextColor(const QColor& color);

    /// Appends a menu item, a separator for an empty text, and returns its index. Items of a channel ID above
    /// 0 exclude each other.
    int AddMenu(const QString& strText, bool bCheckable, int nChannelId);
    /// Lets a click open the menu.
    void SetMenu();

    // An index without an item is ignored; no such item is checked.
    void SetMenuChecked(int nIndex, bool bChecked);
    bool GetMenuCheckd(int nIndex) const;
    void SetMenuActionEnable(int nIndex, bool bEnable);

signals:
    /// After a click, with the state that it has led to.
    void SigButtonClicked(int iBtnIndex, bool bChecked);
    /// At once, for any mouse button.
    void SigButtonPressed(int iBtnIndex);
    void SigButtonReleased(int iBtnIndex);
    void SigMenuTriggered(int nBtnIndex, int nMenuIndex, long lID, bool bChecked);

public slots:
    void OnButtonClicked();
    void OnMenuTriggered(int nIndex, long lID, bool bChecked);

protected slots:
    void enterEvent(QEvent* pEvent) override;
    void leaveEvent(QEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;

private:
    /// The look in one state, empty without a picture (or colour).
    QString Rule(QLatin1String state, QLatin1String imageProperty, const QString& strValue) const;
    void SetTextColor(const QColor& color);
    bool HasAction(int nIndex) const;

    QString m_strNormal;
    QString m_strHover;
    QString m_strDisabled;
    QString m_strPressed;
    QString m_strCheckedNormal;
    QString m_strCheckedHover;
    QString m_strCheckedPressed;
    bool m_bCheckable = false;
    bool m_bChecked = false;
    QColor m_hoverTextColor = Qt::black;
    QColor m_normalTextColor = Qt::black;
    bool m_bHasHoverColor = false;
    int m_nBtnIndex = -1;
    QMenu* m_pMenu;                  ///< Owned; no widget's child.
    QVector<QAdAction*> m_vecAction; ///< Owned.
    QString m_strBtnName;            ///< What the button's style sheet selects it by: no other button has it.
    bool m_bColor;

    static int g_nBtnGuid;
};
