// The first and the last object of the report.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

// Takes the report's name from CORVANE_REPORT; `-cv:report` may name another.
void prepareReport();

// Writes `start`, once, when all that it tells is known: behind the options, or in front of an
// action among them.
void reportStart();

// Writes `end`, with the message of the failure that ended the run, if one did.
void reportEnd(std::int32_t exitValue, const String& failure);

}  // namespace corvane
