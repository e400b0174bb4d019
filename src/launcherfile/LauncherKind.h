// The trailer at the end of a launcher file, and the kind that it states.
#pragma once

#include <cstdint>

namespace corvane {

// The kind byte of the launcher file at `path`, or -1 if it can't be read. Looks for the trailer
// from the end of the file backwards and leaves its end, relative to the end of the file, in
// `RunContext.trailerOffset`: 0 when nothing follows it, or when there is none, in which case the
// answer is simply the byte 9 from the end. The answer for `launcherPath` is remembered. A file of
// under 8 bytes without an identification value raises a `LauncherException`.
std::int32_t launcherKind(const char* path);

// Whether the launcher file at `path` is a command-line tool. Looks for the trailer where it stands
// in a file that nothing but a signature was added to, and changes nothing in the context.
bool isToolLauncher(const char* path);

}  // namespace corvane
