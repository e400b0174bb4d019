// Text for a child: a child of the launcher is a host program, which knows no drive letters, so
// mapped Windows paths in its arguments and environment are turned into host paths.
#pragma once

#include <string>

namespace corvane::hosted {

// `text` with its mapped paths in host form. A mapped path starts with the letter of a mapped drive
// (Z: always is one), a colon and a separator: a backslash, or one slash alone, so that x:// is
// none. No letter, digit or separator stands in front of it, so that http:/ is none. It runs to the
// next ; " : < > | ? * or another mapped path; the drive becomes its directory and each backslash a
// slash. The same goes for an absolute host path whose front, up to its first backslash, is a
// directory: /tmp\a. If a text holds a mapped path, it is taken for a list: all its semicolons
// become colons. A text without one is given back as it is.
std::string childText(const std::string& text);

}  // namespace corvane::hosted
