// Playing of a run.
#include "packer/trial/Trial.h"

#include <algorithm>
#include <fstream>
#include <set>

#include "assembly/LauncherFileLoading.h"
#include "base/LauncherUI.h"
#include "base/RunContext.h"
#include "driver/RunDriver.h"
#include "driver/RunGuard.h"
#include "foundation/Exceptions.h"
#include "foundation/TextLines.h"
#include "host/Environment.h"
#include "host/Paths.h"
#include "host/TempFiles.h"
#include "launch/LaunchScript.h"
#include "launcherfile/LauncherFile.h"
#include "launcherfile/LauncherKind.h"
#include "packer/base/Errors.h"
#include "packer/base/Paths.h"
#include "platform/Platform.h"

namespace corvane::pack {

namespace fs = std::filesystem;

namespace {

// Stands for the home of a Java that wasn't found.
constexpr const char* anyHome = "<JAVA>";

constexpr const char* hintTags[] = {"PLATFORM_HINT", "PATH_HINT", "ENV_HINT"};

std::string text(const String& string) {
    return std::string(string.view());
}

// A front end that only keeps what the user would have read.
class TrialUi final : public LauncherUI {
  public:
    explicit TrialUi(std::vector<std::string>& messages) : messages_(messages) {}
    virtual ~TrialUi() = default;

    bool init(void*, std::int32_t) override { return true; }
    std::int32_t run() override { return 0; }
    void setStatus(const String&) override {}
    void setStatusDetail(const String&, const String&) override {}
    void stepProgress(std::int32_t) override {}
    void setProgress(std::int32_t) override {}
    void show() override {}
    void hide(std::int16_t) override {}
    bool isVisible() override { return false; }
    void showMessage(const String& message) override { messages_.push_back(text(message)); }
    void showLink(const String& message, const String& address) override {
        messages_.push_back(text(message) + "\n\n" + text(address));
    }
    String title() override { return {}; }
    void setTitle(const String&) override {}
    String chooseDirectory() override { return {}; }

  private:
    std::vector<std::string>& messages_;
};

// The pieces of a class path, without quotes and empty ones.
std::vector<TrialPath> piecesOf(const String& classPath) {
    std::vector<TrialPath> pieces;
    std::string piece;
    for (const char character : text(classPath) + ';') {
        if (character != ';') {
            piece += character == '"' ? "" : std::string(1, character);
        } else if (!piece.empty()) {
            const bool exists = fs::exists(pathOf(nativePath(piece.c_str())));
            pieces.push_back({std::exchange(piece, {}), exists});
        }
    }
    return pieces;
}

// One play. The launcher's operations know one run per process, and call a plain function at a
// start, so there is one of these.
class Player {
  public:
    Player(const fs::path& launcher, const Project* project)
        : project_(project), ui_(run_.messages) {
        run_.launcher = fs::absolute(launcher).lexically_normal();
        // Behind the current folder, so that the host has a drive for it.
        std::string path = run_.launcher.lexically_proximate(fs::current_path()).string();
        std::ranges::replace(path, '/', '\\');
        shownPath_ = absolutePath(path.c_str());
    }

    TrialRun play(const std::vector<std::string>& arguments) {
        current_ = this;
        const RunGuard guard;
        try {
            prepare();
            for (const std::string& argument : arguments)
                arguments_.add(argument.c_str());
            loadLauncherFile(*runContext().launcherFile, true);
            describeJvmFiles();
            if (!run_.isForeign)
                carryOut();
            if (!run_.startsApplication())
                suppose();
            run_.temporaryRoot = text(getTempRoot());
        } catch (const LauncherException& failure) {
            throw PackError(text(failure.message));
        }
        run_.wasEnded = endRequests() > 0;
        run_.report = readReport(nativePath(runContext().reportFile.cstr()));
        return std::move(run_);
    }

  private:
    void prepare() {
        watchEndRequests();
        RunContext& context = runContext();
        context.ui = &ui_;
        context.moduleHandle = GetModuleHandleA(nullptr);
        context.launcherFile = makeOwned<LauncherFile>();
        context.playStart = noteStart;
        folder_ = createTempDirectory();
        context.reportFile = folder_ + "\\report";
        context.originalLauncherPath = shownPath_;
        path_ = shownPath_;
        if (project_ != nullptr) {
            path_ = folder_ + "\\" + run_.launcher.filename().string().c_str();
            writePayload(pathOf(nativePath(path_.cstr())));
        }
        context.launcherPath = path_;
        launcherKind(path_.cstr());
        context.isTool = isToolLauncher(path_.cstr());
    }

