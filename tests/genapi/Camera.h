// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/genapi/Descriptions.h"
#include "tests/genapi/MemoryPort.h"

#include <stdexcept>

/// A camera of bytes with such a file, and its node map.
struct FileCamera
{
    explicit FileCamera(const std::string& file) : map(load(file)) { map->Connect(&port, "Device"); }
    FileCamera(const FileCamera&) = delete;
    FileCamera& operator=(const FileCamera&) = delete;

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

/// The same with these nodes in its file.
struct Camera : FileCamera
{
    explicit Camera(const std::string& nodes, const std::string& schemaMinor = "1")
        : FileCamera(description(nodes, schemaMinor))
    {}
};
