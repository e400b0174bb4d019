// The failures that carry words. With those of String.h, which carry none, they are the four that
// travel through the launcher. They share no base: a handler for one never takes another.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

// A reported failure. `message` is the finished text for the user, `link` an address that helps
// him, if there is one.
struct LauncherException {
    explicit LauncherException(String text, String address = {})
        : message(std::move(text)), link(std::move(address)) {}
    LauncherException(const LauncherException&) = default;
    LauncherException& operator=(const LauncherException&) = default;
    virtual ~LauncherException() = default;

    String message;
    String link;
};

// A failure in the instruction script, at `lineNumber` of the script, counted from 1.
struct InstructionsException {
    InstructionsException(String text, std::int32_t line)
        : message(std::move(text)), lineNumber(line) {}
    InstructionsException(const InstructionsException&) = default;
    InstructionsException& operator=(const InstructionsException&) = default;
    virtual ~InstructionsException() = default;

    String message;
    std::int32_t lineNumber;
};

}  // namespace corvane
