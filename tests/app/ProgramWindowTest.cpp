// SPDX-License-Identifier: Apache-2.0
#include "tests/app/InstalledProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

TEST(ProgramWindow, StandsInTheMiddleOfTheDesktop)
{
    const InstalledProgram program(PROGRAM);
    const lab::Process process = program.start();
    const std::string window = program.window(process);
    // A display of 1280 x 1024 pixels.
    EXPECT_THAT(program.askWindow({"getwindowgeometry", "--shell", window}),
                HasSubstr("X=195\nY=187\nWIDTH=890\nHEIGHT=650\n"));
}

TEST(ProgramWindow, CarriesTheProgramsIcon)
{
    const InstalledProgram program(PROGRAM);
    const lab::Process process = program.start();
    const std::string window = program.window(process);
    const std::string icons = lab::Namespace().run("xprop -id " + window + " _NET_WM_ICON | grep Icon");
    for (const char* size : {"(16 x 16)", "(24 x 24)", "(32 x 32)", "(48 x 48)", "(64 x 64)", "(128 x 128)"})
        EXPECT_THAT(icons, HasSubstr(size));
}

TEST(ProgramWindow, SaysInTheDebugLogWhetherItsFontIsThere)
{
    const InstalledProgram program(PROGRAM);
    lab::Process withFont = program.start();
    EXPECT_EQ(withFont.readLine(), "addApplicationFont success ");
    program.closeWindow(program.window(withFont));
    withFont.wait();

    program.remove("segoeui.ttf");
    lab::Process withoutFont = program.start();
    EXPECT_EQ(withoutFont.readLine(), "addApplicationFont failed ");
    program.window(withoutFont);
}
