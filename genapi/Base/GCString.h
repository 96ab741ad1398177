// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <utility>

namespace GenICam {

/// Text or bytes; zero bytes count like any other.
class gcstring
{
public:
    gcstring() = default;
    gcstring(const char* text) : m_text(text) {} // NOLINT: names are given as literals.
    gcstring(const char* data, std::size_t size) : m_text(data, size) {}
    explicit gcstring(std::string text) : m_text(std::move(text)) {}

    const char* c_str() const noexcept { return m_text.c_str(); }
    std::size_t size() const noexcept { return m_text.size(); }
    bool empty() const noexcept { return m_text.empty(); }
    void resize(std::size_t size) { m_text.resize(size); }

    bool operator==(const gcstring&) const = default;

private:
    std::string m_text;
};

} // namespace GenICam
