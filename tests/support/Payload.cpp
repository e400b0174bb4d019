// Launcher files for tests.
#include "support/Payload.h"

#include <sstream>

namespace corvane::test {

void writeLauncher(std::ostream& out, std::uint8_t kind, const std::vector<EmbeddedFile>& files,
                   const std::string& program) {
    pack::PayloadWriter writer(out);
    std::istringstream programBytes(program);
    writer.appendProgram(programBytes);
    for (const EmbeddedFile& file : files) {
        std::istringstream content(file.content);
        writer.appendFile({file.type, file.id, file.name, file.decompressed}, content);
    }
    writer.finish(kind);
}

std::string launcherBytes(std::uint8_t kind, const std::vector<EmbeddedFile>& files,
                          const std::string& program) {
    std::ostringstream out;
    writeLauncher(out, kind, files, program);
    return out.str();
}

LauncherRun::LauncherRun() {
    run.context.launcherFile = makeOwned<LauncherFile>();
    run.context.logFile = scratch.path("run.log");
    std::filesystem::create_directory(scratch.native("temp"));
    run.context.tempDir = scratch.path("temp");
    useLauncher(launcherBytes(0, {}));
}

void LauncherRun::useLauncher(const std::string& bytes) {
    run.context.launcherPath = scratch.write("setup.exe", bytes);
    run.context.originalLauncherPath = run.context.launcherPath;
    run.context.launcherKindCache = -1;
    run.context.trailerOffset = 0;
    run.context.launcherFile = makeOwned<LauncherFile>();
}

}  // namespace corvane::test
