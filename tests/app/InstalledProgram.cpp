// SPDX-License-Identifier: Apache-2.0
#include "tests/app/InstalledProgram.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

InstalledProgram::InstalledProgram(const std::string& program, const std::string& name) : m_name(name)
{
    std::string pattern = (fs::temp_directory_path() / "installed-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no folder " + pattern);
    m_folder = pattern;
    fs::create_directories(m_folder / "run");
    fs::create_directories(m_folder / "bin");
    fs::copy(program, m_folder / "bin" / name);
    for (const char* file : {"segoeui.ttf", "Kelo_ip_configurator_en.qm", "qt_zh_CN.qm"})
        fs::copy(fs::path(PROGRAM_FOLDER) / file, m_folder / "bin" / file);
}

InstalledProgram::~InstalledProgram()
{
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

void InstalledProgram::writeSettings(const std::string& text) const
{
    write("LangConfig.ini", text);
}

void InstalledProgram::write(const std::string& file, const std::string& text) const
{
    std::ofstream(m_folder / "bin" / file) << text;
}

void InstalledProgram::remove(const std::string& file) const
{
    if (!fs::remove(m_folder / "bin" / file))
        throw std::runtime_error(file + " was not there");
}

std::set<std::string> InstalledProgram::files() const
{
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(m_folder))
        names.insert(entry.path().lexically_relative(m_folder).string());
    return names;
}

fs::path InstalledProgram::lockFile() const
{
    return m_folder / "run" / (m_name + ".pid");
}

std::string InstalledProgram::lockFileText() const
{
    std::ifstream file(lockFile());
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> InstalledProgram::commandLine(const std::vector<std::string>& arguments,
                                                       const std::string& redirection,
                                                       const std::string& preparation) const
{
    // The mounts are seen by this process and its children alone.
    const std::string script =
        R"(mount --bind "$0" /var/run && )" + preparation + R"( && exec "$@")" + redirection;
    const std::string leaks =
        std::string("LSAN_OPTIONS=print_suppressions=0:suppressions=") + LSAN_SUPPRESSIONS;
    std::vector<std::string> words = {
        "env", leaks, "unshare", "--mount", "sh", "-c", script, m_folder / "run", m_folder / "bin" / m_name};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

lab::Process InstalledProgram::start(const std::vector<std::string>& arguments,
                                     const std::string& preparation) const
{
    return m_host.start(commandLine(arguments, " 2>&1", preparation));
}

lab::Output InstalledProgram::run(const std::vector<std::string>& arguments,
                                  const std::string& preparation) const
{
    return m_host.execute(commandLine(arguments, "", preparation));
}

std::string InstalledProgram::window(const lab::Process& process) const
{
    return askWindow({"search", "--sync", "--onlyvisible", "--pid", std::to_string(process.id())});
}

void InstalledProgram::closeWindow(const std::string& window) const
{
    // The first keys may come before the window manager has given the window the keyboard.
    m_host.run("while xdotool windowactivate --sync " + window + " key alt+F4; do sleep 0.5; " +
               "xdotool getwindowname " + window + " || break; done 2>&1");
}

std::string InstalledProgram::askWindow(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> words = {"xdotool"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    lab::Output output = m_host.execute(words);
    // While all windows are looked through, that of a program which has just ended may go.
    while (arguments.front() == "search" && output.standardError.find("BadWindow") != std::string::npos)
        output = m_host.execute(words);
    if (output.status != 0)
        throw std::runtime_error("xdotool " + arguments.front() + ": " + output.standardError);
    return output.standardOutput.substr(0, output.standardOutput.find_last_not_of('\n') + 1);
}
