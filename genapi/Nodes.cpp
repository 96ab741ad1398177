// SPDX-License-Identifier: Apache-2.0
#include "genapi/Nodes.h"

#include "genapi/GenApi/IBoolean.h"
#include "genapi/GenApi/ICommand.h"
#include "genapi/GenApi/IInteger.h"
#include "genapi/GenApi/IRegister.h"
#include "genapi/Node.h"

namespace genapi {
namespace {

/// A switch.
class BooleanNode : public Node, public GenApi::IBoolean
{
public:
    BooleanNode(Engine& engine, ArvGcBoolean* node);

    void SetValue(bool value, bool verify) override;
    bool GetValue() const override;

private:
    ArvGcBoolean* m_boolean;
};

BooleanNode::BooleanNode(Engine& engine, ArvGcBoolean* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_boolean(node)
{}

void BooleanNode::SetValue(bool value, bool verify)
{
    requireUsable();
    if (verify) {
        requireWritable();
        requireBitsFor(value ? askProperty({"OnValue"}, 1) : askProperty({"OffValue"}, 0));
    }
    engine().call(name(), "set", [&](GError** error) {
        arv_gc_boolean_set_value(m_boolean, value, error);
        return true;
    });
}

bool BooleanNode::GetValue() const
{
    requireUsable();
    return engine().call(name(), "read",
                         [&](GError** error) { return arv_gc_boolean_get_value(m_boolean, error) != FALSE; });
}

/// A command.
class CommandNode : public Node, public GenApi::ICommand
{
public:
    CommandNode(Engine& engine, ArvGcCommand* node);

    void Execute(bool verify) override;

private:
    ArvGcCommand* m_command;
};

CommandNode::CommandNode(Engine& engine, ArvGcCommand* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_command(node)
{}

void CommandNode::Execute(bool verify)
{
    requireUsable();
    if (verify) {
        requireWritable();
        requireBitsFor(askProperty({"CommandValue", "pCommandValue"}, 0));
    }
    engine().call(name(), "execute", [&](GError** error) {
        arv_gc_command_execute(m_command, error);
        return true;
    });
}

/// A whole number.
class IntegerNode : public virtual Node, public GenApi::IInteger
{
public:
    IntegerNode(Engine& engine, ArvGcInteger* node);

    void SetValue(int64_t value, bool verify) override;
    int64_t GetValue() const override;
    int64_t GetMin() const override;
    int64_t GetMax() const override;
    int64_t GetInc() const override;

private:
    int64_t askBound(const char* action, gint64 (*question)(ArvGcInteger*, GError**)) const;
    void requireInRange(int64_t value) const;

    ArvGcInteger* m_integer;
};

IntegerNode::IntegerNode(Engine& engine, ArvGcInteger* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_integer(node)
{}

void IntegerNode::SetValue(int64_t value, bool verify)
{
    requireUsable();
    if (verify) {
        requireWritable();
        requireInRange(value);
        requireBitsFor(value);
    }
    engine().call(name(), "set", [&](GError** error) {
        arv_gc_integer_set_value(m_integer, value, error);
        return true;
    });
}

int64_t IntegerNode::GetValue() const
{
    requireUsable();
    return engine().call(name(), "read",
                         [&](GError** error) { return arv_gc_integer_get_value(m_integer, error); });
}

int64_t IntegerNode::GetMin() const
{
    return askBound("read the minimum of", arv_gc_integer_get_min);
}

int64_t IntegerNode::GetMax() const
{
    return askBound("read the maximum of", arv_gc_integer_get_max);
}

int64_t IntegerNode::GetInc() const
{
    return askBound("read the increment of", arv_gc_integer_get_inc);
}

int64_t IntegerNode::askBound(const char* action, gint64 (*question)(ArvGcInteger*, GError**)) const
{
    requireUsable();
    return engine().call(name(), action, [&](GError** error) {
        const auto bound = question(m_integer, error);
        // No property says what the bound is; the answer is then the widest one, and no error.
        if (g_error_matches(*error, ARV_GC_ERROR, ARV_GC_ERROR_PROPERTY_NOT_DEFINED))
            g_clear_error(error);
        return bound;
    });
}

void IntegerNode::requireInRange(int64_t value) const
{
    const auto least = GetMin();
    const auto most = GetMax();
    const auto step = GetInc();
    const bool isInside = value >= least && value <= most;
    // As unsigned numbers, since the distance may be more than a signed one holds.
    if (isInside && (step <= 1 || (static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(least)) %
                                          static_cast<std::uint64_t>(step) ==
                                      0))
        return;
    throw GenICam::OutOfRangeException(name() + " cannot be set to " + std::to_string(value) + ": it takes " +
                                           std::to_string(least) + " to " + std::to_string(most) +
                                           (step > 1 ? " in steps of " + std::to_string(step) : "") + ".",
                                       __FILE_NAME__, __LINE__);
}

/// Bytes in the camera, a text or anything else.
class RegisterNode : public virtual Node, public GenApi::IRegister
{
public:
    RegisterNode(Engine& engine, ArvGcRegister* node);

    void Set(const uint8_t* buffer, int64_t length, bool verify) override;
    void Get(uint8_t* buffer, int64_t length) const override;
    int64_t GetLength() const override;

private:
    void requireLength(int64_t length) const;

    ArvGcRegister* m_register;
};

RegisterNode::RegisterNode(Engine& engine, ArvGcRegister* node)
    : Node(engine, ARV_GC_FEATURE_NODE(node)),
      m_register(node)
{}

void RegisterNode::Set(const uint8_t* buffer, int64_t length, bool verify)
{
    requireLength(length);
    if (verify)
        requireWritable();
    engine().call(name(), "set", [&](GError** error) {
        arv_gc_register_set(m_register, buffer, static_cast<guint64>(length), error);
        return true;
    });
}

void RegisterNode::Get(uint8_t* buffer, int64_t length) const
{
    requireLength(length);
    engine().call(name(), "read", [&](GError** error) {
        arv_gc_register_get(m_register, buffer, static_cast<guint64>(length), error);
        return true;
    });
}

int64_t RegisterNode::GetLength() const
{
    requireUsable();
    return engine().call(name(), "measure", [&](GError** error) {
        return static_cast<int64_t>(arv_gc_register_get_length(m_register, error));
    });
}

void RegisterNode::requireLength(int64_t length) const
{
    if (const auto own = GetLength(); length != own)
        throw GenICam::InvalidArgumentException(name() + " has " + std::to_string(own) + " bytes, not " +
                                                    std::to_string(length) + ".",
                                                __FILE_NAME__, __LINE__);
}

/// A whole number that stands in a register of its own.
class IntegerRegisterNode : public IntegerNode, public RegisterNode
{
public:
    IntegerRegisterNode(Engine& engine, ArvGcFeatureNode* node)
        : Node(engine, node),
          IntegerNode(engine, ARV_GC_INTEGER(node)),
          RegisterNode(engine, ARV_GC_REGISTER(node))
    {}
};

} // namespace

std::unique_ptr<GenApi::INode> makeNode(Engine& engine, ArvGcFeatureNode* node)
{
    if (ARV_IS_GC_BOOLEAN(node))
        return std::make_unique<BooleanNode>(engine, ARV_GC_BOOLEAN(node));
    if (ARV_IS_GC_COMMAND(node))
        return std::make_unique<CommandNode>(engine, ARV_GC_COMMAND(node));
    const bool isInteger = ARV_IS_GC_INTEGER(node) && !ARV_IS_GC_ENUMERATION(node);
    if (isInteger && ARV_IS_GC_REGISTER(node))
        return std::make_unique<IntegerRegisterNode>(engine, node);
    if (isInteger)
        return std::make_unique<IntegerNode>(engine, ARV_GC_INTEGER(node));
    if (ARV_IS_GC_REGISTER(node))
        return std::make_unique<RegisterNode>(engine, ARV_GC_REGISTER(node));
    return std::make_unique<Node>(engine, node);
}

} // namespace genapi
