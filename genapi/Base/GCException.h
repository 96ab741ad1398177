// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace GenICam {

/// What everything here throws: a sentence for the user, and where in the sources it was thrown.
///
/// Defined in this header alone, so that a port of another library can throw it too.
class __attribute__((visibility("default"))) GenericException : public std::exception
{
public:
    GenericException(std::string description, const char* sourceFileName, unsigned sourceLine,
                     const char* exceptionType = "GenericException")
        : m_description(std::move(description)),
          m_sourceFileName(sourceFileName),
          m_sourceLine(sourceLine),
          m_exceptionType(exceptionType)
    {}

    const char* what() const noexcept override { return m_description.c_str(); }
    const char* GetDescription() const noexcept { return m_description.c_str(); }
    const char* GetSourceFileName() const noexcept { return m_sourceFileName; }
    unsigned GetSourceLine() const noexcept { return m_sourceLine; }
    const char* GetExceptionType() const noexcept { return m_exceptionType; }

private:
    std::string m_description;
    const char* m_sourceFileName; ///< A literal (__FILE_NAME__).
    unsigned m_sourceLine;
    const char* m_exceptionType; ///< A literal.
};

/// The feature may not be read, written or executed now.
class __attribute__((visibility("default"))) AccessException : public GenericException
{
public:
    AccessException(std::string description, const char* sourceFileName, unsigned sourceLine)
        : GenericException(std::move(description), sourceFileName, sourceLine, "AccessException")
    {}
};

/// The value lies outside what the feature takes.
class __attribute__((visibility("default"))) OutOfRangeException : public GenericException
{
public:
    OutOfRangeException(std::string description, const char* sourceFileName, unsigned sourceLine)
        : GenericException(std::move(description), sourceFileName, sourceLine, "OutOfRangeException")
    {}
};

/// The argument makes no sense whatever the state.
class __attribute__((visibility("default"))) InvalidArgumentException : public GenericException
{
public:
    InvalidArgumentException(std::string description, const char* sourceFileName, unsigned sourceLine)
        : GenericException(std::move(description), sourceFileName, sourceLine, "InvalidArgumentException")
    {}
};

/// Anything else that went wrong, above all at the camera.
class __attribute__((visibility("default"))) RuntimeException : public GenericException
{
public:
    RuntimeException(std::string description, const char* sourceFileName, unsigned sourceLine)
        : GenericException(std::move(description), sourceFileName, sourceLine, "RuntimeException")
    {}
};

} // namespace GenICam
