// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>

#include <chrono>
#include <string>

namespace cli {

/// The system's ping program, which asks an address out of one adapter, once a second for six seconds or
/// until it is answered. It ends with this object at the latest.
class Ping
{
public:
    Ping(const QString& adapter, const QString& address);
    Ping(const Ping&) = delete;
    Ping& operator=(const Ping&) = delete;
    ~Ping();

    enum class Outcome
    {
        Pending,
        Answered,
        Silence,
        Failure, ///< Nobody could be asked.
    };
    Outcome outcome() const;

    /// Waits for this long, or until it ends meanwhile.
    void wait(std::chrono::milliseconds patience);

    /// After Outcome::Failure: why.
    std::string failure();

private:
    bool hasNotRun() const;

    QProcess m_process;
};

} // namespace cli
