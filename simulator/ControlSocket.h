// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "base/FileDescriptor.h"

#include <functional>
#include <string>
#include <sys/types.h>
#include <utility>
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

    /// Takes the path over from a farm that is gone; throws std::runtime_error while one is listening there,
    /// or when what lies there is not a socket, which stays.
    ControlSocket(std::string path, Handler handler);
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;
    /// Removes the socket, unless something else lies at its path by now.
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
    base::FileDescriptor m_listener;
    std::pair<dev_t, ino_t> m_file{}; ///< The socket's, as the file system numbers it.
    std::vector<base::FileDescriptor> m_clients;
};

} // namespace simulator
