// SPDX-License-Identifier: Apache-2.0
#include "ui/QFindingView.h"

#include "doctor/Finding.h"
#include "ui/Spoken.h"
#include "widgets/QPushButtonEx.h"
#include "widgets/QStaticLabel.h"
#include "widgets/StyleRules.h"

#include <QBoxLayout>
#include <QFontDatabase>

namespace {

struct SeverityLook
{
    QString strName;
    const char* color; ///< White can be read on it.
};

SeverityLook LookOf(doctor::Severity severity)
{
    switch (severity) {
    case doctor::Severity::Error:
        return {QFindingView::tr("Error"), "#a83025"};
    case doctor::Severity::Warning:
        return {QFindingView::tr("Warning"), "#9a5c00"};
    case doctor::Severity::Note:
        break;
    }
    return {QFindingView::tr("Note"), "#566779"};
}

QLabel* CreateText(const QString& strText, const QString& strLook)
{
    auto* const pLabel = new QStaticLabel(strText);
    pLabel->setStyleSheet(QStringLiteral("QLabel{%1}").arg(strLook));
    pLabel->setWordWrap(true);
    pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return pLabel;
}

QString PlaceOf(const doctor::Finding& finding)
{
    QStringList places;
    if (!finding.adapterName.empty())
        places << QString::fromStdString(Harmless(finding.adapterName));
    if (finding.camera)
        places << QString::fromStdString(finding.camera->toText());
    return places.join(QStringLiteral("  "));
}

/// One a line, as a shell takes them.
QString CommandsOf(const doctor::Finding& finding)
{
    QStringList commands;
    for (const std::string& command : finding.repair)
        commands << QString::fromStdString(command);
    return commands.join(QLatin1Char('\n'));
}

} // namespace

QFindingView::QFindingView(const doctor::Finding& finding, QWidget* pParent) : QFrame(pParent)
{
    setObjectName(QStringLiteral("QFindingView"));
    setStyleSheet(
        QStringLiteral("#QFindingView{background-color:white;border:1px solid #d5dbe2;border-radius:3px;}"));
    auto* const pColumn = new QVBoxLayout(this);
    pColumn->setContentsMargins(12, 10, 12, 12);
    pColumn->setSpacing(8);

    const SeverityLook look = LookOf(finding.severity);
    auto* const pSeverity = new QStaticLabel(look.strName);
    pSeverity->setStyleSheet(
        QStringLiteral("QLabel{%1background-color:%2;border-radius:3px;padding:1px 8px;}")
            .arg(TextLook("white", 12), QLatin1String(look.color)));
    auto* const pHead = new QHBoxLayout;
    pHead->setSpacing(10);
    pHead->addWidget(pSeverity, 0, Qt::AlignVCenter);
    pHead->addWidget(new QStaticLabel(PlaceOf(finding)));
    pHead->addStretch();
    pColumn->addLayout(pHead);

    const QString strWhat = Spoken(finding.text);
    pColumn->addWidget(CreateText(strWhat, TextLook(DarkTextColor, 14)));
    if (!finding.reason.empty())
        pColumn->addWidget(CreateText(Spoken(finding.reason), TextLook(TextColor)));
    setAccessibleName(look.strName);
    setAccessibleDescription(strWhat);
    if (finding.repair.empty())
        return;

    const QString strCommands = CommandsOf(finding);
    const QString strFamily = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    QLabel* const pCommands =
        CreateText(strCommands, TextLook(DarkTextColor, 13, qUtf8Printable('"' + strFamily + '"')) +
                                    QStringLiteral("background-color:#f4f6f8;padding:6px;"));
    pCommands->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* const pCopy = new QPushButtonEx(tr("Copy"));
    pCopy->setFixedSize(82, 27);
    pCopy->setAutoDefault(false);
    connect(pCopy, &QPushButtonEx::clicked, this, [this, strCommands] { emit SigCopy(strCommands); });
    pHead->addWidget(pCopy); // Not beside the commands, which had better not be broken.
    pColumn->addWidget(pCommands);
}
