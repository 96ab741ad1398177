// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QGroupBox>

#include <array>

class QDevice;
class QGridLayout;
class QStaticLabel;

/// All of one camera, to be read. Its size does not depend on what it shows.
class QDetailPanel : public QGroupBox
{
    Q_DECLARE_TR_FUNCTIONS(MainWidget)

public:
    explicit QDetailPanel(QWidget* pParent);

    /// Sets the captions, in the language of now.
    void RefreshTexts();

    void ShowDevice(const QDevice& device);

    /// Shows nothing, not even captions.
    void Clear();

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    static constexpr std::size_t RowCount = 8;

    QGridLayout* m_pGrid;
    std::array<QStaticLabel*, RowCount> m_captions{};
    std::array<QStaticLabel*, RowCount> m_values{};
};
