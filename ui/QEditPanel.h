// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "device/QDevice.h"
#include "ui/QCaptionedEdit.h"

#include <QCoreApplication>
#include <QWidget>

class QPushButtonExColor;
class QRadioButtonEx;

/// The controls in which a camera's addressing and its name are edited. Their owner connects them and decides
/// when they are enabled.
class QEditPanel : public QWidget
{
    Q_DECLARE_TR_FUNCTIONS(MainWidget)

public:
    explicit QEditPanel(QWidget* pParent);

    /// Sets every text of its own again, in the language of now.
    void RefreshTexts();

    IpConfigType ChosenType() const;
    void ChooseType(IpConfigType type);

    void ShowAddresses(const QString& strIp, const QString& strMask, const QString& strGateway);

    /// Puts what is chosen and typed into the device; the addresses only when "Static IP" is chosen.
    void ReadInto(QDevice& device) const;

    /// A camera keeps 15 bytes of a name. A longer one (in UTF-8) loses the rest, and what is left is read as
    /// Latin-1, whatever it was.
    static QString CutUserName(const QString& strName);

    bool HasFocusInAddress() const;
    /// Whether somebody types, or has typed what is not saved.
    bool IsBeingTypedIn() const;

    QRadioButtonEx* const m_pStaticIpRadio;
    QCaptionedEdit m_IpAddr;
    QCaptionedEdit m_SubnetMask;
    QCaptionedEdit m_Gateway;
    QRadioButtonEx* const m_pDhcpRadio;
    QRadioButtonEx* const m_pLlaRadio;
    QCaptionedEdit m_UserId;
    QPushButtonExColor* const m_pSaveBtn;

private:
    void CreateLayout();
};
