// Texts for a child, and the mapping of paths both ways.
#include "Fuzz.h"
#include "platform/hosted/ChildText.h"
#include "platform/hosted/Paths.h"

using namespace corvane::hosted;
using corvane::fuzz::require;

namespace {

// A host path that came from a drive's path is found again by its Windows name.
void mapBothWays(const char* path) {
    if (!isDriveLetter(path[0]) || path[1] != ':')
        return;
    const auto host = hostPath(path);
    if (!host)
        return;
    require(host->front() == '/');
    require(hostPath(windowsPath(*host).c_str()) == host);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int drives = setenv("CORVANE_DRIVES", "C=/srv/c;D=/srv/c/deep;E=/srv", 1);
    require(drives == 0);
    const std::string text = corvane::fuzz::inputText(data, size);
    const std::string result = childText(text);
    // A path needs its drive's colon and a separator, or is a host's that goes on by a backslash.
    require(result == text || text.find(":\\") != std::string::npos ||
            text.find(":/") != std::string::npos ||
            text.find('\\', text.find('/')) != std::string::npos);
    require(result.size() <= text.size() * std::string("/srv/c/deep").size());
    mapBothWays(text.c_str());
    return 0;
}
