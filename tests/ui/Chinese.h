// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

/// While it lives, texts are Chinese.
class Chinese : public QTranslator
{
public:
    Chinese()
    {
        EXPECT_TRUE(load(QCoreApplication::applicationDirPath() + "/../bin/Kelo_ip_configurator_en.qm"));
        QCoreApplication::installTranslator(this);
        QCoreApplication::processEvents(); // Windows are told by an event.
    }
    Chinese(const Chinese&) = delete;
    Chinese& operator=(const Chinese&) = delete;
    ~Chinese() override
    {
        QCoreApplication::removeTranslator(this);
        QCoreApplication::processEvents();
    }
};
