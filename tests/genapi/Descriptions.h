// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/GenApi.h"

#include <functional>
#include <memory>
#include <string>

/// A description of these nodes and the port "Device".
std::string description(const std::string& nodes, const std::string& schemaMinor = "1");

/// An element with text.
std::string element(const std::string& name, const std::string& text);

/// A register node; the address is text, further properties may follow.
std::string registerNode(const std::string& kind, const std::string& name, const std::string& address,
                         const std::string& length, const std::string& properties = {},
                         const std::string& accessMode = "RW");

/// Has every complaint (GLib's criticals and warnings) that nobody asked for fail the test that runs, as it
/// is from the start.
void restoreHandlerOfTests();

/// The node map of a description that is no more than text or a zip.
std::unique_ptr<GenApi::INodeMap> load(const std::string& data);

/// Why the description is refused; empty when it is not.
std::string refusalOf(const std::string& data);

/// The node as one of its interfaces, null if it has not got it or is not there.
template <typename Interface>
Interface* nodeAs(const GenApi::INodeMap& map, const char* name)
{
    return dynamic_cast<Interface*>(static_cast<GenApi::IBase*>(map.GetNode(name)));
}

/// What a GenICam exception of exactly that type says; a text that fits no expectation when none came.
template <typename Exception>
std::string textOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Exception& exception) {
        return exception.what();
    } catch (const GenICam::GenericException& exception) {
        return std::string("(wrong type) ") + exception.GetExceptionType();
    }
    return "(nothing thrown)";
}
