// A search for tests: JVM files made of tags, and a verification class that test_java plays.
#pragma once

#include <sstream>

#include "jvmsearch/JvmSearch.h"
#include "support/JavaHome.h"
#include "support/Payload.h"
#include "support/System.h"

namespace corvane::test {

class SearchRun : public LauncherRun {
  public:
    SearchRun() { search().setVerifyClass("\"verify.jar\"", "Verify"); }

    JvmSearch& search() { return jvmSearchOf(files()); }

    // The tags of a JVM file that wants `version` to be `pattern`.
    static void describe(TagFile& tags, const std::string& description,
                         const std::string& pattern) {
        tags.setValue("DESC", description.c_str());
        tags.setValue("JVM_EXE", "bin\\java.exe");
        tags.setValue("JVM_PROPERTIES", ("version=" + pattern).c_str());
        tags.setValue("CLASSPATH", " -cp ");
        tags.setValue("CLASSPATH_SEPARATOR", ";");
    }

    // Adds such a JVM file to the search; its tags are the run's.
    TagFile& addJvmFile(const std::string& description, const std::string& pattern) {
        TagFile& tags = *files().ownedTagFiles.add(std::make_unique<TagFile>());
        describe(tags, description, pattern);
        search().addJvmFile(std::make_unique<JvmFile>(tags));
        return tags;
    }

    // A home in the scratch directory whose JVM reports that version.
    String home(const std::string& name, const std::string& version) const {
        return makeJavaHome(scratch, name, "version=" + version + "\n");
    }

    // The log's lines that begin so, each behind a bar.
    std::string logged(const std::string& beginning) const {
        std::string lines;
        std::istringstream stream(log());
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with(beginning))
                lines += "|" + line;
        }
        return lines;
    }

  private:
    NoPauses noPauses_;
};

}  // namespace corvane::test
