// SPDX-License-Identifier: Apache-2.0
#include "tests/app/InstalledProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::StartsWith;

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
    const lab::Namespace anywhere;
    const std::string sizes = anywhere.run("xprop -id " + window + " -notype 32i _NET_WM_ICON | head -c 400");
    EXPECT_THAT(sizes, HasSubstr("Icon (16 x 16)"));
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
