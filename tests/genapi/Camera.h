// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/genapi/Descriptions.h"
#include "tests/genapi/MemoryPort.h"

/// A node map over a camera of bytes.
struct Camera
{
    explicit Camera(const std::string& nodes, const std::string& schemaMinor = "1")
        : map(load(description(nodes, schemaMinor)))
    {
        map->Connect(&port, "Device");
    }
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;

    template <typename Interface>
    Interface& node(const char* name) const
    {
        auto* found = nodeAs<Interface>(*map, name);
        if (!found)
            throw std::runtime_error(std::string("no such node: ") + name);
        return *found;
    }

    MemoryPort port;
    std::unique_ptr<GenApi::INodeMap> map;
};
