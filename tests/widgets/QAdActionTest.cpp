// SPDX-License-Identifier: Apache-2.0
#include "widgets/QAdAction.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

TEST(QAdActionTest, KeepsItsIndexAndAChannelOfZeroUntilTheyAreSet)
{
    QAdAction action(QStringLiteral("Live"), nullptr, 3);
    EXPECT_EQ(action.text(), "Live");
    EXPECT_EQ(action.GetActionIndex(), 3);
    EXPECT_EQ(action.GetChannelID(), 0);

    action.SetActionIndex(4);
    action.SetChannelID(5000000000);
    EXPECT_EQ(action.GetActionIndex(), 4);
    EXPECT_EQ(action.GetChannelID(), 5000000000);
}

TEST(QAdActionTest, TakesAnIcon)
{
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    const QAdAction action(QIcon(pixmap), QStringLiteral("Live"), nullptr, 0);
    EXPECT_FALSE(action.icon().isNull());
}

TEST(QAdActionTest, ATriggerTellsIndexChannelAndTheStateItLeadsTo)
{
    QAdAction action(QStringLiteral("Live"), nullptr, 3);
    action.SetChannelID(7);
    action.setCheckable(true);
    const QSignalSpy triggered(&action, &QAdAction::SigActionTriggered);
    action.trigger();
    action.trigger();
    ASSERT_EQ(triggered.size(), 2);
    EXPECT_EQ(triggered[0], QVariantList({3, QVariant::fromValue(7L), true}));
    EXPECT_EQ(triggered[1], QVariantList({3, QVariant::fromValue(7L), false}));
}
