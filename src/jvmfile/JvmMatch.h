// `JvmMatch`: a home directory tied to the JVM file that accepted it.
#pragma once

#include "foundation/ObjectArray.h"
#include "foundation/String.h"
#include "launcherfile/TagFile.h"

namespace corvane {

class JvmMatch {
  public:
    // `tags` are those of the JVM file, not owned. Matches of one JVM file share them.
    JvmMatch(const String& home, TagFile& tags) : home_(home), tags_(&tags) {}
    virtual ~JvmMatch() = default;

    String home() const { return home_; }
    TagFile& tags() const noexcept { return *tags_; }

    // Writes the JVM file's tags with this home filled in to a new temporary file, from which
    // LAUNCH reads them, and gives its path. Raises `LauncherException`.
    String writeResolvedFile();

    bool temporary = false;  // found relative to the launcher

  private:
    String home_;
    TagFile* tags_;
};

class JvmMatchList : public ListOf<JvmMatch> {};

}  // namespace corvane
