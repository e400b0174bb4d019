// Whole launcher files: trailer, index, and the tag files that they carry.
#include "Fuzz.h"
#include "assembly/LauncherFileLoading.h"
#include "jvmsearch/JvmSearch.h"
#include "launcherfile/LauncherKind.h"
#include "support/Scratch.h"
#include "support/TestContext.h"

using namespace corvane;

namespace {

// As `loadLauncherFile`, but with every exception let out.
void readAll(const String& path, std::int32_t size) {
    LauncherFile files;
    const StreamGuard stream(openStream(path.cstr(), "rb"));
    files.readIndex(stream.get(), runContext().trailerOffset);
    for (FileIndexEntry& entry : files) {
        fuzz::require(entry.length >= 0 && entry.offset >= 0 && entry.offset <= size);
        entry.loadTags(stream.get());
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::Scratch scratch;
    test::TestContext run;
    run.context.launcherPath = scratch.write("setup.exe", fuzz::inputText(data, size));
    const String& path = run.context.launcherPath;
    test::failureOf([&] {
        launcherKind(path.cstr());
        fuzz::require(run.context.trailerOffset <= 0);
        readAll(path, static_cast<std::int32_t>(size));
    });
    run.context.launcherFile = makeOwned<LauncherFile>();
    test::failureOf([&] { loadLauncherFile(*run.context.launcherFile, true); });
    return 0;
}
