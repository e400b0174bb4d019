// Batch files: the host has no interpreter for them, so the few commands that the launcher's
// cleanup writes are turned into a shell script that does the same.
#pragma once

#include <optional>
#include <string>

namespace corvane::hosted {

// The /bin/sh script for a batch text. It may hold labels (:NAME), `@echo TEXT >> FILE`,
// `del "FILE"`, `if exist "FILE" goto NAME` and `rmdir /q "DIRECTORY"`, one a line; each label is
// followed by one `if` that goes back to it. Such a loop pauses 0.2 s between its tries and gives
// up after a minute. None for a text that holds anything else or a path that isn't mapped.
std::optional<std::string> translateBatch(const std::string& text);

}  // namespace corvane::hosted
