// What the windowed front end decides: plain functions over numbers, without windows, so that they
// can be tested on every host. The message handling around them only carries out.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

// Resource ids of the two progress dialogs.
enum class DialogId : std::uint16_t { tall = 101, compact = 103 };

// Ids of their controls. No dialog has a cancel button so far; one that had it would work.
enum class DialogControl : std::int32_t { status = 1000, bar = 1001, cancel = 1003, text = 1004 };

// Resource id of the program's icon.
inline constexpr std::uint16_t programIcon = 102;

// The dialog for a launcher of that kind, -1 for one whose kind can't be read.
DialogId dialogFor(std::int32_t kind) noexcept;

// Where the bar stands after a step of `delta` from `current`: it wraps at 100, and negative sums
// count as the unsigned numbers they are.
std::int32_t positionAfterStep(std::int32_t current, std::int32_t delta) noexcept;

// Where the bar stands for a progress of `position`: it is never full, 100 shows as 0.
std::int32_t positionShown(std::int32_t position) noexcept;

// While the dialog waits to be hidden the bar moves by `tickStep` every `tickPeriodMs`.
inline constexpr std::uint32_t tickPeriodMs = 100;
inline constexpr std::int32_t tickStep = 5;

// Milliseconds until a dialog that is to go after `delaySeconds` is hidden; 0 is at once, also for
// a negative number.
std::uint32_t hideDelayMs(std::int16_t delaySeconds) noexcept;

// Whether the system is about to end the session, from what its message says: not when another
// program took the end back, nor when it only wants this program closed.
bool sessionEnds(bool ending, std::uint32_t flags) noexcept;

// What of `text` a message box shows, so that it fits the screen: of more than 25 lines the first
// 15 and the last 10, with their number between them left out, and of a line 200 characters.
String boxText(const String& text);

// Whether an address may be opened at the user's request: one of the web, without anything that
// would not stand in an address.
bool isWebAddress(const String& address) noexcept;

// Whether a box with this text reads from the right, which two right-to-left marks in front say.
bool readsFromTheRight(const String& text) noexcept;

struct Size {
    std::int32_t width;
    std::int32_t height;
};

struct Position {
    std::int32_t x;
    std::int32_t y;
};

// The upper left corner of a window that stands in the middle of the screen, in pixels.
Position centred(Size screen, Size window) noexcept;

}  // namespace corvane
