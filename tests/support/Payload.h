// Launcher files for tests: made by the pack tool's writer, whole or damaged.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "launcherfile/LauncherFile.h"
#include "packer/payload/PayloadWriter.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

namespace corvane::test {

// An embedded file and its bytes.
struct EmbeddedFile {
    FileType type;
    std::string name;
    std::string content;
    std::int32_t id = 0;
    std::optional<pack::Decompressed> decompressed = std::nullopt;
};

// Writes a launcher file whose program is `program`.
void writeLauncher(std::ostream& out, std::uint8_t kind, const std::vector<EmbeddedFile>& files,
                   const std::string& program);

// The bytes of one.
std::string launcherBytes(std::uint8_t kind, const std::vector<EmbeddedFile>& files,
                          const std::string& program = "MZ a program");

// A run whose launcher is a file in a scratch directory, with its index not yet loaded.
class LauncherRun {
  public:
    LauncherRun();

    // Writes the launcher file and names it as the running one.
    void useLauncher(const std::string& bytes);
    void useLauncher(const std::vector<EmbeddedFile>& files, std::uint8_t kind = 0) {
        useLauncher(launcherBytes(kind, files));
    }

    RunContext& context() { return run.context; }
    LauncherFile& files() { return *run.context.launcherFile; }
    RecordingUI& ui() { return run.ui; }
    // The log so far.
    std::string log() const { return scratch.readText("run.log"); }

    Scratch scratch;
    TestContext run;
};

}  // namespace corvane::test
