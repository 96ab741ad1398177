// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace genapi {

/// Reads a description's text into a document of nothing but what evaluation needs: the root, its nodes
/// without groups, their properties; values without white space around them, all of it printable ASCII.
/// Documentation, categories, selections, enumeration entries and elements that nobody knows are left out.
///
/// The document refers into the text, which is changed and must stay. Throws a GenICam::RuntimeException for
/// what is no description, has a document type (and so entities), or is larger or deeper than any real one.
void readDescription(std::string& text, pugi::xml_document& document);

/// The document as text.
std::string writeDescription(const pugi::xml_document& document);

} // namespace genapi
