// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace simulator {

/// The running farm's end of its control socket: a Unix socket in the file system, of whole messages. A
/// connection carries one command and one answer. Errors of the socket itself throw std::system_error.
class ControlSocket
{
public:
    struct Answer
    {
        bool accepted = false;
        std::string text; ///< What to print, or why it was refused.
    };
    using Handler = std::function<Answer(const std::string& command)>;

    /// Takes the path over from a farm that is gone; throws std::runtime_error while one is listening there.
    ControlSocket(std::string path, Handler handler);
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;
    ~ControlSocket();

    /// Those to poll for input; the list changes with each call of `serve`.
    std::vector<int> descriptors() const;
    /// Accepts who is waiting, and answers those whose command has come. Never blocks.
    void serve();

    /// The other end: sends one command and waits for the answer.
    static Answer request(const std::string& path, const std::string& command);

private:
    /// False when the client has nothing more to say.
    bool serveClient(int client) const;

    std::string m_path;
    Handler m_handler;
    int m_listener;
    std::vector<int> m_clients;
};

} // namespace simulator
