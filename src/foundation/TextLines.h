// Small text helpers that the line-oriented parsers share: white space, trimming, lines, suffixes,
// decimal numbers, the path separator.
#pragma once

#include <cstdint>
#include <cstdio>

#include "foundation/String.h"

namespace corvane {

inline constexpr const char* whitespaceChars = " \t\n\r";
inline constexpr const char* pathSeparator = "\\";

bool isWhite(char character) noexcept;

// Removes the characters of `set` from both ends.
void trim(String& text, const char* set = whitespaceChars);

// `text` with every match of `what`, which isn't empty, replaced; what was put in isn't searched.
String replaceAll(const String& text, const String& what, const String& replacement);

// Appends the next line of `file` to `line` and trims `line`. Carriage returns are dropped wherever
// they stand; the line feed is consumed and not stored.
void readLine(std::FILE* file, String& line);

// The same over `text` from `pos`, which moves behind the line feed. At the end of the text nothing
// happens, not even the trimming.
void readLine(const String& text, std::size_t& pos, String& line);

// Writes `text` and a line feed, which a text stream turns into the system's line end.
void writeLine(std::FILE* file, const String& text);

// Whether the next read of `file` meets its end (or an error, which isn't told apart).
bool atEnd(std::FILE* file);

// Position of `suffix` if it ends `text`, else `npos`.
std::size_t endsWith(const String& text, const String& suffix) noexcept;

String decimalText(std::int32_t value);

// Reads a decimal number as the standard scan does: white space in front and anything behind the
// digits is passed over. False if there is none. A number beyond the type's range gives the nearest
// number of it.
bool scanNumber(const String& text, std::int32_t& value) noexcept;
bool scanNumber(const String& text, std::int16_t& value) noexcept;

// Appends a backslash to a `path` that is neither empty nor ends with one.
void ensureTrailingSeparator(String& path);

}  // namespace corvane
