// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/Sentence.h"
#include "ui/QRowTable.h"

#include <QCoreApplication>
#include <QIcon>
#include <QVector>

#include <map>
#include <string>
#include <vector>

class QDevice;

/// The cameras, one a row.
class QDeviceTable : public QRowTable
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

    /// What there is to say of cameras beyond their cells, by MAC address; it is in the tool tips of their
    /// rows.
    void SetRemarks(std::map<std::string, std::vector<base::Sentence>> remarks);
    /// In the language of now; empty when there is none, or no such row.
    QString RemarkAt(int nRow) const override;

private:
    QIcon StatusIcon(const QDevice& device) const;

    QIcon m_freeIcon;
    QIcon m_inUseIcon;
    QIcon m_unreachableIcon;
    std::map<std::string, std::vector<base::Sentence>> m_remarks;
};
