// SPDX-License-Identifier: Apache-2.0
#include "tests/save/NodeMapDouble.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace {

NodeMapDouble* s_double = nullptr;

using Note = std::function<void(const std::string&)>;

struct NodeDouble : GenApi::INode
{
    NodeDouble(std::string nodeName, Note noteTo, NodeMapDouble::Write writeTo)
        : name(std::move(nodeName)),
          note(std::move(noteTo)),
          write(std::move(writeTo))
    {}
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    GenICam::gcstring GetName() const override { return GenICam::gcstring(name); }

    void written(const std::string& how, bool verify) const
    {
        note(name + how + (verify ? "" : " unverified"));
        write();
    }

    std::string name;
    Note note;
    NodeMapDouble::Write write;
};

struct BooleanDouble : NodeDouble, GenApi::IBoolean
{
    using NodeDouble::NodeDouble;
    void SetValue(bool value, bool verify) override { written(value ? " = 1" : " = 0", verify); }
    bool GetValue() const override { return false; }
};

struct IntegerDouble : NodeDouble, GenApi::IInteger
{
    using NodeDouble::NodeDouble;
    void SetValue(int64_t value, bool verify) override { written(" = " + std::to_string(value), verify); }
    int64_t GetValue() const override { return 0; }
    int64_t GetMin() const override { return INT64_MIN; }
    int64_t GetMax() const override { return INT64_MAX; }
    int64_t GetInc() const override { return 1; }
};

struct RegisterDouble : NodeDouble, GenApi::IRegister
{
    using NodeDouble::NodeDouble;
    void Set(const uint8_t* buffer, int64_t size, bool verify) override
    {
        std::string bytes = " =";
        for (int64_t i = 0; i < size; ++i) {
            char hex[4];
            std::snprintf(hex, sizeof hex, " %02x", buffer[i]);
            bytes += hex;
        }
        written(bytes, verify);
    }
    void Get(uint8_t*, int64_t) const override {}
    int64_t GetLength() const override { return length; }

    int64_t length = 0;
};

struct CommandDouble : NodeDouble, GenApi::ICommand
{
    using NodeDouble::NodeDouble;
    void Execute(bool verify) override { written("()", verify); }
};

} // namespace

/// The factory's way into the double.
struct NodeMapCalls : GenApi::INodeMap
{
    NodeMapCalls() = default;
    NodeMapCalls(const NodeMapCalls&) = delete;
    NodeMapCalls& operator=(const NodeMapCalls&) = delete;
    ~NodeMapCalls() override
    {
        if (s_double)
            s_double->onDelete();
    }

    static NodeMapDouble& existing()
    {
        if (!s_double) {
            std::fprintf(stderr, "no NodeMapDouble exists\n");
            std::abort();
        }
        return *s_double;
    }

    static void made(const std::string& text, const GenICam::gcstring& deviceName)
    {
        existing().deviceName = deviceName.c_str();
        existing().m_note("Make(" + text + ")");
        existing().onMake();
    }

    GenApi::INode* GetNode(const GenICam::gcstring& name) const override
    {
        const auto found = existing().m_nodes.find(name.c_str());
        return found == existing().m_nodes.end() ? nullptr : found->second.get();
    }
    void Connect(GenApi::IPort* port, const GenICam::gcstring& portName) override
    {
        existing().m_note("Connect(" + std::string(portName.c_str()) + ")");
        existing().connectedTo = port;
        existing().onConnect();
    }
    GenICam::gcstring GetDeviceName() const override { return "Device"; }
};

NodeMapDouble::NodeMapDouble(Note note) : m_note(std::move(note))
{
    if (s_double)
        throw std::logic_error("one NodeMapDouble at a time");
    s_double = this;
}

NodeMapDouble::~NodeMapDouble()
{
    s_double = nullptr;
}

void NodeMapDouble::addBoolean(const std::string& name, Write write)
{
    m_nodes[name] = std::make_unique<BooleanDouble>(name, m_note, std::move(write));
}

void NodeMapDouble::addInteger(const std::string& name, Write write)
{
    m_nodes[name] = std::make_unique<IntegerDouble>(name, m_note, std::move(write));
}

void NodeMapDouble::addRegister(const std::string& name, int64_t length, Write write)
{
    auto node = std::make_unique<RegisterDouble>(name, m_note, std::move(write));
    node->length = length;
    m_nodes[name] = std::move(node);
}

void NodeMapDouble::addCommand(const std::string& name, Write write)
{
    m_nodes[name] = std::make_unique<CommandDouble>(name, m_note, std::move(write));
}

void NodeMapDouble::addOther(const std::string& name)
{
    m_nodes[name] = std::make_unique<NodeDouble>(name, m_note, [] {});
}

namespace GenApi {

CNodeMapFactory::CNodeMapFactory(EContentType_t, const void* data, std::size_t size, ECacheUsage_t, bool)
    : m_text(static_cast<const char*>(data), size)
{}

std::unique_ptr<INodeMap> CNodeMapFactory::CreateNodeMap(const GenICam::gcstring& DeviceName, bool)
{
    NodeMapCalls::made(m_text, DeviceName);
    return std::make_unique<NodeMapCalls>();
}

} // namespace GenApi
