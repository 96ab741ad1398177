// SPDX-License-Identifier: Apache-2.0
#include "cli/Program.h"
#include "cli/neighbours/AddressOwner.h"
#include "cli/session/Session.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextCodec>

#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

/// Whoever starts the program with a standard stream closed must not have it in the next file or socket that
/// is opened. False when data would be lost.
bool secureStandardStreams()
{
    if (::fcntl(STDOUT_FILENO, F_GETFD) == -1)
        return false;
    for (const int fd : {STDIN_FILENO, STDERR_FILENO})
        if (::fcntl(fd, F_GETFD) == -1 && ::open("/dev/null", O_RDWR) == -1)
            return false;
    return true;
}

bool ask(const std::string& question)
{
    std::cerr << question << " [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

bool wantsColour()
{
    const char* const noColour = std::getenv("NO_COLOR");
    return ::isatty(STDOUT_FILENO) != 0 && (!noColour || *noColour == '\0');
}

} // namespace

int main(int argc, char** argv)
try {
    if (!secureStandardStreams()) {
        std::cerr << "ip-configurator-cli: standard output is closed\n";
        return static_cast<int>(cli::ExitStatus::Failed);
    }
    const std::vector<std::string> words(argv + 1, argv + argc);
    const QCoreApplication application(argc, argv);
    // Like all texts here, whatever the locale: a camera's name is sent in what Qt takes for the locale's
    // encoding.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    // The workers' notes for developers; QT_LOGGING_RULES brings them back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    cli::Session session{
        std::cout, std::cerr, wantsColour(), ::isatty(STDERR_FILENO) != 0, cli::findAddressOwner,
    };
    session.outDescriptor = STDOUT_FILENO;
    if (::isatty(STDIN_FILENO) != 0)
        session.ask = ask;
    return static_cast<int>(cli::runProgram(words, session));
} catch (const std::exception& error) {
    std::cerr << "ip-configurator-cli: " << error.what() << '\n';
    return static_cast<int>(cli::ExitStatus::Failed);
}
