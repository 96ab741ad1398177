// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/NetworkLab.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

/// A folder of its own with the program and what lies beside it, on a host without network adapters and with
/// a /var/run of its own.
class InstalledProgram
{
public:
    /// Copies the program under this name.
    explicit InstalledProgram(const std::string& program, const std::string& name = "ip-configurator");
    InstalledProgram(const InstalledProgram&) = delete;
    InstalledProgram& operator=(const InstalledProgram&) = delete;
    ~InstalledProgram();

    /// What LangConfig.ini says from now on.
    void writeSettings(const std::string& text) const;
    /// The file beside the program has this text from now on.
    void write(const std::string& file, const std::string& text) const;
    void remove(const std::string& file) const;
    /// The names of all that lies in the folder and in /var/run, as "bin/..." and "run/...".
    std::set<std::string> files() const;

    /// Its lock file, as seen from outside.
    std::filesystem::path lockFile() const;
    std::string lockFileText() const;

    // The preparation is a shell command that comes before, with the mounts of the program.

    /// Starts it; what it prints to standard error is read with its standard output.
    lab::Process start(const std::vector<std::string>& arguments = {},
                       const std::string& preparation = "true") const;
    /// Runs it to its end.
    lab::Output run(const std::vector<std::string>& arguments = {},
                    const std::string& preparation = "true") const;

    /// Waits for the window that the program shows and gives its number.
    std::string window(const lab::Process& process) const;
    /// Closes it as the user does.
    void closeWindow(const std::string& window) const;
    /// What xdotool prints, without the newline.
    std::string askWindow(const std::vector<std::string>& arguments) const;

private:
    std::vector<std::string> commandLine(const std::vector<std::string>& arguments,
                                         const std::string& redirection,
                                         const std::string& preparation) const;

    lab::Namespace m_host;
    std::filesystem::path m_folder;
    std::string m_name;
};
