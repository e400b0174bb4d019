// The resolved JVM file of a match.
#include "jvmfile/JvmMatch.h"

#include "host/TempFiles.h"

namespace corvane {

String JvmMatch::writeResolvedFile() {
    const String path = createTempFile();
    tags_->setJvmTags(home_, path, temporary);
    tags_->write(path);
    return path;
}

}  // namespace corvane
