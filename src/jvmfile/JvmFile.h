// `JvmFile`: one kind of JVM that the application accepts, as a tag file says it
// (docs/jvm-files.md).
#pragma once

#include "foundation/ObjectArray.h"
#include "foundation/String.h"
#include "launcherfile/TagFile.h"
#include "template/TokenResolver.h"

namespace corvane {

// Points to its tags, which are not read-only: every verification leaves its candidate in JVM_HOME.
class JvmFile final : public TokenResolver {
  public:
    explicit JvmFile(TagFile& tags) : tags_(&tags) {}

    TagFile& tags() const noexcept { return *tags_; }
    String tag(const char* name) const { return tags_->value(name, 0); }
    // Path of the Java executable below the home.
    String exePath() const { return tag("JVM_EXE"); }

    // Replaces @NAME@ by the tag NAME; an unknown tag is empty, and JVM_HOME loses a trailing
    // separator. The paths in JVM_HOME and JVM_FILE go in as literal texts (LiteralText.h).
    void resolveToken(String& text, char separator, std::size_t start, std::size_t end) override;
    String expandTokens(const String& text);

  private:
    TagFile* tags_;  // not owned
};

class JvmFileList : public ListOf<JvmFile> {};

}  // namespace corvane
