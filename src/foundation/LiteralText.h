// Texts that a template or an expansion takes in as they stand, such as the path of a temporary
// directory, whatever separators they hold.
#pragma once

#include "foundation/String.h"

namespace corvane {

// `text` with marks in the place of its separators, which no pass over a text looks into.
String literal(const String& text);

// `text` with the separators back in the place of their marks.
String withoutMarks(const String& text);

}  // namespace corvane