    // All of the launcher but for its program.
    void writePayload(const fs::path& path) const {
        std::ofstream out(path, std::ios::binary);
        PayloadWriter writer(out);
        appendFiles(project_->manifest, writer);
        writer.finish(project_->manifest.kind);
    }

    void carryOut() {
        for (const String& argument : arguments_)
            runContext().originalArgs.add(argument);
        try {
            processOptions(arguments_);
        } catch (const LauncherException& failure) {
            if (failure.link.empty())
                ui_.showMessage(failure.message);
            else
                ui_.showLink(failure.message, failure.link);
        }
    }

    void describeJvmFiles() {
        for (const FileIndexEntry& entry : *runContext().launcherFile) {
            if (entry.type != FileType::jvmFile || entry.tags == nullptr)
                continue;
            TrialJvmFile file;
            file.description = text(entry.tags->value("DESC", 0));
            file.executable = text(entry.tags->value("JVM_EXE", 0));
            for (const char* tag : hintTags)
                file.hints.emplace_back(tag, entry.tags->valueCount(tag));
            file.searchesDisks = entry.tags->boolValue("SEARCH_ALL", false);
            const bool isForWindows = file.executable.ends_with(".exe");
            run_.isForeign |= isForWindows != (ownSystem() == System::windows);
            run_.jvmFiles.push_back(std::move(file));
        }
    }

    // What would be started if there were a Java for the first JVM file.
    void suppose() {
        const LauncherFile& files = *runContext().launcherFile;
        const FileIndexEntry* const entry = files.findByType(FileType::jvmFile);
        if (files.launchScript == nullptr || entry == nullptr || entry->tags == nullptr)
            return;
        entry->tags->setValue("JVM_HOME", anyHome);
        JvmFile jvmFile(*entry->tags);
        supposing_ = true;
        try {
            // Without a run, the options aren't told from the application's arguments.
            files.launchScript->execute(
                jvmFile, run_.isForeign ? &arguments_ : &runContext().passThroughArgs, false);
        } catch (const LauncherException& failure) {
            ui_.showMessage(failure.message);
        }
    }

    static void noteStart(const String& commandLine, const String& directory) {
        current_->note(commandLine, directory);
    }

    void note(const String& commandLine, const String& directory) {
        TrialStart start;
        // The report tells of an application directly in front of its start.
        const auto report = readReport(nativePath(runContext().reportFile.cstr()));
        start.isApplication = !report.empty() && report.back().at("event") == "launch" &&
                              report.back().at("commandLine") == commandLine.cstr();
        start.isSupposed = supposing_;
        start.commandLine = shown(commandLine);
        start.directory = shown(directory);
        if (start.isApplication) {
            start.classPath = piecesOf(runContext().classPath);
            start.environment = environment();
        }
        run_.starts.push_back(std::move(start));
    }

    // What the launcher has set in it for the application.
    static std::vector<std::pair<std::string, std::string>> environment() {
        std::set<std::string> names = {"JAVA_HOME"};
        for (const FileIndexEntry& entry : *runContext().launcherFile) {
            if (entry.type != FileType::jvmFile || entry.tags == nullptr)
                continue;
            names.insert(text(entry.tags->value("CP_ENV_VAR", 0)));
            for (const String& setting : entry.tags->values("SET_ENV_FOR_WIZARD"))
                names.insert(text(setting).substr(0, text(setting).find('=')));
        }
        names.erase("");
        std::vector<std::pair<std::string, std::string>> settings;
        for (const std::string& name : names) {
            const std::string value = text(getEnvironmentValue(name.c_str()));
            if (!value.empty())
                settings.emplace_back(name, value);
        }
        return settings;
    }

    // A text in which the launcher stands where it would be.
    std::string shown(const String& words) const {
        if (project_ == nullptr)
            return text(words);
        if (words == folder_)
            return text(parentDirectory(shownPath_));
        return text(replaceAll(words, path_, shownPath_));
    }

    inline static Player* current_ = nullptr;

    const Project* project_;
    TrialRun run_;
    TrialUi ui_;
    StringList arguments_;
    String folder_;     // of this play
    String path_;       // of the launcher that is played
    String shownPath_;  // where it would be
    bool supposing_ = false;
};

}  // namespace

bool TrialRun::startsApplication() const {
    return std::ranges::any_of(
        starts, [](const TrialStart& start) { return start.isApplication && !start.isSupposed; });
}

TrialRun playRun(const fs::path& launcher, const Project* project,
                 const std::vector<std::string>& arguments) {
    return Player(launcher, project).play(arguments);
}

}  // namespace corvane::pack
