// Where a signed Windows program's own bytes end.
#pragma once

#include <cstdint>
#include <cstdio>

namespace corvane {

// How far from its end (0 or below) a launcher file's payload ends as far as the program's headers
// tell: in front of the certificates that a signature added, and of the zeros that it filled up
// with. 0 for every other file.
std::int32_t signedPayloadEnd(std::FILE* file);

}  // namespace corvane
