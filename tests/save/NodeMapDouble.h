// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/GenApi.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

/// Stands behind the node map factory in place of the engine: whatever the description, node maps have the
/// nodes that the test states. Factories turn to the NodeMapDouble that exists; without one they abort.
class NodeMapDouble
{
public:
    /// `note` hears of everything that is done with the node maps: "Make(<xml/>)", "Connect(Device)",
    /// "GevSomething = 1", "DeviceUserID = 41 42 00", "DeviceReset()".
    explicit NodeMapDouble(std::function<void(const std::string&)> note);
    NodeMapDouble(const NodeMapDouble&) = delete;
    NodeMapDouble& operator=(const NodeMapDouble&) = delete;
    ~NodeMapDouble();

    // Each replaces a node of that name. `write` is called after the write was noted and may throw.
    using Write = std::function<void()>;
    void addBoolean(
        const std::string& name, Write write = [] {});
    void addInteger(
        const std::string& name, Write write = [] {});
    void addRegister(
        const std::string& name, int64_t length, Write write = [] {});
    void addCommand(
        const std::string& name, Write write = [] {});
    /// A node of no kind that anything is written to.
    void addOther(const std::string& name);
    void remove(const std::string& name) { m_nodes.erase(name); }

    /// Called while a node map is made and connected; may throw.
    Write onMake = [] {};
    Write onConnect = [] {};
    std::function<void()> onDelete = [] {};
    std::string deviceName; ///< The last node map was made for.
    GenApi::IPort* connectedTo = nullptr;

private:
    friend struct NodeMapCalls;

    std::function<void(const std::string&)> m_note;
    std::map<std::string, std::unique_ptr<GenApi::INode>> m_nodes;
};
