// Searches with VERIFY_SECONDS against the same without it, and against the starts that they can't
// do without, over homes that a small program plays; and one candidate's check against running the
// program alone.
#include <cstdlib>

#include "Comparison.h"
#include "foundation/TextLines.h"
#include "jvmsearch/SearchRun.h"
#include "platform/Platform.h"
#include "process/LimitedRun.h"

namespace corvane::bench {

namespace {

constexpr std::int32_t limitSeconds = 2;

// Searches for Java 21, 17 or any newer, of which only the last home is one.
class Homes {
  public:
    // `thatHold`: with a home that hangs, one that can't be started, and a flood without end.
    explicit Homes(bool thatHold) : thatHold_(thatHold) {
        home("hangs", "hang");
        run_.scratch.write("text\\bin\\java.exe", "no program\n");
        makeExecutable(run_.scratch.path("text\\bin\\java.exe").cstr());
        home("floods", thatHold ? "endless" : "version=8\nflood");
        for (const char* const name : {"old", "old2", "old3"})
            home(name, "version=8");
        home("right", "version=25");
        run_.context().originalLauncherPath = run_.scratch.path("launcher.exe");
    }

    // Whether the right home is found. Each search is a run of its own.
    bool search(bool limited) const {
        JvmSearch search;
        search.setVerifyClass("\"verify.jar\"", "Verify");
        std::vector<std::unique_ptr<TagFile>> tags;
        for (const char* const wanted : {"version=21", "version=17", "version>=11"}) {
            tags.push_back(jvmFile(wanted, limited));
            search.addJvmFile(std::make_unique<JvmFile>(*tags.back()));
        }
        JvmMatchList results;
        search.findJvm(results);
        return results.count() == 1 && results.at(0)->home().view().ends_with("right");
    }

    // A shell's command that starts the home's Java as a search does, or fails.
    std::string startOf(const std::string& name) const {
        const std::string home = nativePath(run_.scratch.path(name).cstr());
        return "JAVA_HOME='" + home + "' '" + home + "/bin/java.exe' Verify version >/dev/null";
    }

    String home(const std::string& name, const std::string& behaviour) {
        return test::makeJavaHome(run_.scratch, name, behaviour + "\n");
    }

  private:
    std::unique_ptr<TagFile> jvmFile(const char* wanted, bool limited) const {
        auto tags = std::make_unique<TagFile>();
        test::SearchRun::describe(*tags, wanted, "");
        tags->setValue("JVM_PROPERTIES", wanted);
        if (limited)
            tags->setValue("VERIFY_SECONDS", decimalText(limitSeconds));
        for (const char* const hint : {"hangs", "text"}) {
            if (thatHold_)
                tags->addValue("PATH_HINT", hint);
        }
        for (const char* const hint : {"floods", "old", "old2", "old3", "right"})
            tags->addValue("PATH_HINT", hint);
        return tags;
    }

    const bool thatHold_;
    test::LauncherRun run_;
};

Action searchOf(benchmark::State& state, const Homes& homes, bool limited) {
    return [&state, &homes, limited] {
        if (!homes.search(limited))
            state.SkipWithError("the right home isn't found");
    };
}

void answering(benchmark::State& state) {
    const Homes homes(false);
    compare(state, {"the same without VERIFY_SECONDS", searchOf(state, homes, true),
                    searchOf(state, homes, false)});
}
BENCHMARK(answering)->Name("search: 5 homes, 3 JVM files")->Iterations(3)->UseManualTime();

void startingAlone(benchmark::State& state) {
    const Homes homes(false);
    std::string starts = homes.startOf("floods");
    for (const char* const name : {"old", "old2", "old3", "right"})
        starts += " && " + homes.startOf(name);
    const auto theirs = [&] {
        if (std::system(starts.c_str()) != 0)
            state.SkipWithError("the shell can't run them");
    };
    compare(state, {"the five starts alone", searchOf(state, homes, true), theirs, [] {}, "1.05"});
}
BENCHMARK(startingAlone)->Name("the same beside its starts")->Iterations(21)->UseManualTime();

void holding(benchmark::State& state) {
    const Homes homes(true);
    compare(state,
            {"its limit of 2 s alone; never ends without VERIFY_SECONDS",
             searchOf(state, homes, true), [] { Sleep(limitSeconds * 1000); }, [] {}, "2 s more"});
}
BENCHMARK(holding)->Name("search: 2 more, that hold it up")->Iterations(3)->UseManualTime();

void checking(benchmark::State& state) {
    Homes homes(false);
    const String line = "\"" + homes.home("one", "version=17") + "\\bin\\java.exe\" Verify version";
    const std::string shellLine = "exec '" + nativePath(homes.home("two", "version=17").cstr()) +
                                  "/bin/java.exe' Verify version >/dev/null";
    const auto ours = [&] {
        String out;
        String err;
        runLimited(line, "", 60'000, out, err);
        if (out.empty())
            state.SkipWithError("no answer");
    };
    const auto theirs = [&] {
        if (std::system(shellLine.c_str()) != 0)
            state.SkipWithError("the shell can't run it");
    };
    compare(state, {"the program alone, run by a shell", ours, theirs, [] {}, "5 ms more"});
}
BENCHMARK(checking)->Name("check of one home")->Iterations(101)->UseManualTime();

}  // namespace

}  // namespace corvane::bench
