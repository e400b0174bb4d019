// The tags that the launcher reads in the files of a project.
#pragma once

#include <span>

#include "launcherfile/PayloadFormat.h"

namespace corvane::pack {

enum class TagForm {
    one,   // only the first value counts
    many,  // a list
    flag,  // one number, 0 or another
};

struct KnownTag {
    const char* name;
    TagForm form;
};

// Those of a file type; empty for one that is no tag file.
std::span<const KnownTag> knownTags(FileType type);

}  // namespace corvane::pack
