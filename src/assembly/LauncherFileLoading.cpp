// The loading of a launcher file.
#include "assembly/LauncherFileLoading.h"

#include "base/Messages.h"
#include "base/RunContext.h"
#include "base/Ui.h"
#include "foundation/Exceptions.h"
#include "instructions/Instructions.h"
#include "jvmsearch/JvmSearch.h"
#include "launch/LaunchScript.h"
#include "launcherfile/PackedRecord.h"
#include "launcherfile/SignedProgram.h"
#include "platform/Platform.h"

namespace corvane {

namespace {

void setInstructions(LauncherFile& files, TagFile& tags) {
    files.instructions = makeOwned<Instructions>(tags);
}

void addJvmFile(LauncherFile& files, TagFile& tags) {
    jvmSearchOf(files).addJvmFile(std::make_unique<JvmFile>(tags));
}

void setLaunchScript(LauncherFile& files, TagFile& tags) {
    files.launchScript = makeOwned<LaunchScript>(tags, true);
    uiApplyTitle(files.launchScript->description());
}

void setJvmMessage(LauncherFile& files, TagFile& tags) {
    files.jvmMessage = std::make_unique<JvmMessage>(tags);
}

// What is made from a tag-bearing file, unless it is there already.
struct Maker {
    FileType type;
    bool (*isWanted)(const LauncherFile& files);
    void (*make)(LauncherFile& files, TagFile& tags);
    MessageId failure;
};

constexpr Maker makers[] = {
    {FileType::instructions,
     [](const LauncherFile& files) { return files.instructions == nullptr; }, setInstructions,
     MessageId::instructionsNotLoaded},
    {FileType::jvmFile, [](const LauncherFile& files) { return !files.jvmFilesGiven; }, addJvmFile,
     MessageId::jvmFileNotLoaded},
    {FileType::launchScript,
     [](const LauncherFile& files) { return files.launchScript == nullptr; }, setLaunchScript,
     MessageId::launchScriptNotLoaded},
    {FileType::jvmMessage, [](const LauncherFile& files) { return files.jvmMessage == nullptr; },
     setJvmMessage, MessageId::instructionsNotLoaded},
};

void makeFrom(LauncherFile& files, FileIndexEntry& entry) {
    for (const Maker& maker : makers) {
        if (maker.type == entry.type && maker.isWanted(files))
            withContext(maker.failure, [&] { maker.make(files, *entry.tags); });
    }
}

long sizeOf(std::FILE* stream) {
    return std::fseek(stream, 0, SEEK_END) == 0 ? std::ftell(stream) : 0;
}

// Also parses what isn't used in the end. An index that points to the same bytes again and again
// could make that more text than the file holds, so it is measured.
void loadContents(LauncherFile& files, std::FILE* stream) {
    const long fileSize = sizeOf(stream);
    std::int64_t parsed = 0;
    for (FileIndexEntry& entry : files) {
        entry.loadTags(stream);
        if (entry.tags == nullptr)
            continue;
        parsed += std::ftell(stream) - entry.offset;
        if (parsed > fileSize)
            throw LauncherException("The embedded tag files overlap. First surplus file: " +
                                    entry.name);
        makeFrom(files, entry);
    }
}

void loadIndexAndContents(LauncherFile& files, bool withContents) {
    const StreamGuard stream(openStream(runContext().launcherPath.cstr(), "rb"));
    if (!stream)
        throw LauncherException("Cannot open launcher file.");
    // Whoever hasn't asked for the kind doesn't know of a signature yet.
    const std::int32_t known = runContext().trailerOffset;
    const std::int32_t trailerEnd = known == 0 ? signedPayloadEnd(stream.get()) : known;
    if (files.readIndex(stream.get(), trailerEnd) && withContents)
        loadContents(files, stream.get());
}

// The file is kept only once it has been read whole.
TagFile& loadByName(LauncherFile& files, const String& path) {
    return *files.ownedTagFiles.add(std::make_unique<TagFile>(path));
}

}  // namespace

void loadLauncherFile(LauncherFile& files, bool withContents) {
    if (files.indexLoaded)
        return;
    try {
        checkPackedRecord();
        withContext(MessageId::indexNotLoaded, [&] { loadIndexAndContents(files, withContents); });
    } catch (const LauncherException&) {
        throw;
    } catch (...) {
        // Anything else leaves the launcher with what was loaded so far.
    }
    files.indexLoaded = true;
}

void loadFromInputFile(LauncherFile& files, const TagFile& tags) {
    const String script = tags.value("INSTRUCTIONS", 0);
    if (!script.empty())
        withContext(MessageId::instructionsNotLoaded,
                    [&] { setInstructions(files, loadByName(files, script)); });
    const String launch = tags.value("LAUNCHSCRIPT", 0);
    if (!launch.empty())
        withContext(MessageId::launchScriptNotLoaded,
                    [&] { setLaunchScript(files, loadByName(files, launch)); });
    const String classpath = tags.value("VERIFY_CLASSPATH", 0);
    const String className = tags.value("VERIFY_CLASS_NAME", 0);
    if (!classpath.empty() && !className.empty())
        jvmSearchOf(files).setVerifyClass(classpath, className);
    const String title = tags.value("UI_TITLE", 0);
    if (!title.empty())
        uiApplyTitle(title);
    for (const String& jvmFile : tags.values("JVM")) {
        // Also an empty name takes the place of the embedded JVM files.
        files.jvmFilesGiven = true;
        if (!jvmFile.empty())
            withContext(MessageId::jvmFileNotLoaded,
                        [&] { addJvmFile(files, loadByName(files, jvmFile)); });
    }
}

}  // namespace corvane
