// SPDX-License-Identifier: Apache-2.0
#include "genapi/description/Description.h"

#include "base/CancellationHold.h"
#include "base/Zip.h"
#include "genapi/description/ReferenceGraph.h"
#include "genapi/description/Registers.h"
#include "genapi/description/Vocabulary.h"

#include <algorithm>

namespace genapi {
namespace {

// Two to ten times what the largest real descriptions have. Within these bounds loading takes less than 64
// MB.
constexpr std::ptrdiff_t MaxMarkup = 500'000; ///< '<' and '=' in the text: elements, ends, attributes.
constexpr int MaxElements = 80'000;           ///< Of those that evaluation needs.
constexpr int MaxDepth = 32;

std::string unpackZip(base::ByteView data)
{
    const base::Unzipped file = base::unzip(data, MaxDescriptionSize);
    if (!file.fault.empty())
        refuseDescription("its zip " + file.fault);
    if (file.fileCount != 1)
        refuseDescription("its zip holds " + std::to_string(file.fileCount) + " files instead of one");
    if (file.name.empty() || file.name.find_first_of("/\\") != file.name.npos || file.name == "..")
        refuseDescription("the file in its zip has a folder in its name");
    return {file.content.begin(), file.content.end()};
}

void parse(std::string& text, pugi::xml_document& document)
{
    constexpr unsigned flags = pugi::parse_minimal | pugi::parse_escapes | pugi::parse_eol |
                               pugi::parse_cdata | pugi::parse_doctype | pugi::parse_embed_pcdata;
    const auto result = document.load_buffer_inplace(text.data(), text.size(), flags, pugi::encoding_utf8);
    if (!result)
        refuseDescription("it is no XML (" + std::string(result.description()) + " at byte " +
                          std::to_string(result.offset) + ")");
    for (const auto& child : document.children())
        if (child.type() == pugi::node_doctype)
            refuseDescription("it has a document type, which descriptions have no use for");
}

void checkDepth(const pugi::xml_node& root)
{
    int depth = 0;
    for (auto node = root; node;) {
        if (node.first_child()) {
            node = node.first_child();
            if (++depth > MaxDepth)
                refuseDescription("its elements are nested more than " + std::to_string(MaxDepth) + " deep");
            continue;
        }
        while (node != root && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        if (node == root)
            return;
        node = node.next_sibling();
    }
}

bool isBlank(char c)
{
    return static_cast<unsigned char>(c) <= ' ';
}

/// Cameras fill up the last word with NULs, and some of them their memory around the text.
void dropPadding(std::string& text)
{
    const auto isText = [](char c) { return !isBlank(c); };
    text.erase(std::find_if(text.rbegin(), text.rend(), isText).base(), text.end());
    text.erase(text.begin(), std::find_if(text.begin(), text.end(), isText));
}

std::string printable(std::string_view raw)
{
    while (!raw.empty() && isBlank(raw.front()))
        raw.remove_prefix(1);
    while (!raw.empty() && isBlank(raw.back()))
        raw.remove_suffix(1);
    std::string text(raw);
    for (char& c : text) {
        if (isBlank(c))
            c = ' ';
        else if (static_cast<unsigned char>(c) >= 0x7F)
            c = '?';
    }
    return text;
}

/// Removes the attributes that evaluation does not use, and repeated ones.
void tidyAttributes(pugi::xml_node element, bool keepsName)
{
    for (auto attribute = element.first_attribute(); attribute;) {
        const auto next = attribute.next_attribute();
        const std::string_view name = attribute.name();
        if (!isAttribute(name) || (name == "Name" && !keepsName) ||
            element.attribute(attribute.name()) != attribute)
            element.remove_attribute(attribute);
        else
            attribute.set_value(printable(attribute.value()).c_str());
        attribute = next;
    }
}

/// Gives a property one piece of text and nothing else.
void tidyProperty(pugi::xml_node property)
{
    std::string text = property.value(); // The first piece stands in the element itself.
    for (const auto& child : property.children())
        if (child.type() == pugi::node_cdata || child.type() == pugi::node_pcdata)
            text += child.value();
    property.remove_children();
    property.text().set(printable(text).c_str());
}

/// Removes the text between an element's children, which the parser keeps in the element itself.
void dropText(pugi::xml_node element)
{
    if (*element.value() != '\0')
        element.text().set("");
}

class Tidier
{
public:
    /// Moves the nodes of the element and of the groups in it behind `end`, a child of the root.
    void collect(pugi::xml_node parent, pugi::xml_node root, pugi::xml_node end)
    {
        for (auto child = parent.first_child(); child && child != end;) {
            const auto next = child.next_sibling();
            if (std::string_view(child.name()) == "Group")
                collect(child, root, end); // No deeper than checkDepth has allowed.
            else if (findNodeKind(child.name()) && std::string_view(child.name()) != "StructEntry") {
                tidyNode(child, true);
                root.append_move(child);
            }
            child = next;
        }
    }

private:
    void tidyNode(pugi::xml_node node, bool keepsName)
    {
        count();
        tidyAttributes(node, keepsName);
        const NodeKind& kind = *findNodeKind(node.name());
        const bool isStructure = kind.name == "StructReg";
        for (auto child = node.first_child(); child;) {
            const auto next = child.next_sibling();
            const std::string_view name = child.name();
            if (isProperty(name)) {
                count();
                tidyAttributes(child, true);
                tidyProperty(child);
            } else if ((isStructure && name == "StructEntry") ||
                       (kind.isRegister && name == "IntSwissKnife")) {
                tidyNode(child, name == "StructEntry");
            } else {
                node.remove_child(child);
            }
            child = next;
        }
        dropText(node);
    }

    void count()
    {
        if (++m_count > MaxElements)
            refuseDescription("it has more than " + std::to_string(MaxElements) + " elements");
    }

    int m_count = 0;
};

class StringWriter : public pugi::xml_writer
{
public:
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

/// Reads a description's text into a document of nothing but what evaluation needs: the root, its nodes
/// without groups, their properties; values without white space around them, all of it printable ASCII.
/// Documentation, categories, selections, enumeration entries and elements that nobody knows are left out.
///
/// The document refers into the text, which is changed and must stay.
void readDescription(std::string& text, pugi::xml_document& document)
{
    dropPadding(text);
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3);
    if (text.empty())
        refuseDescription("it is empty");
    if (text.find('\0') != text.npos)
        refuseDescription("it is no text");
    if (std::count_if(text.begin(), text.end(), [](char c) { return c == '<' || c == '='; }) > MaxMarkup)
        refuseDescription("it has more elements and attributes than any real one");

    parse(text, document);
    auto root = document.document_element();
    if (std::string_view(root.name()) != "RegisterDescription")
        refuseDescription("it does not begin with RegisterDescription");
    checkDepth(root);

    root.remove_attributes(); // Nothing depends on the version of the schema.
    const auto end = root.append_child("Group");
    Tidier().collect(root, root, end);
    while (root.first_child() != end)
        root.remove_child(root.first_child());
    root.remove_child(end);
    dropText(root);
}

std::string writeDescription(const pugi::xml_document& document)
{
    StringWriter writer;
    document.document_element().print(writer, "", pugi::format_raw | pugi::format_no_declaration,
                                      pugi::encoding_utf8);
    return std::move(writer.text);
}

} // namespace

std::string unpackDescription(std::string_view data)
{
    const base::CancellationHold hold;
    if (const base::ByteView bytes(reinterpret_cast<const std::uint8_t*>(data.data()), data.size());
        base::isZip(bytes))
        return unpackZip(bytes);
    if (data.size() > MaxDescriptionSize)
        refuseDescription("it has more than " + std::to_string(MaxDescriptionSize) + " bytes");
    return std::string(data);
}

CheckedDescription checkDescription(std::string text)
{
    const base::CancellationHold hold;
    pugi::xml_document document;
    readDescription(text, document);
    settleAccessModes(document);
    const ReferenceGraph graph(document);
    return {writeDescription(document), graph.faults()};
}

} // namespace genapi
