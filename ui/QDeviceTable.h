// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QIcon>
#include <QTableWidget>
#include <QVector>

class QDevice;

/// The cameras, one a row, for selection only. Cells show texts from the network as they are.
class QDeviceTable : public QTableWidget
{
    Q_DECLARE_TR_FUNCTIONS(MainWidget)

public:
    explicit QDeviceTable(QWidget* pParent);

    /// Sets every text of its own again, in the language of now.
    void RefreshTexts();

    /// Shows these cameras in place of those before and selects one of them. The list stays scrolled to where
    /// it was. No signal tells that the rows before are gone.
    void ShowDevices(const QVector<QDevice>& devices, int nSelectedRow);

    /// Appends the camera.
    void AddRow(const QDevice& device);

    /// What the row was made from says about it; empty without such a row. A MAC address is a camera's
    /// identity.
    QString MacAddressAt(int nRow) const;

private:
    QIcon StatusIcon(const QDevice& device) const;

    QIcon m_freeIcon;
    QIcon m_inUseIcon;
    QIcon m_unreachableIcon;
};
